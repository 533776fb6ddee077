// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Launcher.h"
#include "platform/excel/Range.h"
#include "platform/excel/StyleTable.h"

#include <QByteArray>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace excel
{
struct BookPassthrough;
struct SheetPassthrough;
} // namespace excel

/// The cell model behind the handles, from which every format is written. Rows, columns and sheets count from 0 here.
namespace excel::model
{

enum class Content : std::uint8_t {
    Blank,
    Number,
    Text,
    /// A formula, Boolean or error value of a file that was read, whose records are written back unchanged.
    Passthrough,
};

struct Cell {
    std::uint32_t style = 0;
    std::uint16_t column = 0;
    Content content = Content::Blank;
    union {
        double number;
        /// Into `Book::texts` or, of a passthrough cell, into `SheetPassthrough::cells`.
        std::uint32_t index;
    };
    Cell() : number(0) {}
};

/// A height or width that was not set.
inline constexpr int Unset = -1;

struct Row {
    /// In the order of their columns; a missing cell has the style of its row or column.
    std::vector<Cell> cells;
    /// Every merged area that touches this row.
    std::vector<Area> merges;
    /// Twips.
    int height = Unset;
    /// Style of the row's empty cells, where the file has one.
    std::int64_t style = Unset;
    /// From the file: the fitted height in twips, and the options of the row record.
    int fittedHeight = Unset;
    std::uint16_t options = 0;
};

struct Column {
    /// 256ths of a character.
    int width = Unset;
    std::int64_t style = Unset;
    /// As in both file formats: bit 0 hidden, bit 1 custom width.
    std::uint16_t options = 0;

    void setWidth(int newWidth)
    {
        width = newWidth;
        options = static_cast<std::uint16_t>((options & ~1) | 2);
    }
};

/// A text with its font runs and phonetic reading, as read from a file.
struct Text {
    QString text;
    QByteArray runs;
    QByteArray reading;
};

/// The distinct texts of a workbook.
class TextTable
{
public:
    std::uint32_t indexOf(const QString &text);
    std::uint32_t add(Text text);
    const Text &at(std::uint32_t index) const { return texts_[index]; }
    std::size_t size() const { return texts_.size(); }

private:
    std::vector<Text> texts_;
    QHash<QString, std::uint32_t> indexes_;
};

/// First and last row or column that is printed again on each page.
struct Span {
    int first = 0;
    int last = 0;
    bool operator==(const Span &) const = default;
};

struct Page {
    /// Left, centre, right.
    std::array<QString, 3> header;
    std::array<QString, 3> footer;
    std::optional<Span> titleRows;
    std::optional<Span> titleColumns;
    /// Left, right, top, bottom; inches.
    std::array<double, 4> margins{0.7, 0.7, 0.75, 0.75};
    int orientation = xlPortrait;
    int paper = xlPaperA4;
    int pagesWide = 0;
    /// Rows that begin a page, ascending.
    std::vector<int> breaks;
};

struct Sheet {
    Book *book = nullptr;
    QString name;
    bool deleted = false;
    std::vector<Row> rows;
    std::map<int, Column> columns;
    Page page;
    /// Width of a column without one of its own, in characters.
    double standardWidth = 8.43;
    /// Twips.
    int standardHeight = 300;
    /// Empty in a new workbook.
    std::shared_ptr<SheetPassthrough> passthrough;
    /// Drawings, notes or formulas, which only a .xls preserves.
    bool holdsXlsContent = false;
    /// False for the chart and macro sheets of a file that was read, which are written back unchanged.
    bool hasCells = true;

    Row &row(int number);
    const Row *rowIfAny(int number) const;
    const Cell *cellIfAny(int row, int column) const;
    Cell *cellIfAny(int row, int column);
    /// The cell, created if missing with the style of its row or column.
    Cell &cell(int row, int column);
    /// Calls `action` with each cell of the area, its row and its column; missing cells are created. `action` must not add or
    /// remove cells.
    template <typename Action> void forEachCell(const Area &area, Action action);
    std::uint32_t styleAt(int row, int column) const;
    /// The merged area that contains the cell.
    std::optional<Area> mergeAt(int row, int column) const;
    void merge(const Area &area);
    void part(const Area &area);
    /// Rows and columns that have cells: the smallest area from A1; nothing without cells.
    std::optional<Area> used() const;
    std::vector<Area> merges() const;

private:
    /// Index of a column's cell among the cells of a row, or where it would be inserted.
    static std::size_t indexInRow(const std::vector<Cell> &cells, int column);
    void insertCell(int row, int column, std::size_t index);
};

template <typename Action> void Sheet::forEachCell(const Area &area, Action action)
{
    for (int number = area.top; number <= area.bottom; ++number) {
        std::vector<Cell> &cells = row(number).cells;
        cells.reserve(static_cast<std::size_t>(area.columns()));
        std::size_t at = indexInRow(cells, area.left);
        for (int column = area.left; column <= area.right; ++column, ++at) {
            if (at == cells.size() || cells[at].column != column) {
                insertCell(number, column, at);
            }
            action(cells[at], number, column);
        }
    }
}

struct Book {
    StyleTable styles;
    TextTable texts;
    std::vector<std::unique_ptr<Sheet>> sheets;
    /// Retained so that a handle to a deleted sheet raises an error.
    std::vector<std::unique_ptr<Sheet>> deletedSheets;
    std::size_t activeSheet = 0;
    QString path;
    std::optional<int> format;
    bool saved = false;
    bool handedOver = false;
    int rowLimit = 1048576;
    int columnLimit = 16384;
    /// Empty in a new workbook.
    std::shared_ptr<BookPassthrough> passthrough;
    /// Formulas or names of the file refer to sheets by position, so no sheet can be removed.
    bool sheetOrderIsFixed = false;

    Sheet &addSheet(std::size_t position);
    std::size_t positionOf(const Sheet &sheet) const;
    /// Throws ExcelError when the name is not allowed for this sheet.
    void checkName(const Sheet &sheet, const QString &name) const;
};

/// Removes a sheet from its workbook. ExcelError for the only sheet, and where sheetOrderIsFixed.
void deleteSheet(Book &book, Sheet &sheet);

struct Session {
    Launcher *launcher = nullptr;
    bool visible = false;
    bool screenUpdating = true;
    bool displayAlerts = true;
    std::vector<std::shared_ptr<Book>> books;
    std::shared_ptr<Book> active;

    /// Opens the workbooks that are both visible and saved and were not opened yet.
    void handOver();
};

} // namespace excel::model
