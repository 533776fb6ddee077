// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Numbers.h"

#include "platform/basic/RunTimeError.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace basic
{

namespace
{
template <typename Integer> Integer inRange(double whole)
{
    // Written so that not-a-number fails too.
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
        throw RunTimeError(ErrorNumber::Overflow, QStringLiteral("Overflow"));
    }
    return static_cast<Integer>(whole);
}
} // namespace

double Val(QStringView text)
{
    text = text.trimmed();
    std::string number;
    qsizetype at = 0;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        if (text[at] == u'-') {
            number.push_back('-');
        }
        ++at;
    }
    bool hasPoint = false;
    for (; at < text.size(); ++at) {
        const char16_t c = text[at].unicode();
        if (c == u'.' && !hasPoint) {
            hasPoint = true;
        } else if (c < u'0' || c > u'9') {
            break;
        }
        number.push_back(static_cast<char>(c));
    }
    double value = 0.0;
    const auto outcome = std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
    if (outcome.ec == std::errc::result_out_of_range) {
        throw RunTimeError(ErrorNumber::Overflow, QStringLiteral("Overflow"));
    }
    return value == 0.0 ? 0.0 : value;
}

double roundHalfEven(double value)
{
    return std::nearbyint(value);
}

std::int16_t toInteger16(double value)
{
    return inRange<std::int16_t>(roundHalfEven(value));
}

std::int32_t toLong32(double value)
{
    return inRange<std::int32_t>(roundHalfEven(value));
}

} // namespace basic
