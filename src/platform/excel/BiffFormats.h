// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffRecords.h"

#include <map>

namespace excel::biff
{

/// Reads styles from the format records of a file.
class FormatReader
{
public:
    /// Both must outlive the reader; names of fonts and number formats are added to `styles`.
    FormatReader(const BookPassthrough &passthrough, model::StyleTable &styles);

    model::Style style(std::size_t format) const;

private:
    void readFont(model::Style &style, std::size_t font) const;
    std::int32_t colour(std::uint32_t index) const;

    const BookPassthrough &passthrough_;
    model::StyleTable &styles_;
    std::map<std::size_t, QString> numberFormats_;
};

/// Turns styles into format records: those of the file that was read stay in place, new ones are appended.
/// ExcelError above 4,000 formats or 512 fonts.
class FormatWriter
{
public:
    explicit FormatWriter(const model::Book &book, const BookPassthrough &passthrough);

    /// Number of the format record for a style of the book.
    std::uint16_t format(std::uint32_t style) { return formats_[style]; }

    void putFonts(Bytes &stream) const;
    void putNumberFormats(Bytes &stream) const;
    void putFormats(Bytes &stream) const;
    void putPalette(Bytes &stream) const;

private:
    std::uint16_t addFormat(const model::Style &style, const FormatReader &bases);
    std::uint16_t fontOf(const model::Style &style, const model::Style &base, std::size_t baseFont);
    std::uint16_t numberFormatOf(const QString &format);
    std::uint16_t colourOf(std::int32_t colour);
    void findUsedColours();

    const model::Book &book_;
    /// A copy of the styles, since reading a base may add names that no cell uses.
    model::StyleTable styles_;
    BookPassthrough records_;
    std::vector<std::uint16_t> formats_;
    std::map<QByteArray, std::uint16_t> formatNumbers_;
    std::map<QByteArray, std::uint16_t> fontNumbers_;
    std::array<bool, 64> usedColours_{};
    bool paletteChanged_ = false;
};

/// The colours 8 to 63 of a file without a palette.
std::vector<std::int32_t> standardPalette();

} // namespace excel::biff
