// SPDX-License-Identifier: GPL-3.0-or-later
#include "Progress.h"

#include <algorithm>
#include <cstdio>

namespace
{
constexpr qint64 QuietMilliseconds = 1000;
constexpr int PercentStep = 5;
} // namespace

Progress::Progress(QString work, std::int64_t total) : work_(std::move(work)), total_(std::max<std::int64_t>(total, 1))
{
    timer_.start();
}

Progress::~Progress()
{
    if (shownPercent_ >= 0) {
        std::fputc('\n', stderr);
    }
}

void Progress::show(std::int64_t done)
{
    done_ = done;
    const int exact = static_cast<int>(std::min<std::int64_t>(100, done * 100 / total_));
    const int percent = exact - exact % PercentStep;
    if (percent == shownPercent_ || !timer_.hasExpired(QuietMilliseconds)) {
        return;
    }
    shownPercent_ = percent;
    std::fprintf(stderr, "\r%s %3d %%", qPrintable(work_), percent);
    std::fflush(stderr);
}
