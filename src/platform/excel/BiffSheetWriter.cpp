// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffSheetWriter.h"

#include "platform/excel/BiffLayout.h"
#include "platform/excel/ColumnFit.h"
#include "platform/excel/HeaderText.h"

#include <algorithm>
#include <cmath>

namespace excel::biff
{

using model::Cell;
using model::Content;
using model::Page;

namespace
{
/// Rows are written in blocks of this size: first the row records, then their cells.
constexpr std::size_t RowsOfBlock = 32;
constexpr std::size_t AreasOfRecord = 1027;
constexpr std::size_t TokenOfShared = 1;

const SheetPassthrough &newSheet()
{
    static const SheetPassthrough sheet{standardSheet(), {}, {}, 0};
    return sheet;
}

/// Page breaks that a sheet can have.
constexpr std::size_t MaxBreaks = 1026;

class SheetWriter
{
public:
    SheetWriter(Bytes &stream, const model::Sheet &sheet, bool isActive, FormatWriter &formats, const TextNumbers &texts)
        : stream_(stream), sheet_(sheet), passthrough_(sheet.passthrough ? *sheet.passthrough : newSheet()), isActive_(isActive),
          formats_(formats), texts_(texts)
    {
        findLeftShared();
    }

    void put()
    {
        int depth = 0;
        for (const BiffRecord &record : passthrough_.records) {
            depth += record.id == BeginOfStream ? 1 : 0;
            if (depth == 1 && record.id == Window2) {
                putWindow(record.body);
            } else if (depth > 1 || !sheet_.hasCells || !putModelled(record)) {
                stream_.record(record.id, record.body);
            }
            depth -= record.id == EndOfStream ? 1 : 0;
        }
    }

private:
    bool putModelled(const BiffRecord &record)
    {
        switch (record.id) {
        case Header:
            putHeader(record, sheet_.page.header, &Page::header);
            return true;
        case Footer:
            putHeader(record, sheet_.page.footer, &Page::footer);
            return true;
        case LeftMargin:
        case RightMargin:
        case TopMargin:
        case BottomMargin:
            putMargin(record);
            return true;
        case Setup:
            putSetup(record.body);
            return true;
        case SheetOptions:
            putOptions(record.body);
            return true;
        case RowBreaks:
            putBreaks();
            return true;
        case ColumnInfo:
            putColumns();
            return true;
        case Dimensions:
            putDimensions();
            return true;
        case RowRecord:
            putRows();
            return true;
        case MergedCells:
            putMerges();
            return true;
        default:
            return false;
        }
    }

    /// Whether the page is unchanged in this part, so that its record is written back.
    template <typename Part> bool isAsRead(Part part) const
    {
        return passthrough_.pageAsRead && std::equal_to<>()((*passthrough_.pageAsRead).*part, sheet_.page.*part);
    }

    void putHeader(const BiffRecord &record, const std::array<QString, 3> &parts, std::array<QString, 3> Page::*part)
    {
        if (isAsRead(part)) {
            stream_.record(record.id, record.body);
            return;
        }
        Bytes body;
        if (const QString text = joinedHeader(parts); !text.isEmpty()) {
            putText(body, text);
        }
        stream_.record(record.id, body.bytes());
    }

    void putMargin(const BiffRecord &record)
    {
        const auto side = static_cast<std::size_t>(record.id - LeftMargin);
        const double margin = sheet_.page.margins[side];
        // Compared bit by bit: the margin is either unchanged or new.
        const bool asRead = passthrough_.pageAsRead
            && std::bit_cast<std::uint64_t>(passthrough_.pageAsRead->margins[side]) == std::bit_cast<std::uint64_t>(margin);
        if (!asRead) {
            stream_.record(record.id, Bytes().real(margin).bytes());
        } else if (!record.body.isEmpty()) {
            stream_.record(record.id, record.body);
        }
    }

    void putSetup(const QByteArray &asRead)
    {
        constexpr std::uint16_t upright = 2;
        constexpr std::uint16_t unset = 0x44;
        if (!asRead.isEmpty() && isAsRead(&Page::paper) && isAsRead(&Page::orientation) && isAsRead(&Page::pagesWide)) {
            stream_.record(Setup, asRead);
            return;
        }
        Bytes fresh;
        fresh.u16(0).u16(100).u16(1).u16(1).u16(1).u16(upright).u16(600).u16(600).real(0.3).real(0.3).u16(1);
        QByteArray body = asRead.size() == fresh.size() ? asRead : fresh.bytes();
        std::uint16_t options = u16At(body, 10) & static_cast<std::uint16_t>(~(unset | upright));
        options = static_cast<std::uint16_t>(options | (sheet_.page.orientation == xlPortrait ? upright : 0));
        setU16(body, 0, static_cast<std::uint16_t>(sheet_.page.paper));
        setU16(body, 10, options);
        if (sheet_.page.pagesWide > 0) {
            setU16(body, 6, static_cast<std::uint16_t>(sheet_.page.pagesWide));
            setU16(body, 8, isAsRead(&Page::pagesWide) ? u16At(body, 8) : std::uint16_t{0});
        }
        stream_.record(Setup, body);
    }

    void putOptions(const QByteArray &asRead)
    {
        constexpr std::uint16_t fitToPages = 0x100;
        QByteArray body = asRead;
        const auto others = static_cast<std::uint16_t>(u16At(body, 0) & ~fitToPages);
        setU16(body, 0, static_cast<std::uint16_t>(others | (sheet_.page.pagesWide > 0 ? fitToPages : 0)));
        stream_.record(SheetOptions, body);
    }

    void putWindow(const QByteArray &asRead)
    {
        constexpr std::uint16_t selectedAndShown = 0x600;
        QByteArray body = asRead;
        const auto others = static_cast<std::uint16_t>(u16At(body, 0) & ~selectedAndShown);
        setU16(body, 0, static_cast<std::uint16_t>(others | (isActive_ ? selectedAndShown : 0)));
        stream_.record(Window2, body);
    }

    void putColumns()
    {
        constexpr std::uint16_t columnHidden = 1;
        const auto bodyOf = [&](const model::Column &column) {
            const int width = column.width != model::Unset ? column.width : fileWidth(*sheet_.book, sheet_.standardWidth);
            const auto options = static_cast<std::uint16_t>(column.options | (width == 0 ? columnHidden : 0));
            const auto style = static_cast<std::uint32_t>(std::max<std::int64_t>(column.style, 0));
            return Bytes().u16(static_cast<std::size_t>(width)).u16(formats_.format(style)).u16(options).u16(0).bytes();
        };
        for (auto column = sheet_.columns.begin(); column != sheet_.columns.end();) {
            const QByteArray body = bodyOf(column->second);
            const int first = column->first;
            int last = first;
            for (++column; column != sheet_.columns.end() && column->first == last + 1 && bodyOf(column->second) == body;
                 ++column) {
                last = column->first;
            }
            stream_.head(ColumnInfo, 12).u16(static_cast<std::size_t>(first)).u16(static_cast<std::size_t>(last)).raw(body);
        }
    }

    void putDimensions()
    {
        const std::optional<Area> used = sheet_.used();
        stream_.head(Dimensions, 14).u32(0).u32(used ? static_cast<std::size_t>(used->bottom + 1) : 0);
        stream_.u16(0).u16(used ? static_cast<std::size_t>(used->right + 1) : 0).u16(0);
    }

    static bool isModelled(const model::Row &row)
    {
        return !row.cells.empty() || row.height != model::Unset || row.fittedHeight != model::Unset || row.style != model::Unset
            || row.options != 0;
    }

    void putRows()
    {
        const std::size_t count = sheet_.rows.size();
        for (std::size_t block = 0; block < count; block += RowsOfBlock) {
            const std::size_t end = std::min(block + RowsOfBlock, count);
            for (std::size_t number = block; number < end; ++number) {
                if (isModelled(sheet_.rows[number])) {
                    putRow(number, sheet_.rows[number]);
                }
            }
            for (std::size_t number = block; number < end; ++number) {
                putCells(number, sheet_.rows[number]);
            }
        }
    }

    void putRow(std::size_t number, const model::Row &row)
    {
        auto options = static_cast<std::uint16_t>((row.options & ~(HeightByHand | RowHidden | RowHasFormat)) | RowAlways);
        std::size_t height = static_cast<std::size_t>(sheet_.standardHeight);
        if (row.height > 0) {
            height = static_cast<std::size_t>(row.height);
            options |= HeightByHand;
        } else {
            const int fitted = std::max(row.fittedHeight, heightForFonts(sheet_, row).value_or(model::Unset));
            height = fitted == model::Unset ? height : static_cast<std::size_t>(fitted);
            options = static_cast<std::uint16_t>(options | (row.height == 0 ? RowHidden | (row.options & HeightByHand) : 0));
        }
        const std::size_t first = row.cells.empty() ? 0 : row.cells.front().column;
        const std::size_t behind = row.cells.empty() ? 0 : row.cells.back().column + 1U;
        std::size_t format = StandardFormat;
        if (row.style != model::Unset) {
            options |= RowHasFormat;
            format = formats_.format(static_cast<std::uint32_t>(row.style));
        }
        stream_.head(RowRecord, 16).u16(number).u16(first).u16(behind).u16(height).u16(0).u16(0).u16(options).u16(format);
    }

    void putCells(std::size_t rowNumber, const model::Row &row)
    {
        for (auto cell = row.cells.begin(); cell != row.cells.end();) {
            if (cell->content == Content::Blank) {
                cell = putBlanks(rowNumber, cell, row.cells.end());
                continue;
            }
            if (shortNumber(*cell)) {
                cell = putShortNumbers(rowNumber, cell, row.cells.end());
                continue;
            }
            const std::uint16_t format = formats_.format(cell->style);
            if (cell->content == Content::Number) {
                stream_.head(Number, 14).u16(rowNumber).u16(cell->column).u16(format).real(cell->number);
            } else if (cell->content == Content::Text) {
                stream_.head(LabelShared, 10).u16(rowNumber).u16(cell->column).u16(format).u32(texts_.number(cell->index));
            } else {
                putPassthrough(passthrough_.cells[cell->index], format);
            }
            ++cell;
        }
    }

    using CellIterator = std::vector<Cell>::const_iterator;
    CellIterator putBlanks(std::size_t rowNumber, CellIterator cell, CellIterator end)
    {
        CellIterator behind = cell + 1;
        while (behind != end && behind->content == Content::Blank && behind->column == (behind - 1)->column + 1) {
            ++behind;
        }
        const auto count = static_cast<std::size_t>(behind - cell);
        if (count == 1) {
            stream_.head(Blank, 6).u16(rowNumber).u16(cell->column).u16(formats_.format(cell->style));
            return behind;
        }
        stream_.head(MultipleBlank, 6 + 2 * count).u16(rowNumber).u16(cell->column);
        for (CellIterator each = cell; each != behind; ++each) {
            stream_.u16(formats_.format(each->style));
        }
        stream_.u16((behind - 1)->column);
        return behind;
    }

    /// The 4-byte form of a whole number; nothing for other cells and for a negative zero, which has no such form.
    static std::optional<std::uint32_t> shortNumber(const Cell &cell)
    {
        constexpr double mostOfShort = (1 << 29) - 1;
        constexpr std::uint32_t isWhole = 2;
        if (cell.content != Content::Number || !(std::abs(cell.number) <= mostOfShort)) {
            return std::nullopt;
        }
        const auto whole = static_cast<std::int32_t>(cell.number);
        if (std::bit_cast<std::uint64_t>(static_cast<double>(whole)) != std::bit_cast<std::uint64_t>(cell.number)) {
            return std::nullopt;
        }
        return (static_cast<std::uint32_t>(whole) << 2) | isWhole;
    }

    CellIterator putShortNumbers(std::size_t rowNumber, CellIterator cell, CellIterator end)
    {
        CellIterator behind = cell + 1;
        while (behind != end && behind->column == (behind - 1)->column + 1 && shortNumber(*behind)) {
            ++behind;
        }
        const auto count = static_cast<std::size_t>(behind - cell);
        stream_.head(count == 1 ? Rk : MultipleRk, (count == 1 ? 4 : 6) + 6 * count).u16(rowNumber).u16(cell->column);
        for (; cell != behind; ++cell) {
            stream_.u16(formats_.format(cell->style)).u32(*shortNumber(*cell));
        }
        if (count > 1) {
            stream_.u16((behind - 1)->column);
        }
        return behind;
    }

    void putPassthrough(const std::vector<BiffRecord> &records, std::uint16_t format)
    {
        bool isFirst = true;
        for (const BiffRecord &record : records) {
            QByteArray body = record.body;
            if (isFirst) {
                setU16(body, 4, format);
            }
            stream_.record(record.id, body);
            if (isFirst) {
                putLeftShared(body);
            }
            isFirst = false;
        }
    }

    /// A shared expression follows the first formula that uses it. Where that cell was overwritten, the next
    /// formula is followed by it.
    struct LeftShared {
        QByteArray row;
        QByteArray column;
        BiffRecord record;
        bool put = false;
    };

    void findLeftShared()
    {
        if (passthrough_.cells.empty()) {
            return;
        }
        std::vector<bool> shown(passthrough_.cells.size(), false);
        for (const model::Row &row : sheet_.rows) {
            for (const Cell &cell : row.cells) {
                if (cell.content == Content::Passthrough) {
                    shown[cell.index] = true;
                }
            }
        }
        for (std::size_t index = 0; index < shown.size(); ++index) {
            for (const BiffRecord &record : passthrough_.cells[index]) {
                if (!shown[index] && record.id == SharedFormula) {
                    const QByteArray &owner = passthrough_.cells[index].front().body;
                    leftShared_.push_back({owner.first(2), owner.mid(2, 2), record});
                }
            }
        }
    }

    void putLeftShared(const QByteArray &formulaBody)
    {
        // A formula's expression begins after 22 bytes; a shared one names the cell of its owner there.
        constexpr qsizetype expression = 22;
        if (leftShared_.empty() || formulaBody.size() < expression + 5 || formulaBody[expression] != char{TokenOfShared}) {
            return;
        }
        for (LeftShared &left : leftShared_) {
            if (!left.put && formulaBody.mid(expression + 1, 4) == left.row + left.column) {
                left.put = true;
                stream_.record(left.record.id, left.record.body);
            }
        }
    }

    void putBreaks()
    {
        const std::vector<int> &breaks = sheet_.page.breaks;
        if (breaks.empty()) {
            return;
        }
        const std::size_t count = std::min(breaks.size(), MaxBreaks);
        stream_.head(RowBreaks, 2 + 6 * count).u16(count);
        for (std::size_t at = 0; at < count; ++at) {
            stream_.u16(static_cast<std::size_t>(breaks[at])).u16(0).u16(ColumnsOfXls - 1);
        }
    }

    void putMerges()
    {
        const std::vector<Area> areas = sheet_.merges();
        for (std::size_t start = 0; start < areas.size(); start += AreasOfRecord) {
            const std::size_t end = std::min(start + AreasOfRecord, areas.size());
            stream_.head(MergedCells, 2 + 8 * (end - start)).u16(end - start);
            for (std::size_t at = start; at < end; ++at) {
                for (const int edge : {areas[at].top, areas[at].bottom, areas[at].left, areas[at].right}) {
                    stream_.u16(static_cast<std::size_t>(edge));
                }
            }
        }
    }

    Bytes &stream_;
    const model::Sheet &sheet_;
    const SheetPassthrough &passthrough_;
    bool isActive_;
    FormatWriter &formats_;
    const TextNumbers &texts_;
    std::vector<LeftShared> leftShared_;
};
} // namespace

TextNumbers::TextNumbers(const model::Book &book) : numbers_(book.texts.size(), 0)
{
    std::vector<bool> known(book.texts.size(), false);
    for (const auto &sheet : book.sheets) {
        for (const model::Row &row : sheet->rows) {
            for (const Cell &cell : row.cells) {
                if (cell.content != Content::Text) {
                    continue;
                }
                ++uses_;
                if (!known[cell.index]) {
                    known[cell.index] = true;
                    numbers_[cell.index] = static_cast<std::uint32_t>(texts_.size());
                    texts_.push_back(&book.texts.at(cell.index));
                }
            }
        }
    }
}

void putSheet(Bytes &stream, const model::Sheet &sheet, bool isActive, FormatWriter &formats, const TextNumbers &texts)
{
    SheetWriter(stream, sheet, isActive, formats, texts).put();
}

} // namespace excel::biff
