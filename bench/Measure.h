// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <vector>

/// Each row times what the program does and, in the same run, a baseline that does the same work. The time shown is the
/// program's; the counters "baseline_ms" and "ratio" are added.
double seconds(const std::function<void()> &body);
double median(std::vector<double> values);

/// Runs both in turn, so that both see the same machine.
void compare(benchmark::State &state, const std::function<void()> &ours, const std::function<void()> &baseline);
/// As above, for a baseline that measures its own seconds.
void compareTimed(benchmark::State &state, const std::function<void()> &ours, const std::function<double()> &baselineSeconds);

/// One line of the table at growing sizes; the body finds its size in range(0). `unit` says what the size counts. The bar is the
/// most that "ratio" may be; 0 is none.
struct BenchRow {
    const char *name;
    const char *unit;
    void (*body)(benchmark::State &);
    std::vector<std::int64_t> sizes;
    int iterations;
    double bar = 0.0;
};
void registerRows(const std::vector<BenchRow> &rows);

/// Megabytes of memory that this process held at most since `forgetPeak`.
double peakMegabytes();
void forgetPeak();
