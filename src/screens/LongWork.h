// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/BusyPointer.h"

#include <QString>

#include <cstdint>
#include <memory>

class QObject;
class ScreenHost;

/// Long work of a screen, from its making to its end: the pointer is busy, and the window repaints as often as it is let. Keys,
/// clicks and a try to close the window come to nothing meanwhile, so that none reaches the screen after the work, where it was
/// not meant any more. A box that the work itself opens takes them as ever.
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

/// Long work that shows the main window's progress picture while it lasts.
class LongWorkWithPicture : public LongWork
{
public:
    explicit LongWorkWithPicture(ScreenHost &host);
    ~LongWorkWithPicture();

private:
    ScreenHost &host_;
};

/// Draws how far the work is on Picture4, with "40% of " and the text on it.
void Show_Progress(ScreenHost &host, std::int16_t percent, const QString &text);
