// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CellValue.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace excel
{

using model::Content;
using model::Trait;

namespace
{
constexpr int MaxDigits = 15;
}

std::optional<double> plainNumber(const QString &text)
{
    const qsizetype start = text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0;
    int digits = 0;
    int points = 0;
    // Digits from the first to the last that is not zero; zeros outside them cost no precision.
    int significant = 0;
    int sinceFirst = 0;
    for (qsizetype at = start; at < text.size(); ++at) {
        const char16_t letter = text[at].unicode();
        if (letter >= u'0' && letter <= u'9') {
            ++digits;
            sinceFirst += sinceFirst > 0 || letter != u'0' ? 1 : 0;
            significant = letter == u'0' ? significant : sinceFirst;
        } else if (letter == u'.' && points == 0) {
            ++points;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0 || significant > MaxDigits) {
        return std::nullopt;
    }
    return QLocale::c().toDouble(QStringView(text).mid(text.startsWith(u'+') ? 1 : 0));
}

bool isTextFormat(const model::StyleTable &styles, std::uint32_t style)
{
    return styles.numberFormats.at(styles.at(style)[Trait::NumberFormat]) == u'@';
}

QString textOf(const model::Book &book, const model::Cell &cell)
{
    if (cell.content == Content::Text) {
        return book.texts.at(cell.index).text;
    }
    return cell.content == Content::Number ? QString::number(cell.number, 'g', QLocale::FloatingPointShortest) : QString();
}

QString shownText(const model::Book &book, const model::Cell &cell)
{
    if (cell.content != Content::Number) {
        return textOf(book, cell);
    }
    const QString format = book.styles.numberFormats.at(book.styles.at(cell.style)[Trait::NumberFormat]).section(u';', 0, 0);
    if (format == u"General" || format == u"@" || !format.contains(u'0')) {
        // Most numbers of a report are whole, and converting those is much faster.
        if (std::abs(cell.number) < 1e11 && cell.number == std::trunc(cell.number)) {
            return QString::number(static_cast<qlonglong>(cell.number));
        }
        return QString::number(cell.number, 'g', 11);
    }
    const qsizetype point = format.indexOf(u'.');
    const auto decimals = point < 0 ? 0 : std::count(format.begin() + point, format.end(), u'0');
    const bool percent = format.contains(u'%');
    QString shown = QString::number(percent ? cell.number * 100 : cell.number, 'f', static_cast<int>(decimals));
    if (format.contains(u',')) {
        const auto whole = QString::number(std::trunc(std::abs(cell.number)), 'f', 0).size();
        shown += QString((whole - 1) / 3, u',');
    }
    return percent ? shown + u'%' : shown;
}

} // namespace excel
