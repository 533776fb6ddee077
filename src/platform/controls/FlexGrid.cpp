// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGrid.h"

#include "platform/controls/FlexGridPrivate.h"
#include "platform/controls/GridAccessible.h"
#include "platform/controls/GridCopy.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace controls
{

FlexGrid::FlexGrid(QWidget *parent) : QAbstractScrollArea(parent), d_(std::make_unique<Private>(*this))
{
    installGridAccessibility();
    // A press sets the current cell before it takes the focus, so Qt must not set the focus.
    setFocusPolicy(Qt::TabFocus);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setRows(2);
    setCols(2);
    setFixedRows(1);
    setFixedCols(0);
    setCell(1, 0);
}

FlexGrid::~FlexGrid() = default;

void FlexGrid::Clear()
{
    d_->state.store.clear();
    d_->forgetTexts();
    d_->state.mergedRows.clear();
    d_->state.mergedCols.clear();
    d_->state.anchor.reset();
    std::fill(d_->state.colAlignments.begin(), d_->state.colAlignments.end(), CellAlignment::Default);
    d_->repaintLater();
}

int FlexGrid::Rows() const
{
    return d_->state.rows.count();
}

int FlexGrid::Cols() const
{
    return d_->state.cols.count();
}

void FlexGrid::setRows(int rows)
{
    Private::check(rows, std::numeric_limits<int>::max(), "Row count");
    d_->state.store.setRows(rows);
    d_->state.rows.setCount(rows);
    d_->clampCurrentCell();
    d_->layoutLater();
}

void FlexGrid::setCols(int cols)
{
    Private::check(cols, std::numeric_limits<int>::max(), "Column count");
    d_->state.store.setCols(cols);
    d_->state.cols.setCount(cols);
    d_->state.colAlignments.resize(static_cast<std::size_t>(cols), CellAlignment::Default);
    d_->clampCurrentCell();
    d_->layoutLater();
}

int FlexGrid::FixedRows() const
{
    return d_->state.rows.fixed();
}

int FlexGrid::FixedCols() const
{
    return d_->state.cols.fixed();
}

void FlexGrid::setFixedRows(int rows)
{
    Private::check(rows, Rows() + 1, "Fixed row count");
    d_->state.rows.setFixed(rows);
    d_->layoutLater();
}

void FlexGrid::setFixedCols(int cols)
{
    Private::check(cols, Cols() + 1, "Fixed column count");
    d_->state.cols.setFixed(cols);
    d_->layoutLater();
}

void FlexGrid::setFrozenRows(int rows)
{
    d_->state.rows.setFrozen(rows);
    d_->layoutLater();
}

void FlexGrid::setFrozenCols(int cols)
{
    d_->state.cols.setFrozen(cols);
    d_->layoutLater();
}

int FlexGrid::Row() const
{
    return d_->state.row;
}

int FlexGrid::Col() const
{
    return d_->state.col;
}

void FlexGrid::setRow(int row)
{
    setCell(row, Col());
}

void FlexGrid::setCol(int col)
{
    setCell(Row(), col);
}

void FlexGrid::setCell(int row, int col)
{
    d_->checkCell(row, col);
    if (row == d_->state.row && col == d_->state.col) {
        return;
    }
    d_->state.row = row;
    d_->state.col = col;
    d_->repaintLater();
}

CellSpan FlexGrid::selection() const
{
    return d_->state.selection();
}

void FlexGrid::setSelection(const CellSpan &cells)
{
    d_->checkCell(cells.row, cells.col);
    setCell(cells.row + cells.rows - 1, cells.col + cells.cols - 1);
    d_->state.anchor = std::pair(cells.row, cells.col);
    d_->repaintLater();
}

void FlexGrid::setMouseSelects(bool selects)
{
    d_->input.setMouseSelects(selects);
}

QString FlexGrid::TextMatrix(int row, int col) const
{
    d_->checkCell(row, col);
    return d_->state.store.at(row, col).text;
}

void FlexGrid::setTextMatrix(int row, int col, const QString &text)
{
    d_->checkCell(row, col);
    d_->state.store.setText(row, col, text);
    d_->measure(row, col);
    d_->repaintLater();
    d_->announceText(row, col);
}

QVariant FlexGrid::cellValue(int row, int col) const
{
    d_->checkCell(row, col);
    return d_->state.store.value(row, col);
}

void FlexGrid::setCellValue(int row, int col, const QVariant &value)
{
    d_->checkCell(row, col);
    d_->state.store.setValue(row, col, value);
}

std::optional<int> FlexGrid::CellBackColor(int row, int col) const
{
    d_->checkCell(row, col);
    const qint32 colour = d_->state.store.at(row, col).colour;
    return colour == GridCell::NoColour ? std::nullopt : std::optional<int>(colour);
}

void FlexGrid::setCellBackColor(int row, int col, int colour)
{
    d_->checkCell(row, col);
    d_->state.store.edit(row, col).colour = colour;
    d_->repaintLater();
    d_->announceText(row, col);
}

bool FlexGrid::CellFontBold(int row, int col) const
{
    d_->checkCell(row, col);
    return d_->state.store.at(row, col).bold;
}

void FlexGrid::setCellFontBold(int row, int col, bool bold)
{
    d_->checkCell(row, col);
    d_->state.store.edit(row, col).bold = bold;
    d_->repaintLater();
}

CellAlignment FlexGrid::cellAlignment(int row, int col) const
{
    d_->checkCell(row, col);
    return d_->state.store.at(row, col).alignment;
}

void FlexGrid::setCellAlignment(int row, int col, CellAlignment alignment)
{
    d_->checkCell(row, col);
    d_->state.store.edit(row, col).alignment = alignment;
    d_->repaintLater();
}

CellAlignment FlexGrid::colAlignment(int col) const
{
    Private::check(col, Cols(), "Column");
    return d_->state.colAlignments[static_cast<std::size_t>(col)];
}

void FlexGrid::setColAlignment(int col, CellAlignment alignment)
{
    Private::check(col, Cols(), "Column");
    d_->state.colAlignments[static_cast<std::size_t>(col)] = alignment;
    d_->repaintLater();
}

int FlexGrid::ColWidth(int col) const
{
    Private::check(col, Cols(), "Column");
    return d_->state.cols.twips(col);
}

void FlexGrid::setColWidth(int col, int twips)
{
    Private::check(col, Cols(), "Column");
    d_->state.cols.setTwips(col, std::max(0, twips));
    d_->layoutLater();
}

int FlexGrid::RowHeight(int row) const
{
    Private::check(row, Rows(), "Row");
    return d_->state.rows.twips(row);
}

void FlexGrid::setRowHeight(int row, int twips)
{
    Private::check(row, Rows(), "Row");
    d_->state.rows.setTwips(row, std::max(0, twips));
    d_->layoutLater();
}

bool FlexGrid::MergeRow(int row) const
{
    Private::check(row, Rows(), "Row");
    return d_->state.mergedRows.count(row) > 0;
}

void FlexGrid::setMergeRow(int row, bool merge)
{
    Private::check(row, Rows(), "Row");
    merge ? static_cast<void>(d_->state.mergedRows.insert(row)) : static_cast<void>(d_->state.mergedRows.erase(row));
    d_->repaintLater();
}

bool FlexGrid::MergeCol(int col) const
{
    Private::check(col, Cols(), "Column");
    return d_->state.mergedCols.count(col) > 0;
}

void FlexGrid::setMergeCol(int col, bool merge)
{
    Private::check(col, Cols(), "Column");
    merge ? static_cast<void>(d_->state.mergedCols.insert(col)) : static_cast<void>(d_->state.mergedCols.erase(col));
    d_->repaintLater();
}

int FlexGrid::TopRow() const
{
    d_->layOut();
    return d_->state.rows.first();
}

void FlexGrid::setTopRow(int row)
{
    Private::check(row, Rows(), "Row");
    d_->setFirst(d_->state.rows, verticalScrollBar(), row);
}

int FlexGrid::LeftCol() const
{
    d_->layOut();
    return d_->state.cols.first();
}

void FlexGrid::setLeftCol(int col)
{
    Private::check(col, Cols(), "Column");
    d_->setFirst(d_->state.cols, horizontalScrollBar(), col);
}

bool FlexGrid::RowIsVisible(int row) const
{
    Private::check(row, Rows(), "Row");
    d_->layOut();
    return d_->state.rows.isFullyShown(row, d_->viewSize().height());
}

void FlexGrid::showCell(int row, int col)
{
    d_->checkCell(row, col);
    d_->layOut();
    d_->reveal(d_->state.rows, verticalScrollBar(), row, d_->viewSize().height());
    d_->reveal(d_->state.cols, horizontalScrollBar(), col, d_->viewSize().width());
}

bool FlexGrid::Redraw() const
{
    return d_->redraw;
}

void FlexGrid::setRedraw(bool redraw)
{
    if (redraw == d_->redraw) {
        return;
    }
    d_->redraw = redraw;
    if (redraw) {
        d_->layOut();
    }
    setUpdatesEnabled(redraw);
}

void FlexGrid::setStretchColumns(const QList<int> &columns)
{
    d_->state.cols.setStretched(columns);
    d_->measureAll();
    d_->layoutLater();
}

void FlexGrid::setNameColumn(int col)
{
    Private::check(col, Cols(), "Column");
    d_->state.nameColumn = col;
    d_->repaintLater();
}

void FlexGrid::setSelectedRow(int row)
{
    d_->state.selectedRow = row;
    d_->repaintLater();
}

int FlexGrid::selectedRow() const
{
    return d_->state.selectedRow;
}

void FlexGrid::setMuteZeros(bool mute)
{
    d_->state.muteZeros = mute;
    d_->repaintLater();
}

void FlexGrid::setColMuted(int col, bool muted)
{
    Private::check(col, Cols(), "Column");
    muted ? static_cast<void>(d_->state.mutedCols.insert(col)) : static_cast<void>(d_->state.mutedCols.erase(col));
    d_->repaintLater();
}

void FlexGrid::setTicks(bool ticks)
{
    d_->state.ticks = ticks;
    d_->repaintLater();
}

QRect FlexGrid::cellRect(int row, int col) const
{
    d_->checkCell(row, col);
    d_->layOut();
    const auto top = d_->state.rows.viewStart(row);
    const auto left = d_->state.cols.viewStart(col);
    if (!top || !left || !d_->state.rows.isShown(row, d_->viewSize().height())
        || !d_->state.cols.isShown(col, d_->viewSize().width())) {
        return {};
    }
    return {*left, *top, d_->state.cols.size(col), d_->state.rows.size(row)};
}

QPoint FlexGrid::cellOrigin(int row, int col) const
{
    d_->checkCell(row, col);
    d_->layOut();
    return {d_->state.cols.origin(col), d_->state.rows.origin(row)};
}

std::optional<std::pair<int, int>> FlexGrid::cellAt(QPoint position) const
{
    d_->layOut();
    const auto row = d_->state.rows.lineAtPixel(position.y());
    const auto col = d_->state.cols.lineAtPixel(position.x());
    if (!row || !col || !d_->state.rows.isShown(*row, d_->viewSize().height())
        || !d_->state.cols.isShown(*col, d_->viewSize().width())) {
        return std::nullopt;
    }
    return std::pair(*row, *col);
}

void FlexGrid::setEmptyText(const QString &text)
{
    d_->state.emptyText = text;
    d_->repaintLater();
}

QString FlexGrid::emptyText() const
{
    return d_->state.emptyText;
}

void FlexGrid::copy(Copy what) const
{
    QGuiApplication::clipboard()->setText(what == Copy::All ? copiedGrid(d_->state) : copiedSelection(d_->state));
}

void FlexGrid::setCellCopyText(std::function<QString(int row, int col)> text)
{
    d_->state.copyText = std::move(text);
}

void FlexGrid::setCellDescriber(std::function<QString(int row, int col)> describer)
{
    d_->state.describer = std::move(describer);
}

QString FlexGrid::cellDescription(int row, int col) const
{
    d_->checkCell(row, col);
    return d_->state.describe(row, col);
}

void FlexGrid::setKeyClicks(KeyClick keys)
{
    d_->input.setKeyClicks(keys);
}

bool FlexGrid::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        d_->layOut();
    }
    return QAbstractScrollArea::event(event);
}

void FlexGrid::paintEvent(QPaintEvent *)
{
    d_->painted();
    d_->layOut();
    QPainter painter(viewport());
    const GridView view = d_->view();
    GridPainter(d_->state, view).paint(painter);
}

void FlexGrid::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    d_->layoutLater();
}

void FlexGrid::scrollContentsBy(int, int)
{
    if (d_->scrolledTo(horizontalScrollBar()->value(), verticalScrollBar()->value())) {
        Q_EMIT Scroll();
    }
}

void FlexGrid::mousePressEvent(QMouseEvent *event)
{
    d_->input.mousePress(*event);
}

void FlexGrid::mouseMoveEvent(QMouseEvent *event)
{
    d_->input.mouseMove(*event);
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent *)
{
    d_->input.doubleClick();
}

void FlexGrid::contextMenuEvent(QContextMenuEvent *event)
{
    d_->input.contextMenu(*event);
}

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    d_->input.keyPress(*event);
}

void FlexGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    d_->repaintLater();
    d_->announceCurrent();
    Q_EMIT GotFocus();
}

void FlexGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    d_->repaintLater();
    Q_EMIT LostFocus();
}

bool FlexGrid::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QAbstractScrollArea::viewportEvent(event);
    }
    d_->input.toolTip(static_cast<QHelpEvent &>(*event));
    return true;
}

void FlexGrid::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        d_->forgetFont();
        d_->measureAll();
    }
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange
        || event->type() == QEvent::EnabledChange) {
        d_->layoutLater();
    }
}

} // namespace controls
