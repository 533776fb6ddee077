// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/modGeneral.h"

#include "platform/basic/ColumnLetters.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdlib>

namespace
{

/// "a" to "pz", and the empty entry after them.
constexpr int ColumnNames = 26 + 16 * 26 + 1;

} // namespace

QString Column_Name(int index, bool lower)
{
    if (index < 0 || index >= ColumnNames) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("There is no column %1.").arg(index));
    }
    const QString name = index < ColumnNames - 1 ? basic::columnLetters(index) : QString();
    return lower ? name.toLower() : name;
}

int Column_Number(const QString &name)
{
    const QString wanted = name.toLower();
    for (int index = 0; index < ColumnNames; ++index) {
        if (Column_Name(index, true) == wanted) {
            return index + 1;
        }
    }
    return 0;
}

QString Column_Offset(const QString &name, int &offset)
{
    offset = std::abs(offset);
    return Column_Name(Column_Number(name) - 1 + offset, false);
}

QString Next_Column(const QString &name, int &offset)
{
    return Column_Offset(name, offset);
}

QString Percent_Text(double part, double whole, int decimals, double limit, double fallback)
{
    const double scale = std::pow(10.0, decimals);
    const double percent = basic::roundHalfEven(100.0 * part / whole * scale) / scale;
    if (!std::isfinite(percent) || decimals < 0) {
        return QStringLiteral("0");
    }
    return basic::doubleText(percent <= limit ? percent : fallback);
}

QString Test_RegExp(const QString &pattern, const QString &subject)
{
    const QRegularExpression expression(pattern, QRegularExpression::CaseInsensitiveOption);
    if (!expression.isValid()) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument,
                                  QStringLiteral("The pattern %1 cannot be read: %2").arg(pattern, expression.errorString()));
    }
    QString result;
    for (const QRegularExpressionMatch &match : expression.globalMatch(subject)) {
        result += QStringLiteral("Match found at position %1. Match Value is '%2'.\r\n")
                      .arg(match.capturedStart())
                      .arg(match.captured());
    }
    return result.isEmpty() ? QStringLiteral("Failed") : result;
}

QString Strip_Comma(const QString &text, const QString &character)
{
    const QString trimmed = text.trimmed();
    const bool endsInIt = !character.isEmpty() && trimmed.endsWith(character);
    return endsInIt ? trimmed.chopped(1) : trimmed;
}
