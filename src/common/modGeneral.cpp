// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/modGeneral.h"

#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdlib>

namespace
{

constexpr int Letters = 26;
/// Two-letter names begin with "a" to "p"; the entry behind the last of them is empty.
constexpr int FirstLetters = 16;
constexpr int ColumnNames = Letters + FirstLetters * Letters + 1;

QChar letter(int index)
{
    return QChar(u'a' + index);
}

} // namespace

QString Column_Name(int index, bool lower)
{
    if (index < 0 || index >= ColumnNames) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("There is no column %1.").arg(index));
    }
    QString name;
    if (index < Letters) {
        name = letter(index);
    } else if (index < ColumnNames - 1) {
        name = QString(letter(index / Letters - 1)) + letter(index % Letters);
    }
    return lower ? name : name.toUpper();
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
