// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QString>

#include <cstdint>

/// A line on the error stream that counts percent, shown only when the work takes longer than a second.
class Progress
{
public:
    Progress(QString work, std::int64_t total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void advance(std::int64_t steps = 1) { show(done_ + steps); }
    void show(std::int64_t done);

private:
    QString work_;
    std::int64_t total_;
    std::int64_t done_ = 0;
    int shownPercent_ = -1;
    QElapsedTimer timer_;
};
