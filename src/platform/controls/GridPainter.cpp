// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridPainter.h"

#include "platform/controls/CellColours.h"
#include "platform/controls/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace controls
{

namespace
{

/// Where a text that is not on the left is elided otherwise.
constexpr int LeastPadding = 2;
constexpr int MaxLines = 2;
constexpr int SelectionBar = 4;
constexpr QRgb AccentOnMark = 0xFF2E7237;
constexpr double TickSize = 16;
constexpr double TickPen = 1.5;

QColor fromStored(qint32 colour)
{
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

QFont boldOf(QFont font)
{
    font.setBold(true);
    return font;
}

void paintTick(QPainter &painter, const QRect &rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect).center() - QPointF(TickSize / 2, TickSize / 2));
    painter.scale(TickSize / 24, TickSize / 24);
    painter.setPen(QPen(Qt::black, TickPen * 24 / TickSize, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({QPointF(6, 12.5), QPointF(10, 16.5), QPointF(18, 7.5)}));
    painter.restore();
}

/// Breaks a text at words into at most `maxLines` lines; the last one gets the remaining text.
QStringList wrapped(const QString &text, const QFont &font, int width, int maxLines)
{
    QTextLayout layout(text, font);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool last = lines.size() + 1 == maxLines;
        lines += (last ? text.mid(line.textStart()) : text.mid(line.textStart(), line.textLength())).trimmed();
        if (last) {
            break;
        }
    }
    layout.endLayout();
    return lines;
}

} // namespace

int headingWidth(const QString &text, const QFont &font, int height)
{
    const QFontMetrics metrics(boldOf(font));
    int width = metrics.horizontalAdvance(text);
    if (height < MaxLines * metrics.lineSpacing()) {
        return width;
    }
    for (qsizetype space = text.indexOf(u' '); space >= 0; space = text.indexOf(u' ', space + 1)) {
        width = std::min(width,
                         std::max(metrics.horizontalAdvance(text.left(space)), metrics.horizontalAdvance(text.mid(space + 1))));
    }
    return width;
}

GridPainter::GridPainter(const GridState &state, const GridView &view)
    : state_(state), view_(view), bold_(boldOf(view.font)), plainMetrics_(view.font), boldMetrics_(bold_),
      rows_(state.rows.shownWithin(view.size.height())), cols_(state.cols.shownWithin(view.size.width()))
{
}

const QFontMetrics &GridPainter::metricsOf(int row, int col) const
{
    return state_.drawnBold(row, col) ? boldMetrics_ : plainMetrics_;
}

/// Rounds edges to whole device pixels, so that fills meet without gaps at scales such as 1.25. A length of one pixel becomes a
/// line of even width that ends where the cell ends.
QRectF GridPainter::onPixels(const QPainter &painter, const QRectF &rect) const
{
    const QTransform &device = painter.deviceTransform();
    const auto span = [](double from, double length, double scale, double offset) {
        const double end = std::round((from + length) * scale + offset);
        const double begin = length == 1 ? end - std::max(1.0, std::floor(scale)) : std::round(from * scale + offset);
        return std::pair((begin - offset) / scale, (end - offset) / scale);
    };
    const auto [left, right] = span(rect.left(), rect.width(), device.m11(), device.dx());
    const auto [top, bottom] = span(rect.top(), rect.height(), device.m22(), device.dy());
    return {QPointF(left, top), QPointF(right, bottom)};
}

void GridPainter::fill(QPainter &painter, const QRectF &rect, const QColor &colour) const
{
    painter.fillRect(onPixels(painter, rect), colour);
}

void GridPainter::paint(QPainter &painter)
{
    painter.fillRect(QRect(QPoint(), view_.size), Theme::colours().window);
    if (rows_.empty() || cols_.empty()) {
        return;
    }
    paintCells(painter);
    // What is selected may extend beyond the last whole line.
    painter.setClipRect(QRect(0, 0, *state_.cols.viewStart(cols_.back()) + state_.cols.size(cols_.back()),
                              *state_.rows.viewStart(rows_.back()) + state_.rows.size(rows_.back())));
    paintSelectedRow(painter);
    paintSelection(painter);
    painter.setClipping(false);
    paintEmptyText(painter);
}

void GridPainter::paintCells(QPainter &painter)
{
    const auto firstScrolled = [](const std::vector<int> &lines, int fixed) {
        const auto scrolled = std::find_if(lines.begin(), lines.end(), [fixed](int line) { return line >= fixed; });
        return scrolled == lines.end() ? lines.back() : *scrolled;
    };
    const int firstRow = firstScrolled(rows_, state_.rows.fixed());
    const int firstCol = firstScrolled(cols_, state_.cols.fixed());
    for (const int row : rows_) {
        const int upper = row < state_.rows.fixed() ? 0 : firstRow;
        int drawnTo = -1;
        for (const int col : cols_) {
            if (col <= drawnTo) {
                continue;
            }
            const int left = col < state_.cols.fixed() ? 0 : firstCol;
            const CellSpan span = state_.spanOf(row, col, upper, rows_.back(), left, cols_.back());
            drawnTo = span.col + span.cols - 1;
            const bool drawnAbove = span.row < row
                && std::any_of(rows_.begin(), rows_.end(), [&](int other) { return other >= span.row && other < row; });
            if (!drawnAbove) {
                paintCell(painter, row, col, spanRect(span));
            }
        }
    }
}

QRect GridPainter::spanRect(const CellSpan &span) const
{
    const auto reach = [](const GridAxis &axis, int line, int count) {
        std::optional<int> begin;
        int length = 0;
        for (int i = line; i < line + count; ++i) {
            begin = begin ? begin : axis.viewStart(i);
            length += begin ? axis.size(i) : 0;
        }
        return std::pair(begin.value_or(0), length);
    };
    const auto [top, height] = reach(state_.rows, span.row, span.rows);
    const auto [left, width] = reach(state_.cols, span.col, span.cols);
    return {left, top, width, height};
}

GridPainter::Colours GridPainter::coloursOf(int row, int col) const
{
    const PaletteColours &colours = Theme::colours();
    const GridCell &cell = state_.store.at(row, col);
    const QColor text = view_.enabled ? colours.text : colours.disabled;
    if (state_.isColoured(row, col) && !state_.isNameless(row)) {
        return {fromStored(cell.colour), Qt::black};
    }
    if (state_.isFixed(row, col)) {
        return {colours.header, text};
    }
    const bool muted = state_.mutedCols.count(col) > 0 || (state_.muteZeros && cell.text == QStringLiteral("0"));
    return {colours.base, muted ? colours.muted : text};
}

void GridPainter::paintCell(QPainter &painter, int row, int col, const QRect &rect)
{
    const Colours colours = coloursOf(row, col);
    fill(painter, rect, colours.background);
    const QColor &line = Theme::colours().line;
    fill(painter, QRectF(rect.right(), rect.top(), 1, rect.height()), line);
    fill(painter, QRectF(rect.left(), rect.bottom(), rect.width(), 1), line);
    if (state_.showsTick(row, col)) {
        paintTick(painter, rect.adjusted(0, 0, -1, -1));
    } else if (!state_.store.at(row, col).text.isEmpty()) {
        paintText(painter, row, col, rect, colours.ink);
    }
}

/// One edge for all columns. A text that is not on the left may come closer where that avoids an ellipsis.
int GridPainter::padding(int row, int col, int width) const
{
    const int usual = state_.cols.padding();
    if (state_.alignment(row, col) == CellAlignment::Left || row < state_.rows.fixed()) {
        return usual;
    }
    const int text = metricsOf(row, col).horizontalAdvance(state_.store.at(row, col).text);
    return std::clamp((width - text) / 2, LeastPadding, usual);
}

int GridPainter::maxLinesOf(int row, int col, int height) const
{
    if (row >= state_.rows.fixed()) {
        return 1;
    }
    return std::clamp(height / std::max(1, metricsOf(row, col).lineSpacing()), 1, MaxLines);
}

QStringList GridPainter::linesOf(int row, int col, const QSize &space) const
{
    const QString &text = state_.store.at(row, col).text;
    const QFontMetrics &metrics = metricsOf(row, col);
    const int maxLines = maxLinesOf(row, col, space.height());
    if (maxLines == 1 || metrics.horizontalAdvance(text) <= space.width()) {
        return {text};
    }
    return wrapped(text, state_.drawnBold(row, col) ? bold_ : view_.font, space.width(), maxLines);
}

void GridPainter::paintText(QPainter &painter, int row, int col, const QRect &rect, const QColor &ink) const
{
    const QFontMetrics &metrics = metricsOf(row, col);
    const int inset = padding(row, col, rect.width() - 1);
    // Clear of the accent bar at the left edge of the grid.
    const int left = rect.left() == 0 ? std::max(inset, SelectionBar + 2) : inset;
    const QRect space = rect.adjusted(left, 0, left - 2 * inset - 1, -1);
    const CellAlignment alignment = state_.alignment(row, col);
    const Qt::Alignment horizontal = alignment == CellAlignment::Centre ? Qt::AlignHCenter
        : alignment == CellAlignment::Right                             ? Qt::AlignRight
                                                                        : Qt::AlignLeft;
    const QStringList lines = linesOf(row, col, space.size());
    painter.setFont(state_.drawnBold(row, col) ? bold_ : view_.font);
    painter.setPen(ink);
    const int spacing = lines.size() > 1 ? std::min(metrics.lineSpacing(), space.height() / static_cast<int>(lines.size())) : 0;
    int top = lines.size() > 1 ? space.top() + (space.height() - spacing * static_cast<int>(lines.size())) / 2 : space.top();
    for (const QString &text : lines) {
        const QRect line(space.left(), top, space.width(), lines.size() > 1 ? spacing : space.height());
        const QString shown =
            metrics.horizontalAdvance(text) > space.width() ? metrics.elidedText(text, Qt::ElideRight, space.width()) : text;
        painter.drawText(line, static_cast<int>(horizontal | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip, shown);
        top += spacing;
    }
}

bool GridPainter::isElided(int row, int col) const
{
    const QString &text = state_.store.at(row, col).text;
    if (text.isEmpty()) {
        return false;
    }
    const CellSpan span = state_.spanOf(row, col, 0, state_.rows.count() - 1, 0, state_.cols.count() - 1);
    const QRect rect = spanRect(span);
    const QFontMetrics &metrics = metricsOf(row, col);
    const int inset = padding(row, col, rect.width() - 1);
    const QSize space(rect.width() - 2 * inset - 1, rect.height() - 1);
    const QStringList lines = linesOf(row, col, space);
    return std::any_of(lines.begin(), lines.end(),
                       [&](const QString &line) { return metrics.horizontalAdvance(line) > space.width(); });
}

void GridPainter::paintSelectedRow(QPainter &painter)
{
    const int row = state_.selectedRow;
    if (row < 0 || row >= state_.rows.count()) {
        return;
    }
    const auto top = state_.rows.viewStart(row);
    if (!top || *top >= view_.size.height()) {
        return;
    }
    const int height = state_.rows.size(row);
    const int width = *state_.cols.viewStart(cols_.back()) + state_.cols.size(cols_.back());
    const PaletteColours &colours = Theme::colours();
    fill(painter, QRectF(0, *top - 1, width, 1), colours.text);
    fill(painter, QRectF(0, *top + height - 1, width, 1), colours.text);
    // The accent of the dark palette is hardly visible on a mark.
    const bool marked = state_.isColoured(row, cols_.front());
    fill(painter, QRectF(0, *top, SelectionBar, height - 1), marked ? QColor(AccentOnMark) : colours.accent);
}

/// A hidden column cannot show the frame; with the focus, the first visible column shows at least the row.
int GridPainter::currentColumnShown() const
{
    if (!state_.cols.isHidden(state_.col) || !view_.focused) {
        return state_.col;
    }
    const auto shown = std::find_if(cols_.begin(), cols_.end(), [this](int col) { return col >= state_.cols.fixed(); });
    return shown == cols_.end() ? state_.col : *shown;
}

void GridPainter::paintSelection(QPainter &painter)
{
    if (state_.row >= state_.rows.count() || state_.col >= state_.cols.count() || state_.isFixed(state_.row, state_.col)) {
        return;
    }
    CellSpan span = state_.selection();
    if (span.cols == 1) {
        span.col = currentColumnShown();
    }
    QRectF area = spanRect(span).adjusted(0, 0, -1, -1);
    if (area.left() == 0 && state_.selectedRow >= span.row && state_.selectedRow < span.row + span.rows) {
        area.setLeft(SelectionBar);
    }
    if (area.width() <= 0 || area.height() <= 0) {
        return;
    }
    const QColor ink = state_.isColoured(span.row, span.col) ? QColor(Qt::black) : Theme::colours().text;
    const double width = view_.focused ? 2 : 1;
    fill(painter, QRectF(area.left(), area.top(), area.width(), width), ink);
    fill(painter, QRectF(area.left(), area.bottom() - width, area.width(), width), ink);
    fill(painter, QRectF(area.left(), area.top(), width, area.height()), ink);
    fill(painter, QRectF(area.right() - width, area.top(), width, area.height()), ink);
}

void GridPainter::paintEmptyText(QPainter &painter)
{
    if (state_.emptyText.isEmpty()) {
        return;
    }
    // Below the row that always stays empty, or over it where the view ends there.
    const int lastRow = rows_.back();
    const int below = std::min(*state_.rows.viewStart(lastRow) + state_.rows.size(lastRow),
                               view_.size.height() - 3 * plainMetrics_.lineSpacing());
    constexpr int margin = 16;
    painter.setFont(view_.font);
    painter.setPen(Theme::colours().muted);
    painter.drawText(QRect(margin, below, view_.size.width() - 2 * margin, view_.size.height() - below),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, state_.emptyText);
}

} // namespace controls
