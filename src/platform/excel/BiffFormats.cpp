// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffFormats.h"

#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <cstdlib>

namespace excel::biff
{

using model::Style;
using model::Trait;

namespace
{
constexpr std::size_t MaxFormats = 4000;
constexpr std::size_t MaxFonts = 512;
constexpr std::size_t FirstOwnNumberFormat = 164;
constexpr int BoldWeight = 700;
constexpr int PlainWeight = 400;

/// The number formats with a fixed number.
struct BuiltIn {
    std::size_t number;
    const char16_t *format;
};
constexpr std::array<BuiltIn, 26> BuiltIns{{
    {0, u"General"},
    {1, u"0"},
    {2, u"0.00"},
    {3, u"#,##0"},
    {4, u"#,##0.00"},
    {9, u"0%"},
    {10, u"0.00%"},
    {11, u"0.00E+00"},
    {12, u"# ?/?"},
    {13, u"# ?\?/\?\?"},
    {14, u"m/d/yy"},
    {15, u"d-mmm-yy"},
    {16, u"d-mmm"},
    {17, u"mmm-yy"},
    {18, u"h:mm AM/PM"},
    {19, u"h:mm:ss AM/PM"},
    {20, u"h:mm"},
    {21, u"h:mm:ss"},
    {22, u"m/d/yy h:mm"},
    {37, u"#,##0 ;(#,##0)"},
    {38, u"#,##0 ;[Red](#,##0)"},
    {45, u"mm:ss"},
    {46, u"[h]:mm:ss"},
    {47, u"mmss.0"},
    {48, u"##0.0E+0"},
    {49, u"@"},
}};

/// Position of a trait in a format record: byte, lowest bit, count of bits.
struct BitField {
    Trait trait;
    qsizetype byte;
    int bit;
    int bits;
};
constexpr std::array<BitField, 8> BitFields{{
    {Trait::Horizontal, 6, 0, 3},
    {Trait::Wrap, 6, 3, 1},
    {Trait::Vertical, 6, 4, 3},
    {Trait::LeftLine, 10, 0, 4},
    {Trait::RightLine, 10, 4, 4},
    {Trait::TopLine, 11, 0, 4},
    {Trait::BottomLine, 11, 4, 4},
    {Trait::Pattern, 17, 2, 6},
}};

int bitsAt(const QByteArray &body, qsizetype byte, int bit, int bits)
{
    return (static_cast<unsigned char>(body[byte]) >> bit) & ((1 << bits) - 1);
}

/// Sets a number of at most 7 bits that may extend into the next byte.
void setBits(QByteArray &body, qsizetype byte, int bit, int bits, unsigned value)
{
    const unsigned mask = ((1U << bits) - 1U) << bit;
    const bool two = bit + bits > 8;
    unsigned whole = static_cast<unsigned char>(body[byte]);
    whole |= two ? static_cast<unsigned>(static_cast<unsigned char>(body[byte + 1])) << 8 : 0U;
    whole = (whole & ~mask) | ((value << bit) & mask);
    body[byte] = static_cast<char>(whole & 0xFF);
    if (two) {
        body[byte + 1] = static_cast<char>(whole >> 8);
    }
}

/// Position of the line colour of each edge.
struct EdgeColour {
    Trait edge;
    qsizetype byte;
    int bit;
};
constexpr std::array<EdgeColour, 4> EdgeColours{
    {{Trait::LeftLine, 12, 0}, {Trait::RightLine, 12, 7}, {Trait::TopLine, 14, 0}, {Trait::BottomLine, 14, 7}}};

std::int32_t degrees(std::size_t code)
{
    if (code == 255) {
        return 255;
    }
    return code <= 90 ? static_cast<std::int32_t>(code) : 90 - static_cast<std::int32_t>(std::min<std::size_t>(code, 180));
}

std::size_t codeOfDegrees(std::int32_t degrees)
{
    return static_cast<std::size_t>(degrees >= 0 ? degrees : 90 - degrees);
}

bool hasSame(const Style &one, const Style &other, std::initializer_list<Trait> traits)
{
    return std::all_of(traits.begin(), traits.end(), [&](Trait trait) { return one[trait] == other[trait]; });
}

/// Font numbers skip 4.
std::size_t fontIndex(std::size_t number)
{
    return number > 4 ? number - 1 : number;
}

std::uint16_t fontNumber(std::size_t index)
{
    return static_cast<std::uint16_t>(index >= 4 ? index + 1 : index);
}
} // namespace

std::vector<std::int32_t> standardPalette()
{
    return {0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000,
            0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF,
            0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000,
            0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
            0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696, 0x003366, 0x339966,
            0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};
}

FormatReader::FormatReader(const BookPassthrough &passthrough, model::StyleTable &styles)
    : passthrough_(passthrough), styles_(styles)
{
    for (const BuiltIn &builtIn : BuiltIns) {
        numberFormats_[builtIn.number] = QString::fromUtf16(builtIn.format);
    }
    for (const QByteArray &body : passthrough.numberFormats) {
        Reader reader(body);
        const std::size_t number = reader.u16();
        numberFormats_[number] = takeText(reader);
    }
}

std::int32_t FormatReader::colour(std::uint32_t number) const
{
    const auto index = static_cast<std::size_t>(number) - static_cast<std::size_t>(FirstPaletteColour);
    return number >= static_cast<std::uint32_t>(FirstPaletteColour) && index < passthrough_.palette.size()
        ? passthrough_.palette[index]
        : -1;
}

void FormatReader::readFont(Style &style, std::size_t font) const
{
    const std::size_t index = fontIndex(font);
    if (index >= passthrough_.fonts.size()) {
        return;
    }
    Reader reader(passthrough_.fonts[index]);
    style[Trait::FontSize] = static_cast<std::int32_t>(reader.u16());
    style[Trait::Bold] = reader.skip(4).u16() > (BoldWeight + PlainWeight) / 2 ? 1 : 0;
    style[Trait::Underline] = static_cast<std::int32_t>(reader.skip(2).u8());
    reader.skip(3);
    style[Trait::FontName] = styles_.fontNames.indexOf(takeShortText(reader));
}

Style FormatReader::style(std::size_t format) const
{
    Style style;
    style[Trait::BaseFormat] = static_cast<std::int32_t>(format);
    const QByteArray &body = passthrough_.formats[format];
    readFont(style, u16At(body, 0));
    const auto found = numberFormats_.find(u16At(body, 2));
    style[Trait::NumberFormat] =
        styles_.numberFormats.indexOf(found == numberFormats_.end() ? QStringLiteral("General") : found->second);
    for (const BitField &field : BitFields) {
        style[field.trait] = bitsAt(body, field.byte, field.bit, field.bits);
    }
    style[Trait::Rotation] = degrees(static_cast<unsigned char>(body[7]));
    style[Trait::FillColour] = colour(u16At(body, 18) & 0x7FU);
    return style;
}

FormatWriter::FormatWriter(const model::Book &book, const BookPassthrough &passthrough)
    : book_(book), styles_(book.styles), records_(passthrough)
{
    for (std::size_t index = 0; index < records_.fonts.size(); ++index) {
        fontNumbers_.try_emplace(records_.fonts[index], fontNumber(index));
    }
    findUsedColours();
    const FormatReader bases(passthrough, styles_);
    const std::size_t readFormats = records_.formats.size();
    formats_.reserve(book.styles.size());
    for (std::size_t index = 0; index < book.styles.size(); ++index) {
        formats_.push_back(addFormat(book.styles.at(static_cast<std::uint32_t>(index)), bases));
    }
    const auto reportLimit = [](const QString &what, std::size_t count, std::size_t most) {
        throw ExcelError(QStringLiteral("it has %1 different %2; a .xls is limited to %3.").arg(count).arg(what).arg(most));
    };
    if (records_.formats.size() > std::max(MaxFormats, readFormats)) {
        reportLimit(QStringLiteral("cell formats"), records_.formats.size(), MaxFormats);
    }
    if (records_.fonts.size() > std::max(MaxFonts, passthrough.fonts.size())) {
        reportLimit(QStringLiteral("fonts"), records_.fonts.size(), MaxFonts);
    }
}

void FormatWriter::findUsedColours()
{
    const auto use = [this](std::uint32_t colour) {
        if (colour < usedColours_.size()) {
            usedColours_[colour] = true;
        }
    };
    for (const QByteArray &body : records_.formats) {
        Reader reader(body);
        const std::size_t sides = reader.skip(12).u16();
        const std::size_t rest = reader.u32();
        const std::size_t fill = reader.u16();
        for (const std::size_t colour : {sides, sides >> 7, rest, rest >> 7, rest >> 14, fill, fill >> 7}) {
            use(static_cast<std::uint32_t>(colour & 0x7F));
        }
    }
    for (const QByteArray &body : records_.fonts) {
        use(u16At(body, 4));
    }
}

std::uint16_t FormatWriter::addFormat(const Style &style, const FormatReader &bases)
{
    const auto base = static_cast<std::size_t>(style[Trait::BaseFormat]);
    const Style before = bases.style(base);
    if (before == style) {
        return static_cast<std::uint16_t>(base);
    }
    QByteArray body = records_.formats[base];
    setU16(body, 0, fontOf(style, before, u16At(body, 0)));
    if (style[Trait::NumberFormat] != before[Trait::NumberFormat]) {
        setU16(body, 2, numberFormatOf(styles_.numberFormats.at(style[Trait::NumberFormat])));
    }
    for (const BitField &field : BitFields) {
        setBits(body, field.byte, field.bit, field.bits, static_cast<unsigned>(style[field.trait]));
    }
    if (style[Trait::Rotation] != before[Trait::Rotation]) {
        body[7] = static_cast<char>(codeOfDegrees(style[Trait::Rotation]));
    }
    for (const EdgeColour &edge : EdgeColours) {
        if (style[edge.edge] != before[edge.edge]) {
            setBits(body, edge.byte, edge.bit, 7, style[edge.edge] == model::NoLine ? 0 : AutomaticColour);
        }
    }
    if (!hasSame(style, before, {Trait::Pattern, Trait::FillColour, Trait::ThemeColour, Trait::Tint})) {
        const std::int32_t shade = style.shade();
        setBits(body, 18, 0, 7, shade < 0 ? AutomaticColour : colourOf(shade));
    }
    // All six groups of attributes are the format's own, none is inherited.
    body[9] = static_cast<char>(body[9] | 0xFC);
    const auto [entry, isNew] = formatNumbers_.try_emplace(body, static_cast<std::uint16_t>(records_.formats.size()));
    if (isNew) {
        records_.formats.push_back(body);
    }
    return entry->second;
}

std::uint16_t FormatWriter::fontOf(const Style &style, const Style &base, std::size_t baseFont)
{
    if (hasSame(style, base, {Trait::FontName, Trait::FontSize, Trait::Bold, Trait::Underline})) {
        return static_cast<std::uint16_t>(baseFont);
    }
    const std::size_t index = std::min(fontIndex(baseFont), records_.fonts.size() - 1);
    QByteArray head = records_.fonts[index].first(14);
    setU16(head, 0, static_cast<std::uint16_t>(style[Trait::FontSize]));
    if (style[Trait::Bold] != base[Trait::Bold]) {
        setU16(head, 6, style[Trait::Bold] != 0 ? BoldWeight : PlainWeight);
    }
    head[10] = static_cast<char>(style[Trait::Underline]);
    // Some readers take bold and underline from the options.
    setBits(head, 2, 0, 1, static_cast<unsigned>(style[Trait::Bold]));
    setBits(head, 2, 2, 1, style[Trait::Underline] != 0 ? 1 : 0);
    if (style[Trait::FontName] != base[Trait::FontName]) {
        // Family and character set belong to the name.
        head[11] = 0;
        head[12] = book_.styles.fontNames.at(style[Trait::FontName]) == u"Wingdings" ? 2 : 0;
    }
    Bytes font(head);
    putShortText(font, book_.styles.fontNames.at(style[Trait::FontName]));
    const auto [entry, isNew] = fontNumbers_.try_emplace(font.bytes(), fontNumber(records_.fonts.size()));
    if (isNew) {
        records_.fonts.push_back(font.bytes());
    }
    return entry->second;
}

std::uint16_t FormatWriter::numberFormatOf(const QString &format)
{
    std::size_t next = FirstOwnNumberFormat;
    for (const QByteArray &body : records_.numberFormats) {
        Reader reader(body);
        const std::size_t number = reader.u16();
        if (takeText(reader) == format) {
            return static_cast<std::uint16_t>(number);
        }
        next = std::max(next, number + 1);
    }
    for (const BuiltIn &builtIn : BuiltIns) {
        if (format == QStringView(builtIn.format)) {
            return static_cast<std::uint16_t>(builtIn.number);
        }
    }
    Bytes body;
    body.u16(next);
    putText(body, format);
    records_.numberFormats.push_back(body.bytes());
    return static_cast<std::uint16_t>(next);
}

std::uint16_t FormatWriter::colourOf(std::int32_t colour)
{
    const auto begin = records_.palette.begin();
    const auto colourNumber = [&](auto found) {
        const auto number = static_cast<std::size_t>(found - begin + FirstPaletteColour);
        usedColours_[number] = true;
        return static_cast<std::uint16_t>(number);
    };
    const auto found = std::find(begin, records_.palette.end(), colour);
    if (found != records_.palette.end()) {
        return colourNumber(found);
    }
    for (std::size_t number = records_.palette.size(); number-- > 0;) {
        if (!usedColours_[number + FirstPaletteColour]) {
            records_.palette[number] = colour;
            paletteChanged_ = true;
            return colourNumber(begin + static_cast<std::ptrdiff_t>(number));
        }
    }
    const auto distance = [&](std::int32_t other) {
        return std::abs((other >> 16) - (colour >> 16)) + std::abs(((other >> 8) & 0xFF) - ((colour >> 8) & 0xFF))
            + std::abs((other & 0xFF) - (colour & 0xFF));
    };
    return colourNumber(std::min_element(begin, records_.palette.end(),
                                         [&](std::int32_t one, std::int32_t other) { return distance(one) < distance(other); }));
}

void FormatWriter::putFonts(Bytes &stream) const
{
    for (const QByteArray &body : records_.fonts) {
        stream.record(FontRecord, body);
    }
}

void FormatWriter::putNumberFormats(Bytes &stream) const
{
    for (const QByteArray &body : records_.numberFormats) {
        stream.record(NumberFormat, body);
    }
}

void FormatWriter::putFormats(Bytes &stream) const
{
    for (const QByteArray &body : records_.formats) {
        stream.record(ExtendedFormat, body);
    }
}

void FormatWriter::putPalette(Bytes &stream) const
{
    if (!paletteChanged_ && records_.palette == standardPalette()) {
        return;
    }
    Bytes body;
    body.u16(records_.palette.size());
    for (const std::int32_t colour : records_.palette) {
        body.u8(static_cast<std::size_t>(colour >> 16))
            .u8(static_cast<std::size_t>(colour >> 8))
            .u8(static_cast<std::size_t>(colour))
            .u8(0);
    }
    stream.record(Palette, body.bytes());
}

} // namespace excel::biff
