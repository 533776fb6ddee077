// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/CompoundFile.h"
#include "platform/excel/Model.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace excel
{

/// One record of a .xls stream.
struct BiffRecord {
    std::uint16_t id = 0;
    QByteArray body;
};

/// The records of a .xls that was read beyond what the cell model holds. The model only carries them from the reader to the
/// writer.
struct BookPassthrough {
    /// The records of the workbook as a whole; those that the model replaces are empty placeholders.
    std::vector<BiffRecord> globals;
    /// Bodies of the records for fonts, number formats and formats; references to them stay valid.
    std::vector<QByteArray> fonts;
    std::vector<QByteArray> numberFormats;
    std::vector<QByteArray> formats;
    /// 0xRRGGBB of the colours 8 to 63.
    std::vector<std::int32_t> palette;
    /// The whole container; the workbook's own stream is empty here.
    std::vector<CompoundEntry> container;
};

struct SheetPassthrough {
    /// As BookPassthrough::globals.
    std::vector<BiffRecord> records;
    /// The page settings of the file: those that did not change are written back as their record was.
    std::optional<model::Page> pageAsRead;
    /// The records of each passthrough cell; a formula is followed by its text or shared expression.
    std::vector<std::vector<BiffRecord>> cells;
    /// Visibility and type of the sheet, as in the list of sheets.
    std::uint16_t kind = 0;
};

} // namespace excel
