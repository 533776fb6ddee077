// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/GridState.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QRect>

class QPainter;

namespace controls
{

/// State of the view around the cells.
struct GridView {
    QSize size;
    QFont font;
    bool focused = false;
    bool enabled = true;
};

/// Pixels that a heading of this height needs: its text, or the longer one of its two lines.
int headingWidth(const QString &text, const QFont &font, int height);

/// Draws the visible part of a grid, and knows which texts do not fit.
class GridPainter
{
public:
    GridPainter(const GridState &state, const GridView &view);

    void paint(QPainter &painter);
    /// Whether a cell's text is elided.
    bool isElided(int row, int col) const;

private:
    struct Colours {
        QColor background;
        QColor ink;
    };
    void paintCells(QPainter &painter);
    void paintCell(QPainter &painter, int row, int col, const QRect &rect);
    void paintText(QPainter &painter, int row, int col, const QRect &rect, const QColor &ink) const;
    void paintSelectedRow(QPainter &painter);
    int currentColumnShown() const;
    void paintSelection(QPainter &painter);
    void paintEmptyText(QPainter &painter);
    QRect spanRect(const CellSpan &span) const;
    Colours coloursOf(int row, int col) const;
    QStringList linesOf(int row, int col, const QSize &space) const;
    int padding(int row, int col, int width) const;
    int maxLinesOf(int row, int col, int height) const;
    const QFontMetrics &metricsOf(int row, int col) const;
    QRectF onPixels(const QPainter &painter, const QRectF &rect) const;
    void fill(QPainter &painter, const QRectF &rect, const QColor &colour) const;

    const GridState &state_;
    const GridView &view_;
    QFont bold_;
    QFontMetrics plainMetrics_;
    QFontMetrics boldMetrics_;
    std::vector<int> rows_;
    std::vector<int> cols_;
};

} // namespace controls
