// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisNumbers.h"

#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

QString withTwoDecimals(const QString &text)
{
    constexpr int decimals = 2;
    static const QRegularExpression number(QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)\\s*$"));
    return number.match(text).hasMatch() ? basic::formatFixed(text.toDouble(), decimals) : text;
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
