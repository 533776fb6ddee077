// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/CellAlignment.h"
#include "platform/controls/CellColours.h"

#include <QAbstractScrollArea>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace controls
{

struct CellSpan;

/// A grid with its own compact cell store, fast at 50,000 rows. Its context menu offers the widget's actions and copying.
///
/// Rows and columns count from 0; the first FixedRows and FixedCols do not scroll. Widths and heights are in twips, TwipsPerPixel
/// to a logical pixel. A row or column of size 0 is hidden and keeps its number. Setters never raise a signal; only the user's
/// mouse and keys do. Rows or columns out of range raise error 9.
class FlexGrid : public QAbstractScrollArea
{
    Q_OBJECT
public:
    static constexpr int DefaultRowHeight = 240;
    static constexpr int DefaultColWidth = 960;

    explicit FlexGrid(QWidget *parent = nullptr);
    ~FlexGrid() override;

    /// Resets texts, values, colours, bold, alignment and merging, but not counts, widths and heights.
    void Clear();
    int Rows() const;
    int Cols() const;
    void setRows(int rows);
    void setCols(int cols);
    int FixedRows() const;
    int FixedCols() const;
    void setFixedRows(int rows);
    void setFixedCols(int cols);

    /// Rows after the fixed ones that do not scroll either, but can be selected.
    void setFrozenRows(int rows);
    /// The same for columns.
    void setFrozenCols(int cols);

    /// The current cell. Setting it neither scrolls nor raises a signal.
    int Row() const;
    int Col() const;
    void setRow(int row);
    void setCol(int col);
    void setCell(int row, int col);

    /// The cells that Shift with moving keys has selected, else the current cell.
    CellSpan selection() const;
    /// The last cell becomes the current one.
    void setSelection(const CellSpan &cells);
    /// Whether dragging the mouse, and Shift with a press, extend the selection. Off by default.
    void setMouseSelects(bool selects);

    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString &text);
    /// Of the current cell.
    QString Text() const { return TextMatrix(Row(), Col()); }
    void setText(const QString &text) { setTextMatrix(Row(), Col(), text); }
    /// A value behind the text of a cell, such as its date; invalid when none was set. setTextMatrix removes it.
    QVariant cellValue(int row, int col) const;
    void setCellValue(int row, int col, const QVariant &value);

    /// 0xBBGGRR, as in cellColour; nothing for a cell without a colour.
    std::optional<int> CellBackColor(int row, int col) const;
    void setCellBackColor(int row, int col, int colour);
    bool CellFontBold(int row, int col) const;
    void setCellFontBold(int row, int col, bool bold);
    CellAlignment cellAlignment(int row, int col) const;
    void setCellAlignment(int row, int col, CellAlignment alignment);
    CellAlignment colAlignment(int col) const;
    void setColAlignment(int col, CellAlignment alignment);

    int ColWidth(int col) const;
    void setColWidth(int col, int twips);
    int RowHeight(int row) const;
    void setRowHeight(int row, int twips);
    /// Twips of one grid line.
    int GridLineWidth() const { return 15; }

    /// Equal neighbours of a merged row or column are drawn as one cell.
    bool MergeRow(int row) const;
    void setMergeRow(int row, bool merge);
    bool MergeCol(int col) const;
    void setMergeCol(int col, bool merge);

    /// First row and column shown behind the fixed ones.
    int TopRow() const;
    void setTopRow(int row);
    int LeftCol() const;
    void setLeftCol(int col);
    bool RowIsVisible(int row) const;
    /// Scrolls as little as needed to show the cell.
    void showCell(int row, int col);

    /// While false the view does not repaint; setting true repaints once.
    bool Redraw() const;
    void setRedraw(bool redraw);

    /// Columns that share the spare or missing width when drawn; ColWidth is unchanged. They are wide enough for their headings
    /// and numbers.
    void setStretchColumns(const QList<int> &columns);
    /// A row without a text in this column closes the list: its colours are not drawn.
    void setNameColumn(int col);
    /// A row drawn with the accent bar and lines of a selection; -1 for none.
    void setSelectedRow(int row);
    int selectedRow() const;
    /// Draws the text "0" in the muted colour, which emphasises the counts. Off by default.
    void setMuteZeros(bool mute);
    /// Draws the texts of a column in the muted colour, as those that are only shown.
    void setColMuted(int col, bool muted);
    /// Draws a tick on yellow and red cells without text; it is not part of the text. On by default.
    void setTicks(bool ticks);

    /// A cell's area in the viewport, in logical pixels; empty for a hidden or scrolled-out cell.
    QRect cellRect(int row, int col) const;
    /// A cell's top left corner in the viewport, also of a hidden cell. A cell scrolled out at the top or left begins where the
    /// fixed ones end.
    QPoint cellOrigin(int row, int col) const;
    /// Row and column under a point of the viewport, fixed ones included; nothing beyond the last cell.
    std::optional<std::pair<int, int>> cellAt(QPoint position) const;

    /// What a grid without records says below its headings: why it is empty and what to do. Empty for a grid with records.
    void setEmptyText(const QString &text);
    QString emptyText() const;

    enum class Copy { Selection, All };
    /// Copies cells to the clipboard as tab-separated text: the selection (cells, or rows in a grid with a selected row), or all
    /// cells with the headings.
    void copy(Copy what) const;
    /// Texts to copy instead of the texts of the cells.
    void setCellCopyText(std::function<QString(int row, int col)> text);

    /// Describes a cell to screen readers and in tool tips; the default names row, column header, text and colour.
    void setCellDescriber(std::function<QString(int row, int col)> describer);
    QString cellDescription(int row, int col) const;

Q_SIGNALS:
    /// The mouse was pressed on a cell that is not fixed, now the current one; or Space or F2 was pressed, as set by
    /// setKeyClicks. The cell becomes current first, then the grid takes the focus, then Click is raised: a widget that loses the
    /// focus to the grid already finds the new Row and Col. If it moves them, the pressed cell becomes current again.
    void Click(int row, int col);
    /// After Click of the first press, for the same cell.
    void DblClick(int row, int col);
    /// The mouse was pressed on a fixed row of a column that is not fixed.
    void HeaderClick(int col);
    /// A key or the press for the context menu moved the current cell to another row or column.
    void cellMoved(int row, int col);
    /// A key that does not move the current cell, before the grid handles it. An accepted event is not handled further.
    void KeyDown(QKeyEvent *event);
    void GotFocus();
    void LostFocus();
    /// Other rows or columns came into view, also by code.
    void Scroll();

public:
    enum class KeyClick { None, F2, SpaceAndF2 };
    void setKeyClicks(KeyClick keys);

    QSize sizeHint() const override { return {480, 320}; }
    QSize minimumSizeHint() const override { return {160, 96}; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    friend class FlexGridInput;
    class Private;
    std::unique_ptr<Private> d_;
};

} // namespace controls
