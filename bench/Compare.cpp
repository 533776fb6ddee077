// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compare.h"

#include <QElapsedTimer>

#include <algorithm>

double seconds(const std::function<void()> &body)
{
    QElapsedTimer timer;
    timer.start();
    body();
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

void compare(benchmark::State &state, const std::function<void()> &ours, const std::function<void()> &floor)
{
    std::vector<double> oursTimes;
    std::vector<double> floorTimes;
    for (auto _ : state) {
        oursTimes.push_back(seconds(ours));
        floorTimes.push_back(seconds(floor));
        state.SetIterationTime(oursTimes.back());
    }
    state.counters["floor_ms"] = median(floorTimes) * 1e3;
    state.counters["ours_ms"] = median(oursTimes) * 1e3;
    state.counters["ratio"] = median(oursTimes) / median(floorTimes);
}
