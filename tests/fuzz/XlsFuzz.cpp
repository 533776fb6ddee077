// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffReader.h"
#include "platform/excel/BiffWriter.h"
#include "platform/excel/CompoundFile.h"
#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

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
    try {
        const auto book = excel::bookFromXls(fileOf(data, size));
        changeStyles(book);
        // What could be read must be written, and be read again.
        excel::bookFromXls(excel::xlsBytes(*book));
    } catch (const excel::ExcelError &) {
        return 0;
    }
    return 0;
}
