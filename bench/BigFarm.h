// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <vector>

/// A farm of many years in a temporary folder: 5,000 plantings on 500 blocks and, at its largest, 20,000 instructions of which
/// three quarters are completed, 2,000,000 detail rows (20 points x 5 pests each) and as many total rows.
class BigFarm
{
public:
    explicit BigFarm(int instructions = Instructions);
    QString folder() const { return folder_.path(); }
    QString pestFile() const;
    int instructions() const { return instructions_; }

    static constexpr int Instructions = 20000;
    static constexpr int Points = 20;
    /// Numbers of instructions at which cost is compared: the one of the environment variable FARM_BENCH_INSTRUCTIONS, or three.
    inline static const std::vector<std::int64_t> Sizes = qEnvironmentVariableIsSet("FARM_BENCH_INSTRUCTIONS")
        ? std::vector<std::int64_t>{qEnvironmentVariableIntValue("FARM_BENCH_INSTRUCTIONS")}
        : std::vector<std::int64_t>{Instructions / 4, Instructions / 2, Instructions};

private:
    int instructions_;
    QTemporaryDir folder_;
};
