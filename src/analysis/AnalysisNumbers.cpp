// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisNumbers.h"

#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace
{

bool isPlainNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)\\s*$"));
    return number.match(text).hasMatch();
}

/// A number of the locale, or with a decimal comma, with a point; other text unchanged.
QString withPoint(const QString &text)
{
    static const QRegularExpression withComma(QStringLiteral("^[+-]?\\d+,\\d+$"));
    bool known = false;
    const double number = QLocale().toDouble(text, &known);
    if (isPlainNumber(text)) {
        return text;
    }
    return known ? basic::doubleText(number) : withComma.match(text).hasMatch() ? QString(text).replace(u',', u'.') : text;
}

} // namespace

QString withTwoDecimals(const QString &text)
{
    constexpr int decimals = 2;
    return isPlainNumber(text) ? basic::formatFixed(text.toDouble(), decimals) : text;
}

QStringList pastedValues(const QString &text)
{
    static const QRegularExpression lineBreak(QStringLiteral("[\\r\\n\\x{2028}]"));
    const QString row = text.split(lineBreak, Qt::SkipEmptyParts).value(0);
    QStringList values = row.contains(u'\t') ? row.split(u'\t') : QStringList();
    for (QString &value : values) {
        value = withTwoDecimals(withPoint(value.trimmed()));
    }
    return values;
}

float leadingSingle(const QString &text)
{
    const double value = basic::Val(text);
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max()))) {
        throw basic::RunTimeError(basic::ErrorNumber::Overflow,
                                  QStringLiteral("The number %1 is too large.").arg(text.trimmed()));
    }
    return static_cast<float>(value);
}
