// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <vector>

/// Each row times what the program does and, in the same run, a floor that does the same work. The time shown is the program's;
/// "floor_ms" and "ratio" stand beside it.
double seconds(const std::function<void()> &body);
double median(std::vector<double> values);

/// Runs both in turn, so that both see the same machine.
void compare(benchmark::State &state, const std::function<void()> &ours, const std::function<void()> &floor);
/// As above, for a floor that tells its own seconds.
void compareTold(benchmark::State &state, const std::function<void()> &ours, const std::function<double()> &floorSeconds);

/// Megabytes of memory that this process held at most since `forgetPeak`.
double peakMegabytes();
void forgetPeak();
