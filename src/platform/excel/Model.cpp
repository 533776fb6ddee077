// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Model.h"

#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <utility>

namespace excel::model
{

namespace
{
bool standsBefore(const Cell &cell, int column)
{
    return cell.column < column;
}
} // namespace

std::uint32_t TextTable::indexOf(const QString &text)
{
    const auto found = indexes_.constFind(text);
    if (found != indexes_.constEnd()) {
        return *found;
    }
    const std::uint32_t index = add({text, {}, {}});
    indexes_.insert(text, index);
    return index;
}

std::uint32_t TextTable::add(Text text)
{
    texts_.push_back(std::move(text));
    return static_cast<std::uint32_t>(texts_.size() - 1);
}

Row &Sheet::row(int number)
{
    const auto index = static_cast<std::size_t>(number);
    if (index >= rows.size()) {
        rows.resize(index + 1);
    }
    return rows[index];
}

const Row *Sheet::rowIfAny(int number) const
{
    const auto index = static_cast<std::size_t>(number);
    return number >= 0 && index < rows.size() ? &rows[index] : nullptr;
}

std::size_t Sheet::indexInRow(const std::vector<Cell> &cells, int column)
{
    // Sheets are written from left to right: most look-ups are for the last cell or the one after it.
    if (cells.empty() || cells.back().column < column) {
        return cells.size();
    }
    return static_cast<std::size_t>(std::lower_bound(cells.begin(), cells.end(), column, standsBefore) - cells.begin());
}

const Cell *Sheet::cellIfAny(int rowNumber, int column) const
{
    const Row *found = rowIfAny(rowNumber);
    if (!found) {
        return nullptr;
    }
    const std::size_t at = indexInRow(found->cells, column);
    return at < found->cells.size() && found->cells[at].column == column ? &found->cells[at] : nullptr;
}

Cell *Sheet::cellIfAny(int rowNumber, int column)
{
    return const_cast<Cell *>(std::as_const(*this).cellIfAny(rowNumber, column));
}

void Sheet::insertCell(int rowNumber, int column, std::size_t index)
{
    Cell added;
    added.style = styleAt(rowNumber, column);
    added.column = static_cast<std::uint16_t>(column);
    std::vector<Cell> &cells = row(rowNumber).cells;
    cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(index), added);
}

Cell &Sheet::cell(int rowNumber, int column)
{
    std::vector<Cell> &cells = row(rowNumber).cells;
    const std::size_t at = indexInRow(cells, column);
    if (at == cells.size() || cells[at].column != column) {
        insertCell(rowNumber, column, at);
    }
    return cells[at];
}

std::uint32_t Sheet::styleAt(int rowNumber, int column) const
{
    if (const Cell *found = cellIfAny(rowNumber, column)) {
        return found->style;
    }
    const Row *inRow = rowIfAny(rowNumber);
    if (inRow && inRow->style != Unset) {
        return static_cast<std::uint32_t>(inRow->style);
    }
    const auto inColumn = columns.find(column);
    return inColumn != columns.end() && inColumn->second.style != Unset ? static_cast<std::uint32_t>(inColumn->second.style) : 0;
}

std::optional<Area> Sheet::mergeAt(int rowNumber, int column) const
{
    if (const Row *found = rowIfAny(rowNumber)) {
        for (const Area &area : found->merges) {
            if (area.holds(rowNumber, column)) {
                return area;
            }
        }
    }
    return std::nullopt;
}

void Sheet::part(const Area &area)
{
    std::vector<Area> met;
    for (int number = area.top; number <= area.bottom; ++number) {
        if (const Row *found = rowIfAny(number)) {
            std::copy_if(found->merges.begin(), found->merges.end(), std::back_inserter(met),
                         [&](const Area &merged) { return merged.meets(area); });
        }
    }
    for (const Area &merged : met) {
        for (int number = merged.top; number <= merged.bottom; ++number) {
            std::erase(row(number).merges, merged);
        }
    }
}

void Sheet::merge(const Area &area)
{
    part(area);
    if (area.rows() == 1 && area.columns() == 1) {
        return;
    }
    for (int number = area.top; number <= area.bottom; ++number) {
        row(number).merges.push_back(area);
        for (int column = area.left; column <= area.right; ++column) {
            if (number != area.top || column != area.left) {
                cell(number, column).content = Content::Blank;
            }
        }
    }
}

std::optional<Area> Sheet::used() const
{
    Area area{0, 0, -1, -1};
    for (std::size_t number = 0; number < rows.size(); ++number) {
        if (!rows[number].cells.empty()) {
            area.bottom = static_cast<int>(number);
            area.right = std::max(area.right, int{rows[number].cells.back().column});
        }
    }
    return area.bottom < 0 ? std::nullopt : std::optional(area);
}

std::vector<Area> Sheet::merges() const
{
    std::vector<Area> result;
    for (std::size_t number = 0; number < rows.size(); ++number) {
        std::copy_if(rows[number].merges.begin(), rows[number].merges.end(), std::back_inserter(result),
                     [&](const Area &area) { return area.top == static_cast<int>(number); });
    }
    return result;
}

Sheet &Book::addSheet(std::size_t position)
{
    const auto taken = [this](const QString &name) {
        return std::any_of(sheets.begin(), sheets.end(),
                           [&](const auto &sheet) { return sheet->name.compare(name, Qt::CaseInsensitive) == 0; });
    };
    auto sheet = std::make_unique<Sheet>();
    sheet->book = this;
    for (std::size_t number = sheets.size() + 1; sheet->name.isEmpty() || taken(sheet->name); ++number) {
        sheet->name = QStringLiteral("Sheet%1").arg(number);
    }
    return **sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(position), std::move(sheet));
}

std::size_t Book::positionOf(const Sheet &wanted) const
{
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const auto &sheet) { return sheet.get() == &wanted; });
    return static_cast<std::size_t>(found - sheets.begin());
}

void Book::checkName(const Sheet &owner, const QString &name) const
{
    const QString refusal = QStringLiteral("The sheet name \"%1\" is not allowed: ").arg(name);
    if (name.isEmpty()) {
        throw ExcelError(QStringLiteral("A sheet name cannot be empty."));
    }
    if (name.size() > MaxSheetNameLength) {
        throw ExcelError(refusal
                         + QStringLiteral("it has %1 characters; the limit is %2.").arg(name.size()).arg(MaxSheetNameLength));
    }
    const auto forbidden = [](QChar letter) { return letter < u' ' || QStringView(u":\\/?*[]").contains(letter); };
    if (std::any_of(name.begin(), name.end(), forbidden)) {
        throw ExcelError(refusal + QStringLiteral("it contains one of : \\ / ? * [ ]."));
    }
    if (name.startsWith(u'\'') || name.endsWith(u'\'')) {
        throw ExcelError(refusal + QStringLiteral("it begins or ends with an apostrophe."));
    }
    for (const auto &sheet : sheets) {
        if (sheet.get() != &owner && sheet->name.compare(name, Qt::CaseInsensitive) == 0) {
            throw ExcelError(refusal + QStringLiteral("another sheet has it."));
        }
    }
}

void deleteSheet(Book &book, Sheet &sheet)
{
    if (book.sheets.size() == 1) {
        throw ExcelError(QStringLiteral("The only sheet of a workbook cannot be deleted."));
    }
    if (book.sheetOrderIsFixed) {
        throw ExcelError(
            QStringLiteral("The sheet \"%1\" cannot be deleted: formulas or names of %2 refer to sheets by their place.")
                .arg(sheet.name, book.path));
    }
    const std::size_t position = book.positionOf(sheet);
    sheet.deleted = true;
    book.deletedSheets.push_back(std::move(book.sheets[position]));
    book.sheets.erase(book.sheets.begin() + static_cast<std::ptrdiff_t>(position));
    if (book.activeSheet > position || book.activeSheet == book.sheets.size()) {
        --book.activeSheet;
    }
}

void Session::handOver()
{
    if (!visible || !launcher) {
        return;
    }
    for (const auto &book : books) {
        if (book->saved && !book->handedOver) {
            book->handedOver = true;
            if (!launcher->open(book->path)) {
                launcher->reportPath(book->path);
            }
        }
    }
}

} // namespace excel::model
