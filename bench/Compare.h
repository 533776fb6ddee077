// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <vector>

double seconds(const std::function<void()> &body);
double median(std::vector<double> values);

/// Runs the program's work and its floor in turn, so that both see the same machine. The time shown is the program's; "floor_ms"
/// and "ratio" stand beside it.
void compare(benchmark::State &state, const std::function<void()> &ours, const std::function<void()> &floor);
