// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/CompoundFile.h"
#include "platform/excel/Launcher.h"
#include "platform/excel/Range.h"
#include "platform/excel/StyleTable.h"

#include <QByteArray>

#include <map>
#include <memory>
#include <optional>
#include <vector>

/// What the handles show: one cell model that every format is written from. Rows, columns and sheets count from 0 here.
namespace excel::model
{

enum class Content : std::uint8_t {
    Blank,
    Number,
    Text,
    /// A formula, truth or error value of a file that was read; its records are kept as they are.
    Kept,
};

struct Cell {
    std::uint32_t style = 0;
    std::uint16_t column = 0;
    Content content = Content::Blank;
    union {
        double number;
        /// Place in `Book::texts` or, of a kept cell, in `Sheet::keptCells`.
        std::uint32_t place;
    };
    Cell() : number(0) {}
};

/// Heights and widths nobody set.
inline constexpr int Unset = -1;

struct Row {
    /// In the order of their columns; a cell that is missing looks as its row or column does.
    std::vector<Cell> cells;
    /// Every merged area that touches this row.
    std::vector<Area> merges;
    /// Twips.
    int height = Unset;
    /// Style of the row's untouched cells, when the file read has one.
    std::int64_t style = Unset;
    /// Of a file that was read: the height in twips that fitted the row's text, and its options.
    int fittedHeight = Unset;
    std::uint16_t options = 0;
};

struct Column {
    /// 256ths of a character.
    int width = Unset;
    std::int64_t style = Unset;
    /// As the file formats have them: bit 0 hidden, bit 1 width set by hand.
    std::uint16_t options = 0;

    void setWidth(int told)
    {
        width = told;
        options = static_cast<std::uint16_t>((options & ~1) | 2);
    }
};

/// A text with what a file read told of it besides: runs of other fonts, readings.
struct Text {
    QString text;
    QByteArray runs;
    QByteArray reading;
};

/// Every different text once.
class TextTable
{
public:
    std::uint32_t place(const QString &text);
    std::uint32_t add(Text text);
    const Text &at(std::uint32_t place) const { return texts_[place]; }
    std::size_t size() const { return texts_.size(); }

private:
    std::vector<Text> texts_;
    QHash<QString, std::uint32_t> places_;
};

/// One record of a .xls stream.
struct Record {
    std::uint16_t id = 0;
    QByteArray body;
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
};

struct Sheet {
    Book *book = nullptr;
    QString name;
    bool deleted = false;
    std::vector<Row> rows;
    std::map<int, Column> columns;
    Page page;
    /// Characters; what a column has whose width nobody set.
    double standardWidth = 8.43;
    /// Twips.
    int standardHeight = 300;
    /// Of a sheet that was read: all its records, those that the model tells as empty place holders; and how its page was.
    std::vector<Record> kept;
    std::optional<Page> pageAsRead;
    /// The records of each kept cell; a formula with its text or shared expression behind it.
    std::vector<std::vector<Record>> keptCells;
    /// Visibility and kind of sheet, as the file's list of sheets has them.
    std::uint16_t kind = 0;
    /// False for the chart and macro sheets of a file that was read: they go back as they are.
    bool hasCells = true;

    Row &row(int number);
    const Row *rowIfAny(int number) const;
    const Cell *cellIfAny(int row, int column) const;
    Cell *cellIfAny(int row, int column);
    /// The cell, made when it was absent; its style is then that of its row or column.
    Cell &cell(int row, int column);
    /// Calls `action` with each cell of the area, its row's number and its own; a cell that was absent is made. Cells must not be
    /// made or taken away by it.
    template <typename Action> void forEachCell(const Area &area, Action action);
    std::uint32_t styleAt(int row, int column) const;
    /// Merged area that holds the cell.
    std::optional<Area> mergeAt(int row, int column) const;
    void merge(const Area &area);
    void part(const Area &area);
    /// Rows and columns that have cells: the smallest area from A1; nothing without cells.
    std::optional<Area> used() const;
    std::vector<Area> merges() const;

private:
    /// Where a column's cell stands among the cells of a row, or would stand.
    static std::size_t placeInRow(const std::vector<Cell> &cells, int column);
    void insertCell(int row, int column, std::size_t place);
};

template <typename Action> void Sheet::forEachCell(const Area &area, Action action)
{
    for (int number = area.top; number <= area.bottom; ++number) {
        std::vector<Cell> &cells = row(number).cells;
        cells.reserve(static_cast<std::size_t>(area.columns()));
        std::size_t at = placeInRow(cells, area.left);
        for (int column = area.left; column <= area.right; ++column, ++at) {
            if (at == cells.size() || cells[at].column != column) {
                insertCell(number, column, at);
            }
            action(cells[at], number, column);
        }
    }
}

/// What a .xls that was read holds beyond the model; a new workbook has none.
struct KeptBook {
    /// The records of the whole workbook, those that the model tells as empty place holders.
    std::vector<Record> globals;
    /// Bodies of the records that tell fonts, number formats and formats; references into them stay as they are.
    std::vector<QByteArray> fonts;
    std::vector<QByteArray> numberFormats;
    std::vector<QByteArray> formats;
    /// 0xRRGGBB of the colours 8 to 63.
    std::vector<std::int32_t> palette;
    /// The whole container; the workbook's own stream is empty here.
    std::vector<CompoundEntry> container;
    /// Whether references between sheets or names stand in the file, so that no sheet may leave its place.
    bool countsOnSheetPlaces = false;
};

struct Book {
    StyleTable styles;
    TextTable texts;
    std::vector<std::unique_ptr<Sheet>> sheets;
    /// Deleted sheets stay, so that a handle to one finds out.
    std::vector<std::unique_ptr<Sheet>> deletedSheets;
    std::size_t activeSheet = 0;
    QString path;
    std::optional<int> format;
    bool saved = false;
    bool handedOver = false;
    int rowLimit = 1048576;
    int columnLimit = 16384;
    std::optional<KeptBook> kept;

    Sheet &addSheet(std::size_t position);
    std::size_t positionOf(const Sheet &sheet) const;
    /// Throws ExcelError when the name is not allowed for this sheet.
    void checkName(const Sheet &sheet, const QString &name) const;
};

/// Takes a sheet out of its workbook. ExcelError for the only one, and where names or references of the file that was read still
/// count on its place.
void deleteSheet(Book &book, Sheet &sheet);

struct Session {
    Launcher *launcher = nullptr;
    bool visible = false;
    bool screenUpdating = true;
    bool displayAlerts = true;
    std::vector<std::shared_ptr<Book>> books;
    std::shared_ptr<Book> active;

    /// UiDriver over what is both visible and saved and was not handed over yet.
    void handOver();
};

} // namespace excel::model
