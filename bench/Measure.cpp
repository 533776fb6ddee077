// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>

#include <malloc.h>

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

void compare(benchmark::State &state, const std::function<void()> &ours, const std::function<void()> &baseline)
{
    compareTimed(state, ours, [&baseline] { return seconds(baseline); });
}

void compareTimed(benchmark::State &state, const std::function<void()> &ours, const std::function<double()> &baselineSeconds)
{
    std::vector<double> oursTimes;
    std::vector<double> baselineTimes;
    for (auto _ : state) {
        oursTimes.push_back(seconds(ours));
        baselineTimes.push_back(baselineSeconds());
        state.SetIterationTime(oursTimes.back());
    }
    state.counters["baseline_ms"] = median(baselineTimes) * 1e3;
    state.counters["ours_ms"] = median(oursTimes) * 1e3;
    state.counters["ratio"] = median(oursTimes) / median(baselineTimes);
}

void registerRows(const std::vector<BenchRow> &rows)
{
    for (const BenchRow &row : rows) {
        const auto measured = [row](benchmark::State &state) {
            row.body(state);
            state.SetLabel(row.unit);
            state.counters["bar"] = row.bar;
        };
        auto *registered = benchmark::RegisterBenchmark(row.name, measured)
                               ->UseManualTime()
                               ->Unit(benchmark::kMillisecond)
                               ->Iterations(row.iterations);
        for (const std::int64_t size : row.sizes) {
            registered->Arg(size);
        }
    }
}

double peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        qFatal("the process cannot tell its memory");
    }
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
        }
    }
    qFatal("the process does not tell its memory");
}

void forgetPeak()
{
    // What earlier rows gave back goes back to the system first, so that it does not count here.
    malloc_trim(0);
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (!clear.open(QIODevice::WriteOnly) || clear.write("5") != 1) {
        qFatal("the peak of memory cannot be reset");
    }
}
