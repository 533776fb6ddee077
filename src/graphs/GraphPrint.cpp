// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphPrint.h"

#include "platform/basic/RunTimeError.h"
#include "platform/chart/ChartView.h"
#include "platform/controls/Dialogs.h"

#include <QPainter>
#include <QPrinter>
#include <QScopeGuard>

#include <algorithm>

namespace
{

constexpr int PrinterError = 482;
/// A logical pixel is 15 twips, so there are 96 to the inch.
constexpr double PixelsPerInch = 96.0;

constexpr int MinFootHeight = 20;

void paintFoot(QPainter &painter, const QString &text, const QRect &strip)
{
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    painter.setPen(chart::PlotColours::paper().muted);
    const QRect line = strip.adjusted(12, 0, -12, 0);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, line.width()));
}

} // namespace

std::optional<QString> printChart(chart::ChartView &chGraph, controls::Dialogs &dialogs, const PrintTexts &texts,
                                  const QSize &viewport)
{
    QPrinter printer(QPrinter::HighResolution);
    // The dialog starts with the chart's orientation, which is set again below whatever the user chose.
    const auto orientation = viewport.height() >= viewport.width() ? QPageLayout::Portrait : QPageLayout::Landscape;
    printer.setPageOrientation(orientation);
    if (!dialogs.choosePrinter(printer)) {
        return {};
    }
    chart::Chart &model = chGraph.model();
    const auto untitled = qScopeGuard([&model] { model.setTitleText(QString()); });
    model.setTitleText(texts.title);
    printer.setPageOrientation(orientation);
    const double scale = printer.resolution() / PixelsPerInch;
    const QSize page = (QSizeF(printer.pageRect(QPrinter::DevicePixel).size()) / scale).toSize();
    const QSize size(page.width(), page.height() - std::max(chGraph.legendRectangle(page).height(), MinFootHeight));
    chGraph.EditCopy(size);
    QPainter painter;
    if (!painter.begin(&printer)) {
        throw basic::RunTimeError(PrinterError, QStringLiteral("Printer error"));
    }
    painter.scale(scale, scale);
    chGraph.paintOn(painter, size);
    paintFoot(painter, texts.foot, QRect(QPoint(0, size.height()), QPoint(page.width(), page.height())));
    return printer.outputFileName();
}
