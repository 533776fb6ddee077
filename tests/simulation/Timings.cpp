// SPDX-License-Identifier: GPL-3.0-or-later
#include "Timings.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>

#ifdef Q_OS_WIN
#include <windows.h>

#include <psapi.h>
#else
#include <malloc.h>
#include <unistd.h>
#endif

namespace
{

constexpr double Megabyte = 1024.0 * 1024.0;

#ifdef Q_OS_WIN
/// Memory of the process.
double residentMegabytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) {
        qFatal("the memory of the process cannot be read");
    }
    return static_cast<double>(counters.WorkingSetSize) / Megabyte;
}
#else
/// Memory of the process, after free memory was returned to the system.
double residentMegabytes()
{
    malloc_trim(0);
    QFile statistics(QStringLiteral("/proc/self/statm"));
    if (!statistics.open(QIODevice::ReadOnly)) {
        qFatal("the memory of the process cannot be read");
    }
    return statistics.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) / Megabyte;
}
#endif

} // namespace

void Timings::time(const QString &action, const std::function<void()> &body)
{
    QElapsedTimer timer;
    timer.start();
    body();
    seconds_[action][year_].push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
}

void Timings::endYear()
{
    // Closed screens go first.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    memory_.push_back(residentMegabytes());
    ++year_;
}

double Timings::median(const QString &action, std::size_t year) const
{
    const auto &years = seconds_.at(action);
    if (!years.contains(year)) {
        return 0.0;
    }
    std::vector<double> values = years.at(year);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

QStringList Timings::table() const
{
    QStringList lines;
    for (const auto &[action, years] : seconds_) {
        std::size_t times = 0;
        QString medians;
        for (std::size_t year = 0; year < year_; ++year) {
            times += years.contains(year) ? years.at(year).size() : 0;
            medians += QStringLiteral("%1").arg(median(action, year) * 1e3, 10, 'f', 2);
        }
        lines.append(QStringLiteral("%1%2 x%3 ms").arg(action, -24).arg(times, 6).arg(medians));
    }
    QString memory = QStringLiteral("%1       ").arg(QStringLiteral("memory held"), -24);
    for (const double megabytes : memory_) {
        memory += QStringLiteral("%1").arg(megabytes, 10, 'f', 1);
    }
    return lines << memory + QStringLiteral(" MB");
}

QStringList Timings::whatGrew(double megabytes) const
{
    QStringList grew;
    for (const auto &[action, years] : seconds_) {
        const double first = median(action, 0);
        const double last = median(action, year_ - 1);
        constexpr double MaxRatio = 1.5;
        constexpr double MaxSeconds = 0.003;
        if (first > 0.0 && last > first * MaxRatio && last > first + MaxSeconds) {
            grew.append(action);
        }
    }
    if (memory_.back() > memory_.front() + megabytes) {
        grew.append(QStringLiteral("memory"));
    }
    return grew;
}
