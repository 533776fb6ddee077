// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <map>
#include <vector>

/// How long each action took, by year, and the memory held at each year's end.
class Timings
{
public:
    void time(const QString &action, const std::function<void()> &body);
    /// Closes the year: what follows counts for the next one.
    void endYear();

    /// One line an action: its name, how often, and its median of each year in milliseconds; one line for the memory.
    QStringList table() const;
    /// Actions whose median of the last year is over that of the first by more than half and three milliseconds, and the memory
    /// when it grew by more than the given megabytes.
    QStringList whatGrew(double megabytes) const;

private:
    double median(const QString &action, std::size_t year) const;

    std::size_t year_ = 0;
    /// Seconds by action and year.
    std::map<QString, std::map<std::size_t, std::vector<double>>> seconds_;
    std::vector<double> memory_;
};
