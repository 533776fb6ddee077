// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Range.h"

#include "platform/excel/CellValue.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/Model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace excel
{

using model::Book;
using model::Cell;
using model::Content;
using model::EdgeChange;
using model::Sheet;
using model::Style;
using model::StyleTable;
using model::Trait;

namespace
{
/// A number of the engine and the corresponding one of the file formats.
using Codes = std::pair<int, int>;
constexpr std::array<Codes, 8> HorizontalCodes{
    {{xlGeneral, 0}, {xlLeft, 1}, {2, 1}, {xlCenter, 2}, {xlRight, 3}, {5, 4}, {xlJustify, 5}, {7, 6}}};
constexpr std::array<Codes, 4> VerticalCodes{{{xlTop, 0}, {xlCenter, 1}, {xlBottom, 2}, {xlJustify, 3}}};
constexpr std::array<Codes, 7> UnderlineCodes{
    {{xlNone, 0}, {0, 0}, {xlUnderlineStyleSingle, 1}, {1, 1}, {-1, 1}, {xlUnderlineStyleDouble, 2}, {5, 2}}};
constexpr std::array<Codes, 4> WeightCodes{
    {{xlHairline, model::HairLine}, {xlThin, model::ThinLine}, {xlMedium, model::MediumLine}, {xlThick, model::ThickLine}}};
constexpr std::array<Codes, 3> LineStyleCodes{{{xlContinuous, model::ThinLine}, {xlNone, model::NoLine}, {0, model::NoLine}}};
constexpr std::array<Codes, 2> PatternCodes{{{xlSolid, 1}, {xlNone, 0}}};

[[noreturn]] void refuse(const char *property, const QString &value)
{
    throw ExcelError(QStringLiteral("%1 cannot be set to %2.").arg(QLatin1String(property), value));
}

template <std::size_t size> int codeOf(const std::array<Codes, size> &codes, int value, const char *property)
{
    const auto found = std::find_if(codes.begin(), codes.end(), [&](const Codes &code) { return code.first == value; });
    if (found == codes.end()) {
        refuse(property, QString::number(value));
    }
    return found->second;
}

template <std::size_t size> int valueOf(const std::array<Codes, size> &codes, int code, int otherwise)
{
    const auto found = std::find_if(codes.begin(), codes.end(), [&](const Codes &entry) { return entry.second == code; });
    return found == codes.end() ? otherwise : found->first;
}

double checked(double value, double least, double most, const char *property)
{
    if (!(value >= least && value <= most)) {
        refuse(property, QString::number(value));
    }
    return value;
}

/// A range of more cells than this is a mistake and would exhaust the memory.
constexpr qint64 MaxCells = 20'000'000;

template <typename Action> void forEachCell(Sheet &sheet, const Area &area, Action action)
{
    if (qint64{area.rows()} * area.columns() > MaxCells) {
        throw ExcelError(QStringLiteral("A range of %1 rows and %2 columns is too large.").arg(area.rows()).arg(area.columns()));
    }
    sheet.forEachCell(area, action);
}

/// Whether a cell is covered by the first cell of a merged area.
bool isJoinedToOther(const Sheet &sheet, int row, int column)
{
    if (sheet.rows[static_cast<std::size_t>(row)].merges.empty()) {
        return false;
    }
    const std::optional<Area> merged = sheet.mergeAt(row, column);
    return merged && (merged->top != row || merged->left != column);
}

template <typename Change> void changeStyles(Sheet &sheet, const Area &area, Change change, std::int32_t value)
{
    StyleTable &styles = sheet.book->styles;
    // Neighbouring cells mostly share a style, so the last result is tried first.
    std::optional<std::pair<std::uint32_t, std::uint32_t>> last;
    forEachCell(sheet, area, [&](Cell &cell, int, int) {
        if (!last || last->first != cell.style) {
            last = {cell.style, styles.changed(cell.style, change, value)};
        }
        cell.style = last->second;
    });
}

/// The style of the first cell.
const Style &styleOf(const Sheet &sheet, const Area &area)
{
    return sheet.book->styles.at(sheet.styleAt(area.top, area.left));
}

std::int32_t traitOf(const Sheet &sheet, const Area &area, Trait trait)
{
    return styleOf(sheet, area)[trait];
}

void putNumber(Cell &cell, double number)
{
    cell.content = Content::Number;
    cell.number = number;
}
} // namespace

Range::Range(std::shared_ptr<Book> book, Sheet *sheet, const Area &area) : book_(std::move(book)), sheet_(sheet), area_(area) {}

Sheet &Range::sheet() const
{
    if (!sheet_) {
        throw basic::RunTimeError(basic::ErrorNumber::ObjectNotSet, QStringLiteral("This range is not set."));
    }
    if (sheet_->deleted) {
        throw ExcelError(QStringLiteral("The sheet \"%1\" was deleted.").arg(sheet_->name));
    }
    return *sheet_;
}

void Range::setValue(const QString &value)
{
    Sheet &target = sheet();
    if (value.size() > MaxTextLength) {
        throw ExcelError(QStringLiteral("A cell is limited to %1 characters; this text has %2: \"%3...\"")
                             .arg(MaxTextLength)
                             .arg(value.size())
                             .arg(value.left(40)));
    }
    const std::optional<double> number = plainNumber(value);
    std::optional<std::uint32_t> index;
    forEachCell(target, area_, [&](Cell &cell, int row, int column) {
        if (isJoinedToOther(target, row, column)) {
            return;
        }
        if (value.isEmpty()) {
            cell.content = Content::Blank;
        } else if (number && !isTextFormat(target.book->styles, cell.style)) {
            putNumber(cell, *number);
        } else {
            index = index ? index : target.book->texts.indexOf(value);
            cell.content = Content::Text;
            cell.index = *index;
        }
    });
}

void Range::setValue(double value)
{
    Sheet &target = sheet();
    if (!std::isfinite(value)) {
        refuse("Value", QString::number(value));
    }
    forEachCell(target, area_, [&](Cell &cell, int row, int column) {
        if (!isJoinedToOther(target, row, column)) {
            putNumber(cell, value);
        }
    });
}

QString Range::value() const
{
    const Cell *cell = sheet().cellIfAny(area_.top, area_.left);
    return cell ? textOf(*sheet_->book, *cell) : QString();
}

bool Range::isNumber() const
{
    const Cell *cell = sheet().cellIfAny(area_.top, area_.left);
    return cell && cell->content == Content::Number;
}

void Range::setMergeCells(bool merged)
{
    Sheet &target = sheet();
    if (!merged) {
        target.part(area_);
        return;
    }
    if (qint64{area_.rows()} * area_.columns() > MaxCells) {
        throw ExcelError(QStringLiteral("The range is too large to be merged."));
    }
    target.merge(area_);
}

bool Range::MergeCells() const
{
    return sheet().mergeAt(area_.top, area_.left).has_value();
}

void Range::setRowHeight(double points)
{
    Sheet &target = sheet();
    const auto twips = static_cast<int>(std::lround(checked(points, 0, 409.5, "RowHeight") * 20));
    for (int row = area_.top; row <= area_.bottom; ++row) {
        target.row(row).height = twips;
    }
}

double Range::RowHeight() const
{
    const model::Row *row = sheet().rowIfAny(area_.top);
    return (row && row->height != model::Unset ? row->height : sheet_->standardHeight) / 20.0;
}

void Range::setWrapText(bool wrap)
{
    changeStyles(sheet(), area_, Trait::Wrap, wrap);
}

bool Range::WrapText() const
{
    return traitOf(sheet(), area_, Trait::Wrap) != 0;
}

void Range::setHorizontalAlignment(int alignment)
{
    changeStyles(sheet(), area_, Trait::Horizontal, codeOf(HorizontalCodes, alignment, "HorizontalAlignment"));
}

int Range::HorizontalAlignment() const
{
    return valueOf(HorizontalCodes, traitOf(sheet(), area_, Trait::Horizontal), xlGeneral);
}

void Range::setVerticalAlignment(int alignment)
{
    changeStyles(sheet(), area_, Trait::Vertical, codeOf(VerticalCodes, alignment, "VerticalAlignment"));
}

int Range::VerticalAlignment() const
{
    return valueOf(VerticalCodes, traitOf(sheet(), area_, Trait::Vertical), xlBottom);
}

void Range::setOrientation(int degrees)
{
    checked(degrees, -90, 90, "Orientation");
    changeStyles(sheet(), area_, Trait::Rotation, degrees);
}

int Range::Orientation() const
{
    return traitOf(sheet(), area_, Trait::Rotation);
}

void Range::setNumberFormat(const QString &format)
{
    Sheet &target = sheet();
    if (format.isEmpty() || format.size() > 255) {
        refuse("NumberFormat", QStringLiteral("\"%1\"").arg(format.left(40)));
    }
    changeStyles(target, area_, Trait::NumberFormat, book_->styles.numberFormats.indexOf(format));
}

QString Range::NumberFormat() const
{
    return book_->styles.numberFormats.at(traitOf(sheet(), area_, Trait::NumberFormat));
}

Font Range::Font() const
{
    return excel::Font(*this);
}

Borders Range::Borders() const
{
    return excel::Borders(*this);
}

Interior Range::Interior() const
{
    return excel::Interior(*this);
}

namespace
{
/// A neighbour with a line on the shared edge takes over the new line, so that the last setting shows.
void followEdges(Sheet &sheet, const Area &area)
{
    StyleTable &styles = sheet.book->styles;
    const auto follow = [&](int row, int column, Trait edge, int insideRow, int insideColumn, Trait inside) {
        Cell *neighbour = sheet.cellIfAny(row, column);
        if (neighbour && styles.at(neighbour->style)[edge] != model::NoLine) {
            const std::int32_t line = styles.at(sheet.styleAt(insideRow, insideColumn))[inside];
            neighbour->style = styles.changed(neighbour->style, edge, line);
        }
    };
    for (int row = area.top; row <= area.bottom; ++row) {
        follow(row, area.left - 1, Trait::RightLine, row, area.left, Trait::LeftLine);
        follow(row, area.right + 1, Trait::LeftLine, row, area.right, Trait::RightLine);
    }
    for (int column = area.left; column <= area.right; ++column) {
        follow(area.top - 1, column, Trait::BottomLine, area.top, column, Trait::TopLine);
        follow(area.bottom + 1, column, Trait::TopLine, area.bottom, column, Trait::BottomLine);
    }
}
} // namespace

void Font::setName(const QString &name)
{
    Sheet &target = range_.sheet();
    if (name.isEmpty() || name.size() > 31) {
        refuse("Font.Name", QStringLiteral("\"%1\"").arg(name.left(40)));
    }
    changeStyles(target, range_.area_, Trait::FontName, range_.book_->styles.fontNames.indexOf(name));
}

QString Font::Name() const
{
    return range_.book_->styles.fontNames.at(traitOf(range_.sheet(), range_.area_, Trait::FontName));
}

void Font::setSize(double points)
{
    const auto twips = static_cast<std::int32_t>(std::lround(checked(points, 1, 409, "Font.Size") * 20));
    changeStyles(range_.sheet(), range_.area_, Trait::FontSize, twips);
}

double Font::Size() const
{
    return traitOf(range_.sheet(), range_.area_, Trait::FontSize) / 20.0;
}

void Font::setBold(bool bold)
{
    changeStyles(range_.sheet(), range_.area_, Trait::Bold, bold);
}

bool Font::Bold() const
{
    return traitOf(range_.sheet(), range_.area_, Trait::Bold) != 0;
}

void Font::setUnderline(int underline)
{
    changeStyles(range_.sheet(), range_.area_, Trait::Underline, codeOf(UnderlineCodes, underline, "Font.Underline"));
}

int Font::Underline() const
{
    return valueOf(UnderlineCodes, traitOf(range_.sheet(), range_.area_, Trait::Underline), xlNone);
}

void Borders::setLineStyle(int style)
{
    changeStyles(range_.sheet(), range_.area_, EdgeChange::LineStyle, codeOf(LineStyleCodes, style, "Borders.LineStyle"));
    followEdges(range_.sheet(), range_.area_);
}

int Borders::LineStyle() const
{
    return traitOf(range_.sheet(), range_.area_, Trait::TopLine) == model::NoLine ? xlNone : xlContinuous;
}

void Borders::setWeight(int weight)
{
    changeStyles(range_.sheet(), range_.area_, EdgeChange::Weight, codeOf(WeightCodes, weight, "Borders.Weight"));
    followEdges(range_.sheet(), range_.area_);
}

int Borders::Weight() const
{
    return valueOf(WeightCodes, traitOf(range_.sheet(), range_.area_, Trait::TopLine), xlThin);
}

void Interior::setPattern(int pattern)
{
    changeStyles(range_.sheet(), range_.area_, Trait::Pattern, codeOf(PatternCodes, pattern, "Interior.Pattern"));
}

int Interior::Pattern() const
{
    return valueOf(PatternCodes, traitOf(range_.sheet(), range_.area_, Trait::Pattern), xlNone);
}

void Interior::setPatternColorIndex(int index)
{
    range_.sheet();
    if (index != xlAutomatic) {
        refuse("Interior.PatternColorIndex", QString::number(index));
    }
}

void Interior::setThemeColor(int colour)
{
    checked(colour, 1, 10, "Interior.ThemeColor");
    changeStyles(range_.sheet(), range_.area_, Trait::ThemeColour, colour);
}

void Interior::setTintAndShade(double tint)
{
    const auto millionths = static_cast<std::int32_t>(std::lround(checked(tint, -1, 1, "Interior.TintAndShade") * 1e6));
    changeStyles(range_.sheet(), range_.area_, Trait::Tint, millionths);
}

void Interior::setPatternTintAndShade(double tint)
{
    range_.sheet();
    checked(tint, -1, 1, "Interior.PatternTintAndShade");
}

int Interior::Color() const
{
    return styleOf(range_.sheet(), range_.area_).shade();
}

} // namespace excel
