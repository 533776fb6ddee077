// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/CellAlignment.h"
#include "platform/controls/Marks.h"

#include <QAbstractScrollArea>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace controls
{

/// A grid over its own compact cell store, quick at 50,000 rows.
///
/// Rows and columns count from 0; the first FixedRows and FixedCols stay in place when the rest scrolls. Widths and heights are
/// in twips, 15 to a pixel of the stored measure; the view draws 10 twips to a logical pixel. A row or column of size 0 is hidden
/// and keeps its number. Setters never raise a signal; signals come from the user's mouse and keys alone.
/// Rows or columns out of range raise error 9.
class FlexGrid : public QAbstractScrollArea
{
    Q_OBJECT
public:
    static constexpr int DefaultRowHeight = 240;
    static constexpr int DefaultColWidth = 960;

    explicit FlexGrid(QWidget *parent = nullptr);
    ~FlexGrid() override;

    /// Empties texts, values, colours, bold, alignment and merging; keeps counts, widths and heights.
    void Clear();
    int Rows() const;
    int Cols() const;
    void setRows(int rows);
    void setCols(int cols);
    int FixedRows() const;
    int FixedCols() const;
    void setFixedRows(int rows);
    void setFixedCols(int cols);

    /// The current cell. Setting it neither scrolls nor raises a signal.
    int Row() const;
    int Col() const;
    void setRow(int row);
    void setCol(int col);
    void setCell(int row, int col);

    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString &text);
    /// Of the current cell.
    QString Text() const { return TextMatrix(Row(), Col()); }
    void setText(const QString &text) { setTextMatrix(Row(), Col(), text); }
    /// A value kept beside the text of a cell, such as its date; invalid when none was set. setTextMatrix drops it.
    QVariant cellValue(int row, int col) const;
    void setCellValue(int row, int col, const QVariant &value);

    /// 0xBBGGRR, as those of `mark`; nothing for a cell never painted.
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

    /// While false the view does not repaint; true paints once.
    bool Redraw() const;
    void setRedraw(bool redraw);

    /// Columns that share the width left over, as a matter of the view alone; ColWidth stays.
    void setStretchColumns(const QList<int> &columns);
    /// A row drawn with the accent bar and lines of a selection; -1 for none.
    void setSelectedRow(int row);
    int selectedRow() const;
    /// Draw the text "0" in the muted colour, so that the counts stand out. Off unless set.
    void setMuteZeros(bool mute);
    /// Draw a tick on yellow and red cells without text; it is no text of the cell. On unless set.
    void setTicks(bool ticks);

    /// Where a cell lies in the viewport, in logical pixels; empty for a hidden or scrolled-out cell.
    QRect cellRect(int row, int col) const;
    /// Where a cell begins in the viewport by the fixed extent and what lies between it and the first row and column shown, also
    /// for a hidden cell; one scrolled out at the near edges begins where the fixed ones end.
    QPoint cellOrigin(int row, int col) const;
    /// Row and column under a point of the viewport, fixed ones included; nothing beyond the last cell.
    std::optional<std::pair<int, int>> cellAt(QPoint position) const;

    /// Gives screen reader and tool tip what a cell says; without it a default names row, column header, text and mark.
    void setCellDescriber(std::function<QString(int row, int col)> describer);
    QString cellDescription(int row, int col) const;

Q_SIGNALS:
    /// The mouse was pressed on a cell that is not fixed, which has become the current one; also Space or F2 on the current cell
    /// when setKeyClicks asks for it. The cell becomes current first, then the grid takes the focus, then Click comes: whoever
    /// loses the focus to the grid already finds the new Row and Col. Where he moves them, the cell becomes current once more.
    void Click(int row, int col);
    /// After Click of the first press, for the same cell.
    void DblClick(int row, int col);
    /// A key moved the current cell to another row or column.
    void cellMovedByKey(int row, int col);
    /// A key that moves nothing, before the grid does anything with it. Setting `event.accept()` ends the key there.
    void KeyDown(QKeyEvent *event);
    void GotFocus();
    void LostFocus();
    /// Other rows or columns came into view, also by code.
    void Scroll();

public:
    enum class KeyClick { None, F2, SpaceAndF2 };
    void setKeyClicks(KeyClick keys);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Private;
    std::unique_ptr<Private> d_;
};

} // namespace controls
