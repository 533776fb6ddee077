// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CellReference.h"

#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <optional>

namespace excel
{

namespace
{
/// Seven digits and three letters hold the last row and column of any sheet, so no number can overflow.
constexpr int MaxDigits = 7;
constexpr int MaxLetters = 3;

void skipDollar(QStringView text, qsizetype &at)
{
    if (at < text.size() && text[at] == u'$') {
        ++at;
    }
}

std::optional<int> readLetters(QStringView text, qsizetype &at)
{
    skipDollar(text, at);
    const qsizetype start = at;
    int column = 0;
    while (at < text.size() && at - start < MaxLetters) {
        const char16_t letter = text[at].unicode() & ~0x20;
        if (letter < u'A' || letter > u'Z') {
            break;
        }
        column = column * 26 + (letter - u'A' + 1);
        ++at;
    }
    return at == start ? std::nullopt : std::optional(column - 1);
}

std::optional<int> readDigits(QStringView text, qsizetype &at)
{
    skipDollar(text, at);
    const qsizetype start = at;
    int row = 0;
    while (at < text.size() && at - start < MaxDigits && text[at] >= u'0' && text[at] <= u'9') {
        row = row * 10 + (text[at].unicode() - u'0');
        ++at;
    }
    return at == start || row == 0 ? std::nullopt : std::optional(row - 1);
}

[[noreturn]] void refuse(QStringView text, const QString &kind)
{
    throw ExcelError(QStringLiteral("\"%1\" is no %2.").arg(text, kind));
}

/// Two ends separated by a colon, or a single one.
template <typename Read> Area parseSpan(QStringView text, const QString &kind, Read read)
{
    const qsizetype colon = text.indexOf(u':');
    const auto end = [&](QStringView part) {
        qsizetype at = 0;
        const std::optional<int> number = read(part, at);
        if (!number || at != part.size()) {
            refuse(text, kind);
        }
        return *number;
    };
    const int first = end(colon < 0 ? text : text.left(colon));
    const int last = colon < 0 ? first : end(text.mid(colon + 1));
    return {std::min(first, last), std::min(first, last), std::max(first, last), std::max(first, last)};
}
} // namespace

Area parseCell(QStringView text)
{
    qsizetype at = 0;
    const std::optional<int> column = readLetters(text, at);
    const std::optional<int> row = column ? readDigits(text, at) : std::nullopt;
    if (!row || at != text.size()) {
        refuse(text, QStringLiteral("cell"));
    }
    return {*row, *column, *row, *column};
}

Area parseArea(QStringView text)
{
    const qsizetype colon = text.indexOf(u':');
    const Area first = parseCell(colon < 0 ? text : text.left(colon));
    const Area last = colon < 0 ? first : parseCell(text.mid(colon + 1));
    return {std::min(first.top, last.top), std::min(first.left, last.left), std::max(first.top, last.top),
            std::max(first.left, last.left)};
}

Area parseColumns(QStringView text)
{
    Area area = parseSpan(text, QStringLiteral("range of columns"), readLetters);
    area.top = area.bottom = 0;
    return area;
}

Area parseRows(QStringView text)
{
    Area area = parseSpan(text, QStringLiteral("range of rows"), readDigits);
    area.left = area.right = 0;
    return area;
}

} // namespace excel
