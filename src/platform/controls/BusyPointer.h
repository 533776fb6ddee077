// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace controls
{

/// The busy pointer while work lasts that grows with the farm. It comes at once, since nothing could show it later in work that
/// runs through; work over too soon to be seen leaves no trace. Keys typed meanwhile wait and are taken afterwards.
class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

} // namespace controls
