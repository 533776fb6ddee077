// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListGrid.h"

#include "mainmodule/ListDeletion.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/GridState.h"
#include "platform/controls/RedrawPause.h"
#include "platform/sheets/Csv.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QKeyEvent>

#include <algorithm>

namespace mainmodule
{

namespace
{

constexpr int HeaderHeight = 400;

/// A key that types something. Control and Alt together are AltGr; either alone belongs to a command.
bool isCharacter(const QKeyEvent &key)
{
    constexpr Qt::KeyboardModifiers AltGr = Qt::ControlModifier | Qt::AltModifier;
    const Qt::KeyboardModifiers held = key.modifiers() & (AltGr | Qt::MetaModifier);
    return (!held || held == AltGr) && !key.text().isEmpty() && key.text().front().isPrint() && !key.text().front().isSpace();
}

QString columnList(const std::vector<lists::Fault> &faults)
{
    QStringList columns;
    for (const lists::Fault &fault : faults) {
        if (fault.refuses && !columns.contains(fault.column)) {
            columns.append(fault.column);
        }
    }
    return columns.join(QStringLiteral(", "));
}

} // namespace

ListGrid::ListGrid(controls::FlexGrid &grid, ListHost &host, std::unique_ptr<PageLines> lines)
    : grid_(grid), host_(host), page_(std::move(lines)),
      box_(grid, [this](int row, int col, const QString &typed) { return store(row, col, typed); })
{
    layOut();
    grid_.setMouseSelects(true);
    grid_.setTicks(false);
    grid_.installEventFilter(this);
    grid_.setCellDescriber([this](int row, int col) { return describe(row, col); });
    connect(&grid_, &controls::FlexGrid::KeyDown, this, &ListGrid::keyDown);
    connect(&grid_, &controls::FlexGrid::DblClick, this, [this] { open(nullptr); });
    connect(&grid_, &controls::FlexGrid::HeaderClick, this, &ListGrid::sortByColumn);
    connect(&box_, &ListCellBox::moveRequested, this, &ListGrid::move);
    connect(&box_, &ListCellBox::abandoned, this, [this] { host_.showNote(QString()); });
}

void ListGrid::layOut()
{
    grid_.setCols(static_cast<int>(page_->columns().size()));
    grid_.setRows(2);
    grid_.setFixedRows(1);
    grid_.setRowHeight(0, HeaderHeight);
    QList<int> stretched;
    for (int column = 0; column < grid_.Cols(); ++column) {
        const PageColumn &description = page_->columns()[static_cast<std::size_t>(column)];
        grid_.setColWidth(column, description.width);
        grid_.setColMuted(column, description.isDerived);
        if (description.stretches) {
            stretched.append(column);
        }
        if (description.kind == lists::ColumnKind::Points) {
            grid_.setColAlignment(column, controls::CellAlignment::Right);
        }
    }
    grid_.setStretchColumns(stretched);
}

void ListGrid::arrange(const Arrangement &arrangement)
{
    arrangement_ = arrangement;
    const PageLine current = lineAt(grid_.Row());
    lines_ = page_->lines(host_.farmLists(), arrangement_);
    fill();
    if (lines_.empty()) {
        grid_.setCol(page_->firstColumn());
    } else if (current.key != 0) {
        grid_.setRow(std::max(1, rowOf(current)));
    }
    grid_.showCell(grid_.Row(), grid_.Col());
}

void ListGrid::update()
{
    Arrangement all = arrangement_;
    if (page_->hasStableOrder()) {
        all.filter.clear();
        all.activeOnly = false;
    }
    std::vector<PageLine> fresh = page_->lines(host_.farmLists(), all);
    if (page_->hasStableOrder()) {
        QHash<std::int32_t, std::size_t> positions;
        for (std::size_t i = 0; i < fresh.size(); ++i) {
            positions.insert(fresh[i].key, i);
        }
        std::vector<PageLine> ordered;
        for (const PageLine &line : lines_) {
            if (const auto found = positions.constFind(line.key); found != positions.constEnd()) {
                ordered.push_back(fresh[*found]);
                positions.erase(found);
            }
        }
        // New ones come last, in the order of their keys; of those that were hidden before, only such as fit.
        std::vector<PageLine> added;
        for (const std::size_t position : positions) {
            if (fresh[position].key > lastKey_) {
                added.push_back(fresh[position]);
            }
        }
        std::sort(added.begin(), added.end(), [](const PageLine &one, const PageLine &other) { return one.key < other.key; });
        ordered.insert(ordered.end(), added.begin(), added.end());
        fresh = std::move(ordered);
    }
    lines_ = std::move(fresh);
    fill();
}

void ListGrid::fill()
{
    lastKey_ = host_.farmLists().lastKey(page_->list());
    const controls::RedrawPause pause(grid_);
    grid_.setRows(emptyRow() + 1);
    for (int column = 0; column < grid_.Cols(); ++column) {
        QString heading = page_->columns()[static_cast<std::size_t>(column)].heading;
        if (column == arrangement_.column) {
            heading += arrangement_.descending ? QStringLiteral(" \u25BC") : QStringLiteral(" \u25B2");
        }
        grid_.setTextMatrix(0, column, heading);
    }
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        fillRow(static_cast<int>(i) + 1, lines_[i].texts);
    }
    for (std::size_t i = 0; i < drafts_.size(); ++i) {
        QStringList texts(grid_.Cols());
        for (const auto &[column, text] : drafts_[i]) {
            texts[column] = text;
        }
        fillRow(firstDraftRow() + static_cast<int>(i), texts);
    }
    fillRow(emptyRow(), QStringList(grid_.Cols()));
    grid_.setEmptyText(emptyText());
    grid_.setCell(std::max(1, grid_.Row()), grid_.Col());
}

void ListGrid::fillRow(int row, const QStringList &texts)
{
    for (int column = 0; column < grid_.Cols(); ++column) {
        grid_.setTextMatrix(row, column, texts[column]);
    }
}

QString ListGrid::emptyText() const
{
    const QString &failure = host_.farmLists().failure(page_->list());
    if (!failure.isEmpty()) {
        return failure;
    }
    if (!lines_.empty() || !drafts_.empty()) {
        return {};
    }
    return arrangement_.filter.isEmpty() && !arrangement_.activeOnly
        ? tr("Nothing is entered yet. Type into the first line, or paste a block of cells copied in a spreadsheet (Ctrl+V).")
        : tr("No line fits. Empty the filter to show all.");
}

QString ListGrid::describe(int row, int col) const
{
    if (row >= emptyRow()) {
        return tr("New line, %1").arg(page_->columns()[static_cast<std::size_t>(col)].heading);
    }
    const QString text = grid_.TextMatrix(row, col);
    return row < 1 || text.isEmpty()
        ? text
        : QStringLiteral("%1, %2").arg(page_->columns()[static_cast<std::size_t>(col)].heading, text);
}

PageLine ListGrid::lineAt(int row) const
{
    return isStored(row) ? lines_[static_cast<std::size_t>(row - 1)] : PageLine{page_->list(), 0, {}};
}

int ListGrid::rowOf(const PageLine &line) const
{
    const auto found = std::find_if(lines_.begin(), lines_.end(), [&](const PageLine &other) { return other.isSameRow(line); });
    return found == lines_.end() ? 0 : static_cast<int>(found - lines_.begin()) + 1;
}

void ListGrid::keyDown(QKeyEvent *event)
{
    const bool opens = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (opens) {
        event->accept();
        open(nullptr);
    } else if (event->key() == Qt::Key_Space && kindOf(grid_.Col()) == lists::ColumnKind::YesNo) {
        event->accept();
        toggle();
    } else if (isCharacter(*event)) {
        event->accept();
        const QString typed = event->text();
        open(&typed);
    }
}

void ListGrid::open(const QString *typed)
{
    const int column = grid_.Col();
    if (!page_->isEditable(lineAt(grid_.Row()), column)) {
        host_.showNote(
            tr("%1 follows from the other columns of the line.").arg(page_->columns()[static_cast<std::size_t>(column)].heading));
        return;
    }
    const QStringList choices = page_->suggestions(host_.farmLists(), column);
    const bool several = kindOf(column) == lists::ColumnKind::References;
    typed ? box_.openTyping(*typed, choices, several) : box_.open(choices, several);
}

void ListGrid::toggle()
{
    const int row = grid_.Row();
    const int column = grid_.Col();
    const QString now = grid_.TextMatrix(row, column);
    store(row, column, now == QLatin1String("No") ? QStringLiteral("Yes") : QStringLiteral("No"));
}

/// By columns, over the derived ones and on to the next line.
void ListGrid::move(int rows, int columns)
{
    int row = std::clamp(grid_.Row() + rows, 1, grid_.Rows() - 1);
    int column = grid_.Col();
    if (columns != 0) {
        const int count = grid_.Cols();
        for (int step = 0; step < count; ++step) {
            column += columns;
            if (column < 0 || column >= count) {
                const int next = row + columns;
                if (next < 1 || next >= grid_.Rows()) {
                    return;
                }
                row = next;
                column = columns > 0 ? 0 : count - 1;
            }
            if (page_->isEditable(lineAt(row), column)) {
                break;
            }
        }
    }
    grid_.setSelection({row, column, 1, 1});
    grid_.showCell(row, column);
}

bool ListGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &grid_ && event->type() == QEvent::KeyPress) {
        const auto &key = static_cast<const QKeyEvent &>(*event);
        const bool moves = (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) && !(key.modifiers() & Qt::ControlModifier);
        if (moves) {
            move(0, key.key() == Qt::Key_Tab ? 1 : -1);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

bool ListGrid::store(int row, int col, const QString &typed)
{
    TypedCells cells;
    if (isDraft(row)) {
        cells = drafts_[static_cast<std::size_t>(row - firstDraftRow())];
    } else if (!isStored(row) && typed.trimmed().isEmpty()) {
        return true;
    }
    cells[col] = typed;
    const lists::GivenList given = page_->typed(lineAt(row), cells);
    lists::Planner planner(host_.farmLists(), lists::Matching::ByKey, host_.farm());
    planner.add(given);
    const lists::Plan &plan = planner.plan();
    const QString heading = page_->columns()[static_cast<std::size_t>(col)].heading;
    const auto own = std::find_if(plan.faults.begin(), plan.faults.end(), [&](const lists::Fault &fault) {
        return fault.refuses && (fault.column == heading || isStored(row));
    });
    // Emptied again, a cell of a line that is not stored waits like the others.
    if (own != plan.faults.end() && !(typed.trimmed().isEmpty() && !isStored(row))) {
        host_.showFailure(QStringLiteral("%1: %2").arg(own->column.isEmpty() ? heading : own->column, own->reason));
        return false;
    }
    return storePlan(row, cells, plan);
}

bool ListGrid::storePlan(int row, const TypedCells &cells, const lists::Plan &plan)
{
    if (plan.refuses()) {
        holdDraft(row, cells, plan);
        return true;
    }
    if (plan.changes.empty()) {
        return true;
    }
    const lists::Change &change = plan.changes.front();
    const QString name = host_.farmLists().name(change.list, *change.after);
    const ListHost::Written written = host_.write(plan.changes, tr("%1 saved").arg(name));
    if (!written.done && written.conflicts.empty()) {
        return false;
    }
    dropDraft(row);
    update();
    if (!written.conflicts.empty()) {
        showConflicts(written.conflicts);
        return true;
    }
    if (!plan.faults.empty()) {
        host_.showNote(tr("%1 saved. %2: %3").arg(name, plan.faults.front().column, plan.faults.front().reason));
    }
    if (!change.before) {
        grid_.setRow(std::max(1, rowOf({change.list, change.key(), {}})));
    }
    return true;
}

void ListGrid::holdDraft(int row, const TypedCells &cells, const lists::Plan &plan)
{
    const bool isBlank =
        std::all_of(cells.begin(), cells.end(), [](const auto &cell) { return cell.second.trimmed().isEmpty(); });
    if (isDraft(row) && isBlank) {
        dropDraft(row);
    } else if (isDraft(row)) {
        drafts_[static_cast<std::size_t>(row - firstDraftRow())] = cells;
    } else {
        drafts_.push_back(cells);
    }
    fill();
    if (!isBlank) {
        host_.showNote(tr("The line is stored once it is complete: %1.").arg(columnList(plan.faults)));
    }
}

void ListGrid::dropDraft(int row)
{
    if (isDraft(row)) {
        drafts_.erase(drafts_.begin() + (row - firstDraftRow()));
    }
}

void ListGrid::showConflicts(const std::vector<lists::Conflict> &conflicts)
{
    std::vector<lists::Fault> faults;
    for (const lists::Conflict &conflict : conflicts) {
        const lists::Table &table = lists::tableOf(conflict.change.list);
        const lists::Record &record = conflict.change.after ? *conflict.change.after : *conflict.change.before;
        faults.push_back({conflict.change.list, table.sheet, 0, {}, record.cell(table.nameColumn), conflict.reason, true});
    }
    Q_EMIT faultsFound({}, faults);
}

void ListGrid::startLine()
{
    if (box_.leave()) {
        grid_.setSelection({emptyRow(), page_->firstColumn(), 1, 1});
        grid_.showCell(emptyRow(), grid_.Col());
        grid_.setFocus();
    }
}

void ListGrid::selectAll()
{
    if (!lines_.empty()) {
        grid_.setSelection({1, 0, static_cast<int>(lines_.size()), grid_.Cols()});
    }
}

void ListGrid::sortByColumn(int column)
{
    if (!box_.leave()) {
        return;
    }
    Arrangement arrangement = arrangement_;
    arrangement.descending = column == arrangement.column && !arrangement.descending;
    arrangement.column = column;
    arrange(arrangement);
}

void ListGrid::paste()
{
    if (!box_.leave()) {
        return;
    }
    const std::vector<std::vector<sheets::Cell>> rows = sheets::readClipboardText(QGuiApplication::clipboard()->text());
    if (rows.empty()) {
        host_.showNote(tr("There is nothing to paste: copy a block of cells first."));
        return;
    }
    const controls::CellSpan cells = grid_.selection();
    std::vector<PageLine> targets;
    for (int row = cells.row; isStored(row); ++row) {
        targets.push_back(lineAt(row));
    }
    const std::vector<lists::GivenList> given = page_->pasted(rows, targets, cells.col);
    lists::Planner planner(host_.farmLists(), page_->pastedMatching(), host_.farm());
    for (const lists::GivenList &list : given) {
        planner.add(list);
    }
    const lists::Plan &plan = planner.plan();
    if (plan.refuses()) {
        Q_EMIT pasteRefused(given);
        return;
    }
    if (plan.changes.empty()) {
        host_.showNote(tr("All pasted rows are there already."));
        return;
    }
    const ListHost::Written written = host_.write(plan.changes, tr("Pasted: %1").arg(lists::summary(plan.total())));
    update();
    if (!written.conflicts.empty()) {
        showConflicts(written.conflicts);
    } else if (written.done) {
        Q_EMIT faultsFound(given, plan.faults);
    }
}

void ListGrid::clearCells()
{
    const controls::CellSpan cells = grid_.selection();
    lists::Planner planner(host_.farmLists(), lists::Matching::ByKey, host_.farm());
    for (int row = cells.row; row < cells.row + cells.rows && isStored(row); ++row) {
        TypedCells blank;
        for (int column = cells.col; column < cells.col + cells.cols; ++column) {
            if (page_->isEditable(lineAt(row), column)) {
                blank[column] = QString();
            }
        }
        if (!blank.empty()) {
            planner.add(page_->typed(lineAt(row), blank));
        }
    }
    const lists::Plan &plan = planner.plan();
    if (plan.refuses()) {
        const lists::Fault &fault = plan.faults.front();
        host_.showFailure(tr("Nothing was emptied. %1: %2").arg(fault.column, fault.reason));
        return;
    }
    if (!plan.changes.empty()) {
        const ListHost::Written written = host_.write(plan.changes, tr("Cells of %1 lines emptied").arg(plan.changes.size()));
        update();
        showConflicts(written.conflicts);
    }
}

void ListGrid::deleteLines()
{
    if (!box_.leave()) {
        return;
    }
    const controls::CellSpan cells = grid_.selection();
    std::vector<PageLine> chosen;
    for (int row = cells.row + cells.rows - 1; row >= cells.row; --row) {
        if (isDraft(row)) {
            dropDraft(row);
        } else if (isStored(row)) {
            chosen.push_back(lineAt(row));
        }
    }
    if (chosen.empty()) {
        fill();
        return;
    }
    const ListDeletion deletion(host_.session(), host_.farmLists(), chosen);
    if (!deletion.changes().empty()) {
        const ListHost::Written written = host_.write(deletion.changes(), deletion.text());
        if (!written.conflicts.empty()) {
            update();
            showConflicts(written.conflicts);
            return;
        }
        if (!written.done) {
            return;
        }
    } else if (!deletion.text().isEmpty()) {
        host_.showFailure(deletion.text());
    }
    update();
    Q_EMIT faultsFound({}, deletion.held());
}

} // namespace mainmodule
