// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffSheetReader.h"

#include "platform/excel/BiffLayout.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/HeaderText.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace excel::biff
{

using model::Cell;
using model::Content;

namespace
{
double numberOfRk(std::size_t rk)
{
    const auto bits = static_cast<std::uint32_t>(rk);
    const double number = bits & 2 ? static_cast<double>(static_cast<std::int32_t>(bits) >> 2)
                                   : std::bit_cast<double>(static_cast<std::uint64_t>(bits & ~3U) << 32);
    return bits & 1 ? number / 100 : number;
}

bool belongsToFormula(std::uint16_t id)
{
    return id == FormulaText || id == Array || id == DataTable || id == SharedFormula || id == Continuation;
}

/// Drawing, object, note, validation, conditional format.
bool isXlsOnly(const BiffRecord &record)
{
    constexpr std::array<std::uint16_t, 5> ids{0xEC, 0x5D, 0x1C, 0x1B2, 0x1B0};
    return std::find(ids.begin(), ids.end(), record.id) != ids.end();
}

class SheetReader
{
public:
    SheetReader(SharedParts &shared, model::Sheet &sheet) : shared_(shared), sheet_(sheet), passthrough_(*sheet.passthrough) {}

    void read(const std::vector<BiffRecord> &records)
    {
        int depth = 0;
        for (const BiffRecord &record : records) {
            depth += record.id == BeginOfStream ? 1 : 0;
            if (depth > 1 || !take(record)) {
                passthrough_.records.push_back(record);
                formulaGoesOn_ = false;
            }
            depth -= record.id == EndOfStream ? 1 : 0;
        }
        completeSheet(passthrough_.records);
        if (!fitsPages_) {
            sheet_.page.pagesWide = 0;
        }
        passthrough_.pageAsRead = sheet_.page;
        sheet_.holdsXlsContent = !passthrough_.cells.empty() || std::any_of(records.begin(), records.end(), isXlsOnly);
    }

private:
    /// False for a record that is passed through.
    bool take(const BiffRecord &record)
    {
        if (formulaGoesOn_ && belongsToFormula(record.id)) {
            passthrough_.cells.back().push_back(record);
            return true;
        }
        if (record.id == Continuation && lastWasModelled_) {
            return true;
        }
        formulaGoesOn_ = record.id == Formula;
        lastWasModelled_ = record.id == IndexOfRows || record.id == RowIndex || readCells(record) || readModelled(record);
        if (!lastWasModelled_) {
            readSettings(record);
        }
        return lastWasModelled_;
    }

    /// The first one's position, but of a record that a file repeats the last body, which is the one that holds.
    void hold(std::uint16_t id, const QByteArray &body)
    {
        const auto [held, isNew] = held_.try_emplace(id, passthrough_.records.size());
        if (isNew) {
            passthrough_.records.push_back({id, body});
        } else if (!body.isEmpty()) {
            passthrough_.records[held->second].body = body;
        }
    }

    bool readCells(const BiffRecord &record)
    {
        switch (record.id) {
        case RowRecord:
            readRow(record.body);
            break;
        case Blank:
        case Number:
        case Rk:
        case Label:
        case LabelShared:
        case MultipleRk:
        case MultipleBlank:
            readValues(record);
            break;
        case Formula:
        case BoolError:
        case RichString:
            readPassthrough(record);
            break;
        default:
            return false;
        }
        hold(RowRecord, {});
        return true;
    }

    model::Row &row(std::size_t number)
    {
        const std::size_t before = sheet_.rows.size();
        if (number >= before) {
            if (number + 1 - before > shared_.rowsLeft) {
                throw ExcelError(QStringLiteral("its sheets have too many rows."));
            }
            shared_.rowsLeft -= number + 1 - before;
        }
        return sheet_.row(static_cast<int>(number));
    }

    std::uint32_t styleOf(std::size_t format) const { return format < shared_.styles.size() ? shared_.styles[format] : 0; }

    Cell &cell(std::size_t rowNumber, std::size_t column, std::size_t format)
    {
        if (column >= ColumnsOfXls) {
            throw ExcelError(QStringLiteral("it is damaged: a cell is outside its sheet."));
        }
        row(rowNumber);
        Cell &result = sheet_.cell(static_cast<int>(rowNumber), static_cast<int>(column));
        result.style = styleOf(format);
        result.content = Content::Blank;
        return result;
    }

    static void putNumber(Cell &cell, double value)
    {
        cell.content = Content::Number;
        cell.number = value;
    }

    static void putText(Cell &cell, std::uint32_t index)
    {
        cell.content = Content::Text;
        cell.index = index;
    }

    void readRow(const QByteArray &body)
    {
        Reader reader(body);
        model::Row &target = row(reader.u16());
        const std::size_t height = reader.skip(4).u16();
        target.options = static_cast<std::uint16_t>(reader.skip(4).u16());
        const auto twips = static_cast<int>(height & 0x7FFF);
        if (target.options & (HeightByHand | RowHidden)) {
            target.height = target.options & RowHidden ? 0 : twips;
            target.fittedHeight = twips;
        } else if ((height & 0x8000) == 0) {
            target.fittedHeight = twips;
        }
        if (target.options & RowHasFormat) {
            target.style = styleOf(reader.u16() & 0xFFF);
        }
    }

    void readValues(const BiffRecord &record)
    {
        Reader reader(record.body);
        const std::size_t rowNumber = reader.u16();
        const std::size_t column = reader.u16();
        if (record.id == MultipleRk || record.id == MultipleBlank) {
            const qsizetype each = record.id == MultipleRk ? 6 : 2;
            for (std::size_t at = column; reader.left() >= each + 2; ++at) {
                Cell &target = cell(rowNumber, at, reader.u16());
                if (record.id == MultipleRk) {
                    putNumber(target, numberOfRk(reader.u32()));
                }
            }
            return;
        }
        Cell &target = cell(rowNumber, column, reader.u16());
        if (record.id == Number) {
            putNumber(target, reader.real());
        } else if (record.id == Rk) {
            putNumber(target, numberOfRk(reader.u32()));
        } else if (record.id == Label) {
            putText(target, sheet_.book->texts.indexOf(takeText(reader)));
        } else if (record.id == LabelShared) {
            const std::size_t text = reader.u32();
            if (text >= shared_.texts.size()) {
                throw ExcelError(QStringLiteral("it is damaged: a cell shows a text that is missing."));
            }
            putText(target, shared_.texts[text]);
        }
    }

    void readPassthrough(const BiffRecord &record)
    {
        Reader reader(record.body);
        const std::size_t rowNumber = reader.u16();
        const std::size_t column = reader.u16();
        Cell &target = cell(rowNumber, column, reader.u16());
        target.content = Content::Passthrough;
        target.index = static_cast<std::uint32_t>(passthrough_.cells.size());
        passthrough_.cells.push_back({record});
    }

    bool readModelled(const BiffRecord &record)
    {
        if (!isModelledBySheet(record.id)) {
            return false;
        }
        hold(record.id, record.body);
        switch (record.id) {
        case Header:
        case Footer:
            if (!record.body.isEmpty()) {
                Reader reader(record.body);
                (record.id == Header ? sheet_.page.header : sheet_.page.footer) = splitHeader(takeText(reader));
            }
            break;
        case LeftMargin:
        case RightMargin:
        case TopMargin:
        case BottomMargin:
            if (const double margin = Reader(record.body).real(); margin >= 0 && margin < 49) {
                sheet_.page.margins[static_cast<std::size_t>(record.id - LeftMargin)] = margin;
            }
            break;
        case Setup:
            readSetup(record.body);
            break;
        case RowBreaks:
            readBreaks(record.body);
            break;
        case ColumnInfo:
            readColumns(record.body);
            break;
        case MergedCells:
            readMerges(record.body);
            break;
        default:
            break;
        }
        return true;
    }

    void readSetup(const QByteArray &body)
    {
        constexpr std::size_t upright = 2;
        constexpr std::size_t notSetUp = 4;
        constexpr std::size_t notTurned = 0x40;
        Reader reader(body);
        const std::size_t paper = reader.u16();
        const std::size_t pagesWide = reader.skip(4).u16();
        const std::size_t options = reader.skip(2).u16();
        sheet_.page.pagesWide = static_cast<int>(pagesWide);
        if ((options & notSetUp) == 0) {
            sheet_.page.paper = static_cast<int>(paper);
            sheet_.page.orientation = options & (upright | notTurned) ? xlPortrait : xlLandscape;
        }
    }

    void readColumns(const QByteArray &body)
    {
        Reader reader(body);
        const std::size_t first = reader.u16();
        const std::size_t last = std::min<std::size_t>(reader.u16(), ColumnsOfXls - 1);
        const std::size_t width = reader.u16();
        const std::size_t format = reader.u16();
        const std::size_t options = reader.u16();
        for (std::size_t column = first; column <= last; ++column) {
            sheet_.columns[static_cast<int>(column)] = {static_cast<int>(width), static_cast<std::int64_t>(styleOf(format)),
                                                        static_cast<std::uint16_t>(options)};
        }
    }

    void readMerges(const QByteArray &body)
    {
        Reader reader(body);
        for (std::size_t rest = reader.u16(); rest > 0; --rest) {
            const auto top = static_cast<int>(reader.u16());
            const auto bottom = static_cast<int>(reader.u16());
            const auto left = static_cast<int>(reader.u16());
            const auto right = static_cast<int>(reader.u16());
            const Area area{top, left, bottom, right};
            if (bottom < top || right < left || right >= ColumnsOfXls
                || static_cast<std::size_t>(area.rows()) > shared_.mergedRowsLeft) {
                throw ExcelError(QStringLiteral("it is damaged: its merged cells are invalid."));
            }
            shared_.mergedRowsLeft -= static_cast<std::size_t>(area.rows());
            for (int number = top; number <= bottom; ++number) {
                row(static_cast<std::size_t>(number)).merges.push_back(area);
            }
        }
    }

    void readBreaks(const QByteArray &body)
    {
        Reader reader(body);
        constexpr std::size_t columns = 4;
        for (std::size_t count = reader.u16(); count > 0; --count) {
            sheet_.page.breaks.push_back(static_cast<int>(reader.u16()));
            reader.skip(columns);
        }
    }

    /// Records that are passed through and also set something in the model.
    void readSettings(const BiffRecord &record)
    {
        constexpr std::size_t fitToPages = 0x100;
        if (record.id == SheetOptions) {
            fitsPages_ = (u16At(record.body, 0) & fitToPages) != 0;
        } else if (record.id == DefaultRowHeight) {
            sheet_.standardHeight = u16At(record.body, 2) & 0x7FFF;
        } else if (record.id == DefaultColumnWidth && !standardWidthRead_) {
            sheet_.standardWidth = u16At(record.body, 0);
        } else if (record.id == StandardWidth) {
            standardWidthRead_ = true;
            sheet_.standardWidth = std::round(u16At(record.body, 0) / 2.56) / 100;
        }
    }

    SharedParts &shared_;
    model::Sheet &sheet_;
    SheetPassthrough &passthrough_;
    /// Modelled records that have their placeholder.
    /// Positions of the held records by their id.
    std::map<std::uint16_t, std::size_t> held_;
    bool formulaGoesOn_ = false;
    bool lastWasModelled_ = false;
    bool fitsPages_ = false;
    bool standardWidthRead_ = false;
};
} // namespace

void readSheet(const std::vector<BiffRecord> &records, SharedParts &shared, model::Sheet &sheet)
{
    SheetReader(shared, sheet).read(records);
}

} // namespace excel::biff
