// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/BusyPointer.h"

#include <QString>

#include <cstdint>
#include <memory>

class QObject;
class ScreenHost;

/// Scope of long work of a screen: the pointer is busy, and the window repaints when letRepaint() is called. Keys, clicks and
/// closing the window are discarded meanwhile, so that none reaches the screen afterwards. Boxes that the work opens accept
/// input.
class LongWork
{
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork &) = delete;
    LongWork &operator=(const LongWork &) = delete;

    static void letRepaint();

private:
    const controls::BusyPointer busy_;
    std::unique_ptr<QObject> inputGate_;
};

/// Long work that shows the main window's progress picture.
class LongWorkWithProgress : public LongWork
{
public:
    explicit LongWorkWithProgress(ScreenHost &host);
    ~LongWorkWithProgress();

private:
    ScreenHost &host_;
};

/// Shows the progress on Picture4, with a caption such as "40% of " and the text.
void Show_Progress(ScreenHost &host, std::int16_t percent, const QString &text);
