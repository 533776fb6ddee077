// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

namespace chart
{
class ChartView;
}
namespace controls
{
class Dialogs;
}

/// Prints the chart under `title` as large as the page, upright when the viewport is not wider than high, and leaves a picture of
/// that size on the clipboard. False when the user cancels; error 482 when the printer does not take it. The chart bears no title
/// afterwards, but for a cancelled dialog, which changes nothing.
bool printChart(chart::ChartView &chGraph, controls::Dialogs &dialogs, const QString &title, const QSize &viewport);
