// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Formats.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace basic
{

namespace
{

/// 0.d1d2d3... times ten to the power `exponent`; no digits is zero.
struct Decimal {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

Decimal fromScientific(std::string_view text)
{
    Decimal result;
    if (text.front() == '-') {
        result.negative = true;
        text.remove_prefix(1);
    }
    const auto exponentAt = text.find('e');
    for (const char c : text.substr(0, exponentAt)) {
        if (c != '.') {
            result.digits.push_back(c);
        }
    }
    std::string_view power = text.substr(exponentAt + 1);
    if (power.front() == '+') {
        power.remove_prefix(1);
    }
    std::from_chars(power.data(), power.data() + power.size(), result.exponent);
    result.exponent += 1;
    while (!result.digits.empty() && result.digits.back() == '0') {
        result.digits.pop_back();
    }
    return result;
}

// Fifteen digits are what a double holds of a decimal text, so 1.005 is again the 1.005 that was typed.
Decimal decimalOf(double value)
{
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::scientific, 14).ptr;
    return fromScientific(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
}

// And seven are what a 32-bit float holds.
Decimal decimalOf(float value)
{
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::scientific, 6).ptr;
    return fromScientific(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
}

/// Leaves `count` digits (which may be none or fewer), halves away from zero.
void roundDigits(Decimal &number, int count)
{
    if (count >= static_cast<int>(number.digits.size())) {
        return;
    }
    const bool up = count >= 0 && number.digits[static_cast<std::size_t>(count)] >= '5';
    number.digits.resize(static_cast<std::size_t>(std::max(count, 0)));
    if (!up) {
        return;
    }
    auto at = number.digits.size();
    while (at > 0 && number.digits[at - 1] == '9') {
        number.digits[--at] = '0';
    }
    if (at > 0) {
        ++number.digits[at - 1];
    } else {
        number.digits.insert(number.digits.begin(), '1');
        ++number.exponent;
    }
}

QString fixedText(Decimal number, int decimals)
{
    roundDigits(number, number.exponent + decimals);
    const auto digitAt = [&number](int position) {
        return position >= 0 && position < static_cast<int>(number.digits.size())
            ? number.digits[static_cast<std::size_t>(position)]
            : '0';
    };
    std::string text;
    for (int digit = std::max(number.exponent, 1); digit > 0; --digit) {
        text.push_back(digitAt(number.exponent - digit));
    }
    if (decimals > 0) {
        text.push_back('.');
    }
    for (int digit = 0; digit < decimals; ++digit) {
        text.push_back(digitAt(number.exponent + digit));
    }
    const bool isZero = text.find_first_not_of("0.") == std::string::npos;
    return QString::fromStdString(number.negative && !isZero ? "-" + text : text);
}

QString plainText(const Decimal &number)
{
    return fixedText(number, std::max(static_cast<int>(number.digits.size()) - number.exponent, 0));
}

QString digitsOf(int value, int width)
{
    return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
}

/// The text of one run of pattern letters; nothing when the run is no field of a date.
std::optional<QString> dateField(QChar letter, int length, bool afterHours, QDate date, QTime time)
{
    if (letter == u'y' && (length == 2 || length == 4)) {
        return digitsOf(length == 2 ? std::abs(date.year()) % 100 : date.year(), length);
    }
    if (length > 2) {
        return std::nullopt;
    }
    switch (letter.unicode()) {
    case u'd':
        return digitsOf(date.day(), length);
    case u'm':
        return digitsOf(afterHours ? time.minute() : date.month(), length);
    case u'n':
        return digitsOf(time.minute(), length);
    case u'h':
        return digitsOf(time.hour(), length);
    case u's':
        return digitsOf(time.second(), length);
    default:
        return std::nullopt;
    }
}

QString formatMoment(QDate date, QTime time, QStringView pattern)
{
    QString result;
    bool afterHours = false;
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar letter = pattern[at].toLower();
        qsizetype end = at + 1;
        while (end < pattern.size() && pattern[end].toLower() == letter) {
            ++end;
        }
        const auto field = dateField(letter, static_cast<int>(end - at), afterHours, date, time);
        result += field ? *field : pattern.mid(at, end - at).toString();
        if (letter.isLetter()) {
            afterHours = letter == u'h';
        }
        at = end;
    }
    return result;
}

} // namespace

QString formatDate(SerialDate date, QStringView pattern)
{
    return formatMoment(date.date(), date.time(), pattern);
}

QString formatDate(QDate date, QStringView pattern)
{
    return formatMoment(date, QTime(0, 0), pattern);
}

QString longDate(QDate date)
{
    return QLocale().toString(date, QLocale::LongFormat);
}

QString shortDate(QDate date)
{
    // Reading the format from the system costs more than using it, and lists use it thousands of times.
    thread_local QLocale locale = QLocale::c();
    thread_local QString format;
    if (const QLocale current; format.isEmpty() || current != locale) {
        locale = current;
        format = locale.dateFormat(QLocale::ShortFormat);
        if (!format.contains(QLatin1String("yyyy"))) {
            format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
        }
    }
    return locale.toString(date, format);
}

QDate dateFromText(QStringView text, DateOrder order)
{
    static const QRegularExpression yearFirst(QStringLiteral("^([0-9]{4})[-/.]([0-9]{1,2})[-/.]([0-9]{1,2})$"));
    static const QRegularExpression yearLast(QStringLiteral("^([0-9]{1,2})[-/.]([0-9]{1,2})[-/.]([0-9]{4})$"));
    static const QRegularExpression digitsOnly(QStringLiteral("^([0-9]{4})([0-9]{2})([0-9]{2})$"));
    text = text.trimmed();
    const auto dateIn = [text](const QRegularExpression &form, int year, int month, int day) {
        const QRegularExpressionMatch match = form.match(text);
        return match.hasMatch()
            ? QDate(match.capturedView(year).toInt(), match.capturedView(month).toInt(), match.capturedView(day).toInt())
            : QDate();
    };
    const QDate day = dateIn(yearFirst, 1, 2, 3);
    if (day.isValid()) {
        return day;
    }
    const QDate dayFirst = dateIn(yearLast, 3, 2, 1);
    if (order == DateOrder::Typed) {
        return dayFirst.isValid() ? dayFirst : dateIn(digitsOnly, 1, 2, 3);
    }
    const QDate monthFirst = dateIn(yearLast, 3, 1, 2);
    const bool takesDayFirst = dayFirst.isValid() && (order == DateOrder::DayFirst || !monthFirst.isValid());
    return takesDayFirst ? dayFirst : monthFirst;
}

QString formatFixed(double value, int decimals)
{
    return std::isfinite(value) ? fixedText(decimalOf(value), decimals) : QString::number(value);
}

QString formatFixedSingle(float value, int decimals)
{
    return std::isfinite(value) ? fixedText(decimalOf(value), decimals) : QString::number(static_cast<double>(value));
}

QString singleText(float value)
{
    if (!std::isfinite(value)) {
        return QString::number(static_cast<double>(value));
    }
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::scientific).ptr;
    return plainText(fromScientific(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()))));
}

QString doubleText(double value)
{
    return std::isfinite(value) ? plainText(decimalOf(value)) : QString::number(value);
}

QString booleanText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace basic
