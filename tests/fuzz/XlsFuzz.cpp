// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffReader.h"
#include "platform/excel/BiffWriter.h"
#include "platform/excel/CellValue.h"
#include "platform/excel/CompoundFile.h"
#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{
/// Half of the inputs are whole files, half a workbook stream inside a sound container: so the fuzzer reaches the
/// records without having to invent a container first.
QByteArray fileOf(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (excel::isCompound(bytes)) {
        return bytes;
    }
    return excel::writeCompound({{{}, true, {}, {}}, {{QStringLiteral("Workbook")}, false, bytes, {}}});
}

/// Styles that no file has, so that fonts, colours and formats of the book's own are added to those that were read.
void changeStyles(const std::shared_ptr<excel::model::Book> &book)
{
    const auto sheet = std::find_if(book->sheets.begin(), book->sheets.end(), [](const auto &one) { return one->hasCells; });
    if (sheet == book->sheets.end()) {
        return;
    }
    excel::Range cell(book, sheet->get(), {});
    cell.Font().setSize(17);
    cell.Borders().setLineStyle(excel::xlContinuous);
    excel::Interior interior = cell.Interior();
    interior.setPattern(excel::xlSolid);
    interior.setThemeColor(1);
    interior.setTintAndShade(-0.15);
}

[[noreturn]] void fail(const QString &what)
{
    std::fprintf(stderr, "%s\n", qPrintable(what));
    std::abort();
}

/// Everything that a cell shows, and its style.
QString describe(const excel::model::Book &book, const excel::model::Sheet &sheet, int row, const excel::model::Cell &cell)
{
    QStringList parts{QStringLiteral("row %1, column %2").arg(row).arg(cell.column),
                      QString::number(static_cast<int>(cell.content))};
    if (cell.content == excel::model::Content::Passthrough) {
        // Row, column and format come first.
        constexpr qsizetype Position = 6;
        for (const excel::BiffRecord &record : sheet.passthrough->cells.at(cell.index)) {
            parts.append(QStringLiteral("%1 %2").arg(record.id).arg(QString::fromLatin1(record.body.mid(Position).toHex())));
        }
    } else {
        parts.append(excel::textOf(book, cell));
        parts.append(excel::shownText(book, cell));
    }
    const excel::model::Style &style = book.styles.at(cell.style);
    parts.append({book.styles.fontNames.at(style[excel::model::Trait::FontName]),
                  QString::number(style[excel::model::Trait::FontSize]), QString::number(style.shade())});
    return parts.join(u'|');
}

/// The content of a book, a line for each cell that is not empty, sheet by sheet.
QStringList contentOf(const excel::model::Book &book)
{
    QStringList lines;
    for (const auto &sheet : book.sheets) {
        lines.append(QStringLiteral("sheet ") + sheet->name);
        for (std::size_t row = 0; sheet->hasCells && row < sheet->rows.size(); ++row) {
            for (const excel::model::Cell &cell : sheet->rows[row].cells) {
                if (cell.content != excel::model::Content::Blank) {
                    lines.append(describe(book, *sheet, static_cast<int>(row), cell));
                }
            }
        }
        for (const excel::Area &area : sheet->merges()) {
            lines.append(QStringLiteral("merged %1,%2 to %3,%4").arg(area.top).arg(area.left).arg(area.bottom).arg(area.right));
        }
        lines += QStringList(sheet->page.header.begin(), sheet->page.header.end());
        lines += QStringList(sheet->page.footer.begin(), sheet->page.footer.end());
    }
    return lines;
}

/// What could be read must be written, and be read again with the same content.
void writeAndReadAgain(const excel::model::Book &book)
{
    const QByteArray bytes = [&] {
        try {
            return excel::xlsBytes(book);
        } catch (const excel::ExcelError &error) {
            fail(QStringLiteral("not written: ") + error.description());
        }
    }();
    try {
        const auto again = excel::bookFromXls(bytes);
        const QStringList before = contentOf(book);
        const QStringList after = contentOf(*again);
        for (qsizetype line = 0; line < std::max(before.size(), after.size()); ++line) {
            if (before.value(line) != after.value(line)) {
                fail(before.value(line) + QStringLiteral(" was read again as ") + after.value(line));
            }
        }
    } catch (const excel::ExcelError &error) {
        fail(QStringLiteral("not read again: ") + error.description());
    }
}
} // namespace

/// The container library loses some bytes of a container that it refuses; leaks of ours are found all the same. It is built
/// without frame pointers, so the stacks are unwound the slow way.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:gsf_infile_msole_new\n";
}

extern "C" const char *__asan_default_options()
{
    return "fast_unwind_on_malloc=0:malloc_context_size=12";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::shared_ptr<excel::model::Book> book;
    try {
        book = excel::bookFromXls(fileOf(data, size));
        changeStyles(book);
    } catch (const excel::ExcelError &) {
        return 0;
    }
    writeAndReadAgain(*book);
    return 0;
}
