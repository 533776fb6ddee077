// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridAccessible.h"

#include "platform/controls/FlexGrid.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace controls
{

namespace
{

/// One cell as a screen reader sees it.
class CellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    CellAccessible(FlexGrid *grid, int row, int col) : grid_(grid), row_(row), col_(col) {}

    bool isValid() const override { return grid_ && row_ < grid_->Rows() && col_ < grid_->Cols(); }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(grid_); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *focusChild() const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid()) {
            return {};
        }
        switch (kind) {
        case QAccessible::Name:
            return grid_->cellDescription(row_, col_);
        case QAccessible::Value:
            return grid_->TextMatrix(row_, col_);
        default:
            return {};
        }
    }
    QAccessible::Role role() const override
    {
        if (isValid() && row_ < grid_->FixedRows()) {
            return QAccessible::ColumnHeader;
        }
        return isValid() && col_ < grid_->FixedCols() ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QRect rect() const override
    {
        const QRect cell = isValid() ? grid_->cellRect(row_, col_) : QRect();
        return cell.isEmpty() ? cell : QRect(grid_->viewport()->mapToGlobal(cell.topLeft()), cell.size());
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !isValid() || grid_->cellRect(row_, col_).isEmpty();
        state.disabled = isValid() && !grid_->isEnabled();
        state.selectable = role() == QAccessible::Cell;
        state.focusable = state.selectable;
        state.selected = isSelected();
        state.focused = state.selected && grid_->hasFocus();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface *>(this) : nullptr;
    }

    bool isSelected() const override { return isValid() && grid_->Row() == row_ && grid_->Col() == col_; }
    int columnIndex() const override { return col_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }
    QList<QAccessibleInterface *> columnHeaderCells() const override
    {
        return headers(isValid() ? grid_->FixedRows() : 0, [this](int line) { return std::pair(line, col_); });
    }
    QList<QAccessibleInterface *> rowHeaderCells() const override
    {
        return headers(isValid() ? grid_->FixedCols() : 0, [this](int line) { return std::pair(row_, line); });
    }

private:
    template <typename CellOf> QList<QAccessibleInterface *> headers(int count, CellOf cellOf) const
    {
        QList<QAccessibleInterface *> cells;
        QAccessibleTableInterface *table = parent() ? parent()->tableInterface() : nullptr;
        for (int line = 0; table && line < count; ++line) {
            const auto [row, col] = cellOf(line);
            cells += table->cellAt(row, col);
        }
        return cells;
    }

    QPointer<FlexGrid> grid_;
    int row_;
    int col_;
};

/// The grid as a table. Its children are all cells, row by row, including the fixed ones.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridAccessible(FlexGrid *grid) : QAccessibleWidget(grid, QAccessible::Table) {}
    ~GridAccessible() override
    {
        for (const QAccessible::Id id : std::as_const(cells_)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    int childCount() const override { return grid().Rows() * grid().Cols(); }
    QAccessibleInterface *child(int index) const override
    {
        const int cols = grid().Cols();
        return cols == 0 ? nullptr : cellAt(index / cols, index % cols);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        auto *cell = const_cast<QAccessibleInterface *>(child)->tableCellInterface();
        return cell ? cell->rowIndex() * grid().Cols() + cell->columnIndex() : -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const auto cell = grid().cellAt(grid().viewport()->mapFromGlobal(QPoint(x, y)));
        return cell ? cellAt(cell->first, cell->second) : nullptr;
    }
    QAccessibleInterface *focusChild() const override { return cellAt(grid().Row(), grid().Col()); }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int col) const override
    {
        if (row < 0 || col < 0 || row >= grid().Rows() || col >= grid().Cols()) {
            return nullptr;
        }
        const auto key = (static_cast<quint64>(row) << 32) | static_cast<quint64>(col);
        if (const auto known = cells_.constFind(key); known != cells_.constEnd()) {
            return QAccessible::accessibleInterface(*known);
        }
        // Qt's cache owns registered interfaces; the destructor deletes them there.
        auto *cell = new CellAccessible(&grid(), row, col);
        cells_.insert(key, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    int selectedCellCount() const override { return 1; }
    QList<QAccessibleInterface *> selectedCells() const override { return {focusChild()}; }
    QString columnDescription(int column) const override
    {
        const int row = grid().FixedRows() - 1;
        return row >= 0 && column >= 0 && column < grid().Cols() ? grid().TextMatrix(row, column) : QString();
    }
    QString rowDescription(int row) const override
    {
        const int col = grid().FixedCols() - 1;
        return col >= 0 && row >= 0 && row < grid().Rows() ? grid().TextMatrix(row, col) : QString();
    }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return grid().selectedRow() < 0 ? 0 : 1; }
    int columnCount() const override { return grid().Cols(); }
    int rowCount() const override { return grid().Rows(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override
    {
        return grid().selectedRow() < 0 ? QList<int>() : QList<int>{grid().selectedRow()};
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return grid().selectedRow() == row; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override {}

private:
    FlexGrid &grid() const { return *static_cast<FlexGrid *>(widget()); }

    mutable QHash<quint64, QAccessible::Id> cells_;
};

QAccessibleInterface *makeGridAccessible(const QString &className, QObject *object)
{
    auto *grid = className == QLatin1String("controls::FlexGrid") ? qobject_cast<FlexGrid *>(object) : nullptr;
    return grid ? new GridAccessible(grid) : nullptr;
}

} // namespace

void installGridAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeGridAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

} // namespace controls
