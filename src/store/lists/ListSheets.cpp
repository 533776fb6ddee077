// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListSheets.h"

#include "platform/basic/RunTimeError.h"

#include <QSet>

#include <algorithm>

namespace lists
{

using sheets::Cell;

namespace
{

/// A title and remarks may be above the headings.
constexpr int MostRowsAboveHeadings = 20;
const QString ReasonHeading = QStringLiteral("Reason");

QString foldedHeading(const QString &text)
{
    QString heading = text.simplified().toCaseFolded();
    while (heading.endsWith(u':') || heading.endsWith(u'*')) {
        heading.chop(1);
    }
    return heading.trimmed();
}

bool isHeading(const Column &column, const QString &text)
{
    const QString heading = foldedHeading(text);
    return heading == column.heading.toCaseFolded()
        || std::any_of(column.synonyms.begin(), column.synonyms.end(),
                       [&](const QString &synonym) { return heading == synonym.toCaseFolded(); });
}

/// Where the columns of a list are in a sheet: by column of the list, -1 for one that is not there.
struct Headings {
    int row = -1;
    int key = -1;
    std::vector<int> columns;
    QStringList unread;

    int found() const
    {
        return static_cast<int>(std::count_if(columns.begin(), columns.end(), [](int column) { return column >= 0; }));
    }
};

/// The exact heading of a column goes before its synonyms: "Type" is the crop type, unless there is a "Crop type".
int columnWith(const std::vector<Cell> &row, const Column &column, const std::vector<int> &taken)
{
    int synonym = -1;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int position = static_cast<int>(i);
        if (std::find(taken.begin(), taken.end(), position) != taken.end()) {
            continue;
        }
        if (foldedHeading(row[i].text) == column.heading.toCaseFolded()) {
            return position;
        }
        if (synonym < 0 && isHeading(column, row[i].text)) {
            synonym = position;
        }
    }
    return synonym;
}

Headings headingsIn(const std::vector<Cell> &row, const Table &table)
{
    Headings headings;
    headings.columns.assign(table.columns.size(), -1);
    // The name first: a heading that would do for two columns is that of the rows themselves.
    std::vector<int> order{table.nameColumn};
    for (int i = 0; i < table.columnCount(); ++i) {
        if (i != table.nameColumn) {
            order.push_back(i);
        }
    }
    for (const int column : order) {
        headings.columns[static_cast<std::size_t>(column)] = columnWith(row, table.column(column), headings.columns);
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int position = static_cast<int>(i);
        const QString heading = foldedHeading(row[i].text);
        const bool isKey =
            !table.key.isEmpty() && (heading == table.keyHeading.toCaseFolded() || heading == u"key" || heading == u"id");
        if (isKey && headings.key < 0) {
            headings.key = position;
        } else if (!heading.isEmpty() && heading != ReasonHeading.toCaseFolded()
                   && std::find(headings.columns.begin(), headings.columns.end(), position) == headings.columns.end()) {
            headings.unread.append(row[i].text.simplified());
        }
    }
    return headings;
}

/// Nothing without the heading of the names.
std::optional<Headings> findHeadings(const sheets::Sheet &sheet, const Table &table)
{
    int filled = 0;
    for (std::size_t row = 0; row < sheet.rows.size() && filled < MostRowsAboveHeadings; ++row) {
        filled += sheet.rows[row].empty() ? 0 : 1;
        Headings headings = headingsIn(sheet.rows[row], table);
        if (headings.columns[static_cast<std::size_t>(table.nameColumn)] >= 0) {
            headings.row = static_cast<int>(row);
            return headings;
        }
    }
    return std::nullopt;
}

/// Another list whose key heading a sheet has.
const Table *keyOfOtherList(const sheets::Sheet &sheet, const Headings &headings, const Table &table)
{
    for (const List list : AllLists) {
        const Table &other = tableOf(list);
        const bool isThere =
            list != table.list && !other.key.isEmpty() && headings.unread.contains(other.keyHeading, Qt::CaseInsensitive);
        if (isThere && headings.row < static_cast<int>(sheet.rows.size())) {
            return &other;
        }
    }
    return nullptr;
}

QString listNames()
{
    QStringList names;
    for (const List list : AllLists) {
        names.append(tableOf(list).sheet);
    }
    return names.join(QStringLiteral(", "));
}

bool isBlankSheet(const sheets::Sheet &sheet)
{
    return std::all_of(sheet.rows.begin(), sheet.rows.end(), [](const std::vector<Cell> &row) {
        return std::all_of(row.begin(), row.end(), [](const Cell &cell) { return cell.isBlank(); });
    });
}

std::optional<List> listNamed(const QString &sheet)
{
    for (const List list : AllLists) {
        if (tableOf(list).sheet.compare(sheet.simplified(), Qt::CaseInsensitive) == 0) {
            return list;
        }
    }
    return std::nullopt;
}

/// Whether the headings are those of a list and of little else, so that a sheet of another purpose is not taken for it.
bool areOf(const Headings &headings, const Table &table)
{
    for (int column = 0; column < table.columnCount(); ++column) {
        const Column &description = table.column(column);
        const bool hasDefault = description.target == List::Farms;
        if (description.required && !hasDefault && headings.columns[static_cast<std::size_t>(column)] < 0) {
            return false;
        }
    }
    return headings.unread.size() < headings.found();
}

/// The list with the most columns in a sheet; nothing when two have as many. Of the expected one, the names are enough.
std::optional<List> listWithHeadings(const sheets::Sheet &sheet, std::optional<List> expected)
{
    if (expected && findHeadings(sheet, tableOf(*expected))) {
        return expected;
    }
    std::vector<List> best;
    int most = 0;
    for (const List list : AllLists) {
        const std::optional<Headings> headings = findHeadings(sheet, tableOf(list));
        const bool fits = headings && areOf(*headings, tableOf(list));
        const int found = fits ? headings->found() + (headings->key >= 0 ? 1 : 0) : 0;
        if (found > most) {
            best.clear();
            most = found;
        }
        if (found > 0 && found == most) {
            best.push_back(list);
        }
    }
    return best.size() == 1 ? std::optional(best.front()) : std::nullopt;
}

QString areaText(const sheets::MergedCells &area)
{
    return QStringLiteral("%1%2:%3%4")
        .arg(sheets::columnLetters(area.firstColumn))
        .arg(area.firstRow + 1)
        .arg(sheets::columnLetters(area.lastColumn))
        .arg(area.lastRow + 1);
}

/// Why a row of merged cells is refused; empty when none of its cells that are read is merged.
QString mergeIn(const sheets::Sheet &sheet, const Headings &headings, int row)
{
    for (const sheets::MergedCells &area : sheet.merged) {
        if (row < area.firstRow || row > area.lastRow) {
            continue;
        }
        const auto isInside = [&](int column) { return column >= area.firstColumn && column <= area.lastColumn && column >= 0; };
        if (isInside(headings.key) || std::any_of(headings.columns.begin(), headings.columns.end(), isInside)) {
            return QStringLiteral("The cells %1 are merged. Split them and fill in each.").arg(areaText(area));
        }
    }
    return {};
}

/// Why a row with a value outside of the columns with headings is refused: a separator within a text may have moved its cells.
QString cellWithoutHeading(const sheets::Sheet &sheet, const Headings &headings, int row)
{
    const std::vector<Cell> &cells = sheet.rows[static_cast<std::size_t>(row)];
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const int position = static_cast<int>(column);
        if (!cells[column].isBlank() && sheet.at(headings.row, position).isBlank()) {
            return QStringLiteral("Column %1 has no heading, but this row has \"%2\" there.")
                .arg(sheets::columnLetters(position), cells[column].text.simplified());
        }
    }
    return {};
}

GivenList rowsOf(const sheets::Sheet &sheet, const Table &table, const Headings &headings)
{
    GivenList given{table.list, sheet.name, {}};
    for (int row = headings.row + 1; row < static_cast<int>(sheet.rows.size()); ++row) {
        GivenRow one;
        one.number = row + 1;
        one.cells.resize(table.columns.size());
        for (std::size_t column = 0; column < headings.columns.size(); ++column) {
            if (headings.columns[column] >= 0) {
                one.cells[column] = sheet.at(row, headings.columns[column]);
            }
        }
        one.keyText = sheet.at(row, headings.key).text.trimmed();
        one.refusal = mergeIn(sheet, headings, row);
        if (one.refusal.isEmpty()) {
            one.refusal = cellWithoutHeading(sheet, headings, row);
        }
        if (!one.isBlank() || !one.keyText.isEmpty()) {
            given.rows.push_back(std::move(one));
        }
    }
    return given;
}

class BookReader
{
public:
    explicit BookReader(std::optional<List> expected) : expected_(expected) {}

    GivenBook read(const sheets::Workbook &book)
    {
        if (std::all_of(book.sheets.begin(), book.sheets.end(), isBlankSheet)) {
            throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, QStringLiteral("There is nothing in it."));
        }
        for (const sheets::Sheet &sheet : book.sheets) {
            if (!isBlankSheet(sheet)) {
                readSheet(sheet);
            }
        }
        if (given_.lists.empty()
            && std::none_of(given_.faults.begin(), given_.faults.end(), [](const Fault &fault) { return fault.refuses; })) {
            throw basic::RunTimeError(
                basic::ErrorNumber::InvalidArgument,
                QStringLiteral(
                    "There is no farm list in it. Give a sheet one of the names %1, and its columns their headings, such "
                    "as \"Block\".")
                    .arg(listNames()));
        }
        // A row may refer to one of a list before it.
        std::stable_sort(given_.lists.begin(), given_.lists.end(),
                         [](const GivenList &one, const GivenList &other) { return one.list < other.list; });
        return std::move(given_);
    }

private:
    void fault(const sheets::Sheet &sheet, List list, const QString &column, const QString &reason, bool refuses)
    {
        given_.faults.push_back({list, sheet.name, 0, column, {}, reason, refuses});
    }

    void readSheet(const sheets::Sheet &sheet)
    {
        const std::optional<List> named = listNamed(sheet.name);
        const std::optional<List> list = named ? named : listWithHeadings(sheet, expected_);
        if (!list) {
            fault(sheet, expected_.value_or(List::Farms), {},
                  QStringLiteral("This sheet is none of the farm lists; it is not read."), false);
            return;
        }
        const Table &table = tableOf(*list);
        const std::optional<Headings> headings = findHeadings(sheet, table);
        if (!headings) {
            QStringList expected;
            for (const Column &column : table.columns) {
                expected.append(column.heading);
            }
            fault(sheet, *list, {},
                  QStringLiteral("The headings were not found. They are %1.").arg(expected.join(QStringLiteral(", "))), true);
            return;
        }
        if (const Table *other = keyOfOtherList(sheet, *headings, table)) {
            fault(sheet, *list, other->keyHeading,
                  QStringLiteral("These are keys of the list %1, not of %2.").arg(other->sheet, table.sheet), true);
            return;
        }
        if (!headings->unread.isEmpty()) {
            fault(sheet, *list, headings->unread.join(QStringLiteral(", ")),
                  QStringLiteral("The list has no such column; it is not read."), false);
        }
        given_.lists.push_back(rowsOf(sheet, table, *headings));
    }

    std::optional<List> expected_;
    GivenBook given_;
};

bool isBlankRow(const std::vector<Cell> &row)
{
    return std::all_of(row.begin(), row.end(), [](const Cell &cell) { return cell.text.trimmed().isEmpty(); });
}

/// Whether a first row names columns: two of them, or the one that there is.
bool areHeadings(const std::vector<Cell> &row, const Table &table)
{
    const int found = headingsIn(row, table).found();
    return found >= 2 || (found == 1 && row.size() == 1);
}

} // namespace

GivenBook givenBook(const sheets::Workbook &book, std::optional<List> expected)
{
    return BookReader(expected).read(book);
}

GivenList givenRows(List list, const std::vector<std::vector<Cell>> &rows, const std::vector<int> &columns, int firstColumn)
{
    const Table &table = tableOf(list);
    GivenList given{list, table.sheet, {}};
    const bool hasHeadings = rows.size() > 1 && areHeadings(rows.front(), table);
    // By column of the list, the position in a pasted row.
    std::vector<int> positions(table.columns.size(), -1);
    int key = -1;
    if (hasHeadings) {
        const Headings headings = headingsIn(rows.front(), table);
        positions = headings.columns;
        key = headings.key;
    } else {
        for (std::size_t i = static_cast<std::size_t>(firstColumn); i < columns.size(); ++i) {
            positions[static_cast<std::size_t>(columns[i])] = static_cast<int>(i) - firstColumn;
        }
    }
    for (std::size_t number = hasHeadings ? 1 : 0; number < rows.size(); ++number) {
        GivenRow row;
        row.number = static_cast<int>(number) + 1;
        row.cells.resize(table.columns.size());
        for (std::size_t column = 0; column < positions.size(); ++column) {
            const auto position = static_cast<std::size_t>(std::max(0, positions[column]));
            if (positions[column] >= 0 && position < rows[number].size()) {
                row.cells[column] = rows[number][position];
            }
        }
        if (key >= 0 && static_cast<std::size_t>(key) < rows[number].size()) {
            row.keyText = rows[number][static_cast<std::size_t>(key)].text.trimmed();
        }
        given.rows.push_back(std::move(row));
    }
    return given;
}

std::vector<GivenList> givenCrops(const std::vector<std::vector<Cell>> &rows, int firstColumn, const QStringList &context)
{
    constexpr std::array Levels{List::CropGroups, List::CropTypes, List::Varieties};
    std::vector<GivenList> given;
    for (const List list : Levels) {
        given.push_back({list, tableOf(list).sheet, {}});
    }
    QStringList path = context;
    path.resize(static_cast<qsizetype>(Levels.size()));
    QSet<QString> seen;
    const bool hasHeadings = rows.size() > 1 && areHeadings(rows.front(), tableOf(List::Varieties));
    for (std::size_t number = hasHeadings ? 1 : 0; number < rows.size(); ++number) {
        if (isBlankRow(rows[number])) {
            continue;
        }
        for (std::size_t level = static_cast<std::size_t>(firstColumn); level < Levels.size(); ++level) {
            const std::size_t position = level - static_cast<std::size_t>(firstColumn);
            const Cell cell = position < rows[number].size() ? rows[number][position] : Cell();
            if (cell.text.trimmed().isEmpty()) {
                continue;
            }
            path[static_cast<qsizetype>(level)] = cell.text.trimmed();
            const QStringList whole = path.mid(0, static_cast<qsizetype>(level) + 1);
            // A group is named once for each of its varieties.
            if (seen.contains(whole.join(u'\n'))) {
                continue;
            }
            seen.insert(whole.join(u'\n'));
            GivenRow row;
            row.number = static_cast<int>(number) + 1;
            row.cells.resize(tableOf(Levels[level]).columns.size());
            for (std::size_t i = 0; i <= level; ++i) {
                row.cells[i] = i == level ? cell : Cell{sheets::CellKind::Text, false, whole[static_cast<qsizetype>(i)]};
            }
            given[level].rows.push_back(std::move(row));
        }
    }
    return given;
}

} // namespace lists
