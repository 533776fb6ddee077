// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTemporaryDir>

/// A farm of many years in a temporary folder: 5,000 plantings on 500 blocks, 20,000 instructions of which three quarters are
/// completed, 2,000,000 detail rows (20 points x 5 pests each) and 100,000 total rows.
class BigFarm
{
public:
    BigFarm();
    QString folder() const { return folder_.path(); }
    QString pestFile() const;

    static constexpr int Instructions = 20000;
    static constexpr int Points = 20;

private:
    QTemporaryDir folder_;
};
