// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

#include <optional>

namespace chart
{
class ChartView;
}
namespace controls
{
class Dialogs;
}

/// Prints the chart under `title` as large as the page, upright when the viewport is not wider than high, and leaves a picture of
/// that size on the clipboard. Gives the name of the PDF file that was asked for, empty for paper; nothing when the user cancels.
/// Error 482 when the printer does not take it. The chart bears no title afterwards, but for a cancelled dialog, which changes
/// nothing.
std::optional<QString> printChart(chart::ChartView &chGraph, controls::Dialogs &dialogs, const QString &title,
                                  const QSize &viewport);
