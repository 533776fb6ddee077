// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/ColumnFit.h"

#include "platform/excel/CellValue.h"
#include "platform/excel/FontMetrics.h"

#include <algorithm>
#include <cmath>

namespace excel
{

using model::Cell;
using model::Content;
using model::Style;
using model::Trait;

namespace
{
/// Pixels left and right of a cell's text and of the line between two cells.
constexpr int CellMargin = 5;
constexpr double WidestCharacters = 255;
/// Extra width for machines that show a wider font instead.
constexpr double AllowanceForOtherFonts = 1.1;

FontMetrics metricsOf(const model::Book &book, const Style &style)
{
    return {book.styles.fontNames.at(style[Trait::FontName]), style[Trait::Bold] != 0, style[Trait::FontSize] / 20.0};
}

int digitOf(const model::Book &book)
{
    return metricsOf(book, book.styles.at(0)).digitWidth();
}

/// Font measurements of a style.
struct Measure {
    Measure(const model::Book &book, const Style &style)
        : metrics(metricsOf(book, style)), digit(metrics.width(u"0")), isPlain(style[Trait::Rotation] == 0),
          isGeneral(book.styles.numberFormats.at(style[Trait::NumberFormat]) == u"General")
    {
    }
    FontMetrics metrics;
    /// Pixels; all digits of a font are equally wide.
    double digit;
    bool isPlain;
    bool isGeneral;
};

/// Pixels of the widest line.
double lineWidth(const FontMetrics &metrics, QStringView text)
{
    double widest = 0;
    for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n')) {
        widest = std::max(widest, metrics.width(text.first(end)));
        text = text.sliced(end + 1);
    }
    return std::max(widest, metrics.width(text));
}

/// Pixels of one text, with its rotation.
double textWidth(const Measure &measure, const Style &style, QStringView text)
{
    const double widest = lineWidth(measure.metrics, text);
    if (measure.isPlain) {
        return widest;
    }
    const double turn = std::abs(style[Trait::Rotation]) * std::acos(-1.0) / 180;
    const double lineHeight = style[Trait::FontSize] / 20.0 * 96 / 72 * 1.2;
    return std::abs(widest * std::cos(turn)) + lineHeight * std::sin(turn);
}

class ColumnFitter
{
public:
    explicit ColumnFitter(model::Sheet &sheet) : sheet_(sheet), book_(*sheet.book) {}

    void fit(int first, int last)
    {
        widest_.assign(static_cast<std::size_t>(last - first) + 1, 0);
        for (std::size_t row = 0; row < sheet_.rows.size(); ++row) {
            for (const Cell &cell : sheet_.rows[row].cells) {
                if (cell.column >= first && cell.column <= last) {
                    take(static_cast<int>(row), cell, first);
                }
            }
        }
        const int digit = digitOf(book_);
        for (std::size_t at = 0; at < widest_.size(); ++at) {
            if (widest_[at] > 0) {
                const double pixels = std::ceil(widest_[at] * AllowanceForOtherFonts) + CellMargin;
                const double characters = std::min(pixels / digit, WidestCharacters);
                sheet_.columns[first + static_cast<int>(at)].setWidth(static_cast<int>(std::lround(characters * 256)));
            }
        }
    }

private:
    void take(int row, const Cell &cell, int first)
    {
        if (cell.content != Content::Number && cell.content != Content::Text) {
            return;
        }
        const Style &style = book_.styles.at(cell.style);
        if (style[Trait::Wrap] != 0
            || (!sheet_.rows[static_cast<std::size_t>(row)].merges.empty() && sheet_.mergeAt(row, cell.column))) {
            return;
        }
        const Measure &measure = measureOf(cell.style, style);
        double &widest = widest_[static_cast<std::size_t>(cell.column - first)];
        if (cell.content == Content::Text) {
            widest = std::max(widest, textWidth(measure, style, book_.texts.at(cell.index).text));
        } else if (!measure.isGeneral || !isShownShorter(measure, cell.number, widest)) {
            widest = std::max(widest, textWidth(measure, style, shownText(book_, cell)));
        }
    }

    const Measure &measureOf(std::uint32_t index, const Style &style)
    {
        if (index >= measures_.size()) {
            measures_.resize(book_.styles.size());
        }
        std::optional<Measure> &measure = measures_[index];
        if (!measure) {
            measure.emplace(book_, style);
        }
        return *measure;
    }

    /// Whether a short whole number is certainly no wider than the widest text so far, without formatting it: most of
    /// a report are such numbers.
    static bool isShownShorter(const Measure &measure, double number, double widest)
    {
        if (!measure.isPlain || !(number >= 0 && number < 1000) || number != std::trunc(number)) {
            return false;
        }
        const int digits = number < 10 ? 1 : number < 100 ? 2 : 3;
        return digits * measure.digit <= widest;
    }

    model::Sheet &sheet_;
    model::Book &book_;
    std::vector<double> widest_;
    std::vector<std::optional<Measure>> measures_;
};
} // namespace

void fitColumns(model::Sheet &sheet, int first, int last)
{
    ColumnFitter(sheet).fit(first, last);
}

int fileWidth(const model::Book &book, double characters)
{
    const int digit = digitOf(book);
    if (characters < 1) {
        return static_cast<int>(std::lround(characters * (digit + CellMargin) / digit * 256));
    }
    return static_cast<int>(std::lround((characters * digit + CellMargin) / digit * 256));
}

double characterWidth(const model::Book &book, int width)
{
    const int digit = digitOf(book);
    const double pixels = width / 256.0 * digit;
    const double characters = pixels < digit + CellMargin ? pixels / (digit + CellMargin) : (pixels - CellMargin) / digit;
    return std::round(characters * 100) / 100;
}

std::optional<int> heightForFonts(const model::Sheet &sheet, const model::Row &row)
{
    std::int32_t largest = sheet.book->styles.at(0)[Trait::FontSize];
    const std::int32_t standard = largest;
    for (const Cell &cell : row.cells) {
        if (cell.content == Content::Number || cell.content == Content::Text) {
            largest = std::max(largest, sheet.book->styles.at(cell.style)[Trait::FontSize]);
        }
    }
    if (largest == standard) {
        return std::nullopt;
    }
    // A line is the font size plus about a quarter, in whole pixels of 15 twips.
    const int needed = static_cast<int>(std::ceil(largest * 1.28 / 15)) * 15;
    return needed > sheet.standardHeight ? std::optional(needed) : std::nullopt;
}

} // namespace excel
