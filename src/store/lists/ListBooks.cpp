// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListBooks.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/RunTimeError.h"
#include "platform/excel/Application.h"
#include "platform/sheets/Csv.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace lists
{

namespace
{

/// In the order of the pages.
constexpr std::array SheetOrder{List::Farms,     List::Blocks,  List::Plantings, List::CropGroups, List::CropTypes,
                                List::Varieties, List::Workers, List::Pests,     List::Seasons};

QString columnsText(int first, int last)
{
    return QStringLiteral("%1:%2").arg(sheets::columnLetters(first), sheets::columnLetters(last));
}

/// Writes rows of text to a sheet, headings first. Names stay texts whatever they look like; keys and points are numbers.
void fillSheet(excel::Worksheet &sheet, const std::vector<QStringList> &rows, const std::vector<bool> &isNumber)
{
    const int columns = static_cast<int>(rows.front().size());
    const int lastRow = static_cast<int>(rows.size());
    for (int column = 1; column <= columns; ++column) {
        if (!isNumber[static_cast<std::size_t>(column - 1)]) {
            const QString letters = sheets::columnLetters(column - 1);
            sheet.Range(letters + u'1', letters + QString::number(lastRow)).setNumberFormat(QStringLiteral("@"));
        }
    }
    for (int row = 1; row <= lastRow; ++row) {
        const QStringList &cells = rows[static_cast<std::size_t>(row - 1)];
        for (int column = 1; column <= columns; ++column) {
            sheet.Cells(row, column).setValue(cells[column - 1]);
        }
    }
    sheet.Range(QStringLiteral("A1"), sheets::columnLetters(columns - 1) + u'1').Font().setBold(true);
    sheet.Columns(columnsText(0, columns - 1)).AutoFit();
}

/// The next sheet of a new workbook, whose first one is there from the start.
excel::Worksheet addSheet(const excel::Workbook &book, int number)
{
    return number == 1 ? book.Worksheets(1) : book.Worksheets().Add(book.Worksheets(number - 1));
}

std::vector<bool> numberColumns(const Table &table)
{
    std::vector<bool> isNumber;
    if (!table.key.isEmpty()) {
        isNumber.push_back(true);
    }
    for (const Column &column : table.columns) {
        isNumber.push_back(column.kind == ColumnKind::Points);
    }
    return isNumber;
}

void save(excel::Application &application, excel::Workbook book, const QString &path)
{
    book.Worksheets(1).Activate();
    application.setDisplayAlerts(false);
    book.SaveAs(path, excel::xlOpenXMLWorkbook);
}

QStringList headingsOf(const Table &table)
{
    QStringList headings;
    if (!table.key.isEmpty()) {
        headings.append(table.keyHeading);
    }
    for (const Column &column : table.columns) {
        headings.append(column.heading);
    }
    return headings;
}

QString rowId(List list, const QString &sheet, int row)
{
    return QStringLiteral("%1|%2|%3").arg(indexOf(list)).arg(row).arg(sheet);
}

/// Why each refused row was refused.
QHash<QString, QStringList> reasonsByRow(const std::vector<Fault> &faults)
{
    QHash<QString, QStringList> reasons;
    for (const Fault &fault : faults) {
        if (fault.refuses) {
            reasons[rowId(fault.list, fault.sheet, fault.row)].append(
                fault.column.isEmpty() ? fault.reason : QStringLiteral("%1: %2").arg(fault.column, fault.reason));
        }
    }
    return reasons;
}

QStringList givenTexts(List list, const GivenRow &row)
{
    // Longer than any field; a cell of a workbook has a limit of its own.
    constexpr int MostCharacters = 1000;
    QStringList texts;
    if (!tableOf(list).key.isEmpty()) {
        texts.append(row.keyText.left(MostCharacters));
    }
    for (const std::optional<sheets::Cell> &cell : row.cells) {
        texts.append(cell ? cell->text.left(MostCharacters) : QString());
    }
    return texts;
}

} // namespace

std::vector<QStringList> sheetRows(const FarmLists &lists, List list)
{
    const Table &table = tableOf(list);
    std::vector<QStringList> rows{headingsOf(table)};
    for (const Record &record : lists.records(list)) {
        QStringList row;
        if (!table.key.isEmpty()) {
            row.append(QString::number(record.key));
        }
        for (int column = 0; column < table.columnCount(); ++column) {
            row.append(lists.shown(list, record, column));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void writeBook(const FarmLists &lists, const QString &path)
{
    if (path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive)) {
        const QString name = QFileInfo(path).completeBaseName();
        const auto found = std::find_if(SheetOrder.begin(), SheetOrder.end(),
                                        [&](List list) { return tableOf(list).sheet.compare(name, Qt::CaseInsensitive) == 0; });
        if (found == SheetOrder.end()) {
            throw basic::RunTimeError(
                basic::ErrorNumber::InvalidArgument,
                QStringLiteral("A .csv holds one list: name the file after it, such as \"Blocks.csv\", or write "
                               "an .xlsx."));
        }
        writeCsv(lists, *found, path);
        return;
    }
    excel::Application application;
    const excel::Workbook book = application.Workbooks().Add();
    int number = 0;
    for (const List list : SheetOrder) {
        excel::Worksheet sheet = addSheet(book, ++number);
        sheet.setName(tableOf(list).sheet);
        fillSheet(sheet, sheetRows(lists, list), numberColumns(tableOf(list)));
    }
    save(application, book, path);
}

void writeCsv(const FarmLists &lists, List list, const QString &path)
{
    const QByteArray bytes = sheets::csvBytes(sheetRows(lists, list));
    if (const QString failure = basic::writeWholeFile(path, bytes); !failure.isEmpty()) {
        throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                                  QStringLiteral("%1 could not be written: %2.").arg(path, failure));
    }
}

void writeRefused(const std::vector<GivenList> &given, const std::vector<Fault> &faults, const QString &path)
{
    excel::Application application;
    const excel::Workbook book = application.Workbooks().Add();
    const QHash<QString, QStringList> reasons = reasonsByRow(faults);
    int number = 0;
    for (const GivenList &list : given) {
        std::vector<QStringList> rows{headingsOf(tableOf(list.list)) << QStringLiteral("Reason")};
        for (const GivenRow &row : list.rows) {
            const auto found = reasons.constFind(rowId(list.list, list.sheet, row.number));
            if (found != reasons.constEnd()) {
                rows.push_back(givenTexts(list.list, row) << found->join(u' '));
            }
        }
        if (rows.size() > 1) {
            excel::Worksheet sheet = addSheet(book, ++number);
            // A list may come from two sheets; the headings tell what a sheet without its name is.
            basic::runOrIgnore([&] { sheet.setName(tableOf(list.list).sheet); });
            fillSheet(sheet, rows, std::vector<bool>(static_cast<std::size_t>(rows.front().size()), false));
        }
    }
    save(application, book, path);
}

std::vector<QStringList> faultRows(const std::vector<Fault> &faults)
{
    std::vector<QStringList> rows{{QStringLiteral("Sheet"), QStringLiteral("Row"), QStringLiteral("Column"),
                                   QStringLiteral("Value"), QStringLiteral("Reason")}};
    for (const Fault &fault : faults) {
        rows.push_back({fault.sheet, fault.row > 0 ? QString::number(fault.row) : QString(), fault.column, fault.value,
                        fault.refuses ? fault.reason : QStringLiteral("Note: ") + fault.reason});
    }
    return rows;
}

} // namespace lists
