// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/FontMetrics.h"

#include <algorithm>
#include <cmath>

namespace excel
{

namespace
{
constexpr std::array<int, 95> SansWidths{
    278, 278, 355, 556, 556, 889, 667, 191, 333,  333, 389, 584, 278, 333, 278, 278, 556, 556, 556, 556, 556, 556, 556, 556,
    556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
    667, 778, 722, 667, 611, 722, 667, 944, 667,  667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278, 556,
    556, 222, 222, 500, 222, 833, 556, 556, 556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};
constexpr std::array<int, 95> BoldSansWidths{
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556, 556, 556, 556, 556, 556, 556,
    556, 556, 333, 333, 584, 584, 584, 611, 975, 722, 722, 722, 722, 667, 611, 778, 722, 278, 556, 722, 611, 833, 722, 778,
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 333, 278, 333, 584, 556, 333, 556, 611, 556, 611, 556, 333, 611,
    611, 278, 278, 556, 278, 889, 611, 611, 611, 611, 389, 556, 333, 611, 556, 778, 556, 556, 500, 389, 280, 389, 584};
constexpr std::array<int, 95> SerifWidths{
    250, 333, 408, 500, 500, 833, 778, 180, 333, 333, 500, 564, 250, 333, 250, 278, 500, 500, 500, 500, 500, 500, 500, 500,
    500, 500, 278, 278, 564, 564, 564, 444, 921, 722, 667, 667, 722, 611, 556, 722, 722, 333, 389, 722, 611, 889, 722, 722,
    556, 722, 667, 556, 611, 722, 722, 944, 722, 722, 611, 333, 278, 333, 469, 500, 333, 444, 500, 444, 500, 444, 333, 500,
    500, 278, 278, 500, 278, 778, 500, 500, 500, 500, 333, 389, 278, 500, 500, 722, 500, 500, 444, 480, 200, 480, 541};
constexpr std::array<int, 95> NarrowSansWidths{
    226, 326, 401, 498, 507, 715, 682, 221, 303, 303, 498, 498, 250, 306, 252, 386, 507, 507, 507, 507, 507, 507, 507, 507,
    507, 507, 268, 268, 498, 498, 498, 463, 894, 579, 544, 533, 615, 488, 459, 631, 623, 252, 319, 520, 420, 855, 646, 662,
    517, 673, 543, 459, 487, 642, 567, 890, 519, 487, 468, 307, 386, 307, 498, 498, 291, 479, 525, 423, 525, 498, 305, 471,
    525, 229, 239, 455, 229, 799, 525, 527, 525, 525, 349, 391, 335, 525, 452, 715, 433, 453, 395, 314, 460, 314, 498};

constexpr std::array<int, 95> FixedWidths = [] {
    std::array<int, 95> widths{};
    for (int &width : widths) {
        width = 600;
    }
    return widths;
}();

/// The table for a family, and the factors of its plain and bold widths.
struct Family {
    const char16_t *name;
    const std::array<int, 95> *plain;
    const std::array<int, 95> *bold;
    double plainScale;
    double boldScale;
};
constexpr std::array<Family, 10> Families{{
    {u"Arial", &SansWidths, &BoldSansWidths, 1, 1},
    {u"Calibri", &NarrowSansWidths, &NarrowSansWidths, 1, 1.03},
    {u"Courier New", &FixedWidths, &FixedWidths, 1, 1},
    {u"Times New Roman", &SerifWidths, &SerifWidths, 1, 1.06},
    {u"Microsoft Sans Serif", &SansWidths, &BoldSansWidths, 1, 1},
    {u"Tahoma", &SansWidths, &BoldSansWidths, 1, 1.08},
    {u"Terminal", &FixedWidths, &FixedWidths, 1, 1},
    {u"Verdana", &SansWidths, &BoldSansWidths, 1.15, 1.22},
    {u"System", &BoldSansWidths, &BoldSansWidths, 1, 1},
    {u"Wingdings", &SansWidths, &SansWidths, 1.6, 1.6},
}};

constexpr int OtherLetter = 600;
constexpr int FullWidthLetter = 1000;
constexpr double PixelsPerPoint = 96.0 / 72.0;
} // namespace

FontMetrics::FontMetrics(const QString &family, bool bold, double points)
{
    const auto found = std::find_if(Families.begin(), Families.end(), [&](const Family &entry) {
        return family.compare(QStringView(entry.name), Qt::CaseInsensitive) == 0;
    });
    const Family &entry = found == Families.end() ? Families.front() : *found;
    widths_ = bold ? entry.bold : entry.plain;
    scale_ = (bold ? entry.boldScale : entry.plainScale) * points * PixelsPerPoint / 1000;
}

double FontMetrics::letterWidth(char32_t letter) const
{
    if (letter >= U' ' && letter <= U'~') {
        return (*widths_)[letter - U' '];
    }
    if (letter < U' ' || QChar::category(letter) == QChar::Mark_NonSpacing) {
        return 0;
    }
    // An accent does not make a letter wider.
    const QString parts = QChar::decomposition(letter);
    if (!parts.isEmpty() && parts[0] >= u' ' && parts[0] <= u'~') {
        return (*widths_)[static_cast<std::size_t>(parts[0].unicode() - u' ')];
    }
    return letter >= 0x1100 && QChar::script(letter) != QChar::Script_Latin ? FullWidthLetter : OtherLetter;
}

double FontMetrics::width(QStringView text) const
{
    double sum = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (unit < 0x80) {
            sum += unit >= u' ' && unit <= u'~' ? (*widths_)[static_cast<std::size_t>(unit - u' ')] : 0;
        } else if (QChar::isHighSurrogate(unit) && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            sum += letterWidth(QChar::surrogateToUcs4(unit, text[at + 1].unicode()));
            ++at;
        } else {
            sum += letterWidth(unit);
        }
    }
    return sum * scale_;
}

int FontMetrics::digitWidth() const
{
    return std::max(1, static_cast<int>(std::lround(letterWidth(U'0') * scale_)));
}

} // namespace excel
