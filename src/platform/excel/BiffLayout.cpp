// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffLayout.h"

#include "platform/excel/BiffFormats.h"

#include <algorithm>

namespace excel::biff
{

namespace
{
/// A record and its body in new files, in hexadecimal digits.
struct Fixed {
    std::uint16_t id;
    const char *body;
};

/// In the order of the format. Those without a body are written from the model or define the order only.
constexpr std::array<Fixed, 35> BookOrder{{
    {BeginOfStream, "00060500BB0DCC074100000006000000"},
    {0x0E1, "B004"},
    {0x0C1, "0000"},
    {0x0E2, ""},
    {0x042, "B004"},
    {0x161, "0000"},
    {SheetNumbers, nullptr},
    {0x09C, "0E00"},
    {0x019, "0000"},
    {0x012, "0000"},
    {0x013, "0000"},
    {0x1AF, "0000"},
    {0x1BC, "0000"},
    {Window1, "68010E015C3A651F3800000000000100580200"},
    {0x040, "0000"},
    {0x08D, "0000"},
    {0x022, "0000"},
    {0x00E, "0100"},
    {0x1B7, "0000"},
    {0x0DA, "0000"},
    {FontRecord, nullptr},
    {NumberFormat, nullptr},
    {ExtendedFormat, nullptr},
    {StyleName, "008000FF"},
    {Palette, nullptr},
    {NaturalLanguage, "0000"},
    {BoundSheet, nullptr},
    {Country, "01000100"},
    {ExternSheet, nullptr},
    {DefinedName, nullptr},
    {NewNames, nullptr},
    {DrawingGroup, nullptr},
    {SharedTexts, nullptr},
    {SharedTextIndex, nullptr},
    {EndOfStream, ""},
}};

constexpr std::array<Fixed, 31> SheetOrder{{
    {BeginOfStream, "00061000BB0DCC074100000006000000"},
    {0x00D, "0100"},
    {0x00C, "6400"},
    {0x00F, "0100"},
    {0x011, "0000"},
    {0x010, "FCA9F1D24D62503F"},
    {0x05F, "0100"},
    {0x02A, "0000"},
    {0x02B, "0000"},
    {0x082, "0100"},
    {0x080, "0000000000000000"},
    {DefaultRowHeight, "00002C01"},
    {SheetOptions, "C104"},
    {RowBreaks, nullptr},
    {Header, nullptr},
    {Footer, nullptr},
    {0x083, "0000"},
    {0x084, "0000"},
    {LeftMargin, nullptr},
    {RightMargin, nullptr},
    {TopMargin, nullptr},
    {BottomMargin, nullptr},
    {Setup, nullptr},
    {DefaultColumnWidth, "0800"},
    {ColumnInfo, nullptr},
    {Dimensions, nullptr},
    {RowRecord, nullptr},
    {Window2, "B60000000000400000000000000000000000"},
    {0x01D, "030000000000000100000000000000"},
    {MergedCells, nullptr},
    {EndOfStream, ""},
}};

template <std::size_t size> std::size_t rankOf(const std::array<Fixed, size> &order, std::uint16_t id)
{
    return static_cast<std::size_t>(std::find_if(order.begin(), order.end(), [id](const Fixed &fixed) { return fixed.id == id; })
                                    - order.begin());
}

template <std::size_t size>
void complete(std::vector<BiffRecord> &records, const std::array<Fixed, size> &order, bool (*isModelled)(std::uint16_t))
{
    for (std::size_t rank = 0; rank < order.size(); ++rank) {
        const std::uint16_t id = order[rank].id;
        const auto has = [id](const BiffRecord &record) { return record.id == id; };
        if (!isModelled(id) || std::any_of(records.begin(), records.end(), has)) {
            continue;
        }
        const auto later = std::find_if(records.begin(), records.end(), [&](const BiffRecord &record) {
            const std::size_t other = rankOf(order, record.id);
            return other > rank && other < order.size();
        });
        records.insert(later, BiffRecord{id, {}});
    }
}

template <std::size_t size> std::vector<BiffRecord> fixedRecords(const std::array<Fixed, size> &order)
{
    std::vector<BiffRecord> records;
    for (const Fixed &fixed : order) {
        if (fixed.body) {
            records.push_back({fixed.id, QByteArray::fromHex(fixed.body)});
        }
    }
    return records;
}

BookPassthrough makeStandardBook()
{
    constexpr std::size_t equalFonts = 4;
    BookPassthrough book;
    book.globals = fixedRecords(BookOrder);
    completeBook(book.globals);
    Bytes standardFont;
    standardFont.u16(200).u16(0).u16(0x7FFF).u16(400).u16(0).u8(0).u8(2).u8(0).u8(0);
    putShortText(standardFont, QStringLiteral("Arial"));
    book.fonts.assign(equalFonts, standardFont.bytes());
    // Fifteen formats for named styles, of which only the first is used, then that of empty cells.
    book.formats.push_back(QByteArray::fromHex("00000000F5FF20000000"
                                               "0000000000000000C020"));
    for (int number = 1; number < StandardFormat; ++number) {
        book.formats.push_back(QByteArray::fromHex("00000000F5FF200000F4"
                                                   "0000000000000000C020"));
    }
    book.formats.push_back(QByteArray::fromHex("00000000010020000000"
                                               "0000000000000000C020"));
    book.palette = standardPalette();
    book.container = {{{}, true, {}, QByteArray::fromHex("2008020000000000C000000000000046")},
                      {{QStringLiteral("Workbook")}, false, {}, {}}};
    return book;
}
} // namespace

bool isModelledByBook(std::uint16_t id)
{
    constexpr std::array<std::uint16_t, 9> modelled{SheetNumbers, FontRecord,  NumberFormat, ExtendedFormat, Palette,
                                                    BoundSheet,   ExternSheet, NewNames,     SharedTexts};
    return std::find(modelled.begin(), modelled.end(), id) != modelled.end();
}

bool isModelledBySheet(std::uint16_t id)
{
    constexpr std::array<std::uint16_t, 12> modelled{RowBreaks,    Header, Footer,     LeftMargin, RightMargin, TopMargin,
                                                     BottomMargin, Setup,  ColumnInfo, Dimensions, RowRecord,   MergedCells};
    return std::find(modelled.begin(), modelled.end(), id) != modelled.end();
}

void completeBook(std::vector<BiffRecord> &records)
{
    complete(records, BookOrder, isModelledByBook);
}

void completeSheet(std::vector<BiffRecord> &records)
{
    complete(records, SheetOrder, isModelledBySheet);
}

const BookPassthrough &standardBook()
{
    static const BookPassthrough book = makeStandardBook();
    return book;
}

const std::vector<BiffRecord> &standardSheet()
{
    static const std::vector<BiffRecord> records = [] {
        std::vector<BiffRecord> made = fixedRecords(SheetOrder);
        completeSheet(made);
        return made;
    }();
    return records;
}

} // namespace excel::biff
