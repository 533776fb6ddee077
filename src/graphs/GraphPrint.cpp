// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphPrint.h"

#include "platform/basic/RunTimeError.h"
#include "platform/chart/ChartView.h"
#include "platform/controls/Dialogs.h"

#include <QPainter>
#include <QPrinter>
#include <QScopeGuard>

namespace
{

constexpr int PrinterError = 482;
/// A logical pixel is 15 twips, so there are 96 to the inch.
constexpr double PixelsPerInch = 96.0;

} // namespace

std::optional<QString> printChart(chart::ChartView &chGraph, controls::Dialogs &dialogs, const QString &title,
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
    model.setTitleText(title);
    printer.setPageOrientation(orientation);
    const double scale = printer.resolution() / PixelsPerInch;
    const QSize page = (QSizeF(printer.pageRect(QPrinter::DevicePixel).size()) / scale).toSize();
    const QSize size(page.width(), page.height() - chGraph.legendRectangle(page).height());
    chGraph.EditCopy(size);
    QPainter painter;
    if (!painter.begin(&printer)) {
        throw basic::RunTimeError(PrinterError, QStringLiteral("Printer error"));
    }
    painter.scale(scale, scale);
    chGraph.paintOn(painter, size);
    return printer.outputFileName();
}
