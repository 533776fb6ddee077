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

struct PrintTexts {
    QString title;
    QString foot;
};

/// Prints the chart between its texts as large as the page, in portrait when the viewport is not wider than high, and copies an
/// image of that size to the clipboard. Returns the name of the PDF file, empty for paper; nothing when the user cancels. Error
/// 482 when printing fails. The chart has no title afterwards, except after a cancelled dialog, which changes nothing.
std::optional<QString> printChart(chart::ChartView &chGraph, controls::Dialogs &dialogs, const PrintTexts &texts,
                                  const QSize &viewport);
