// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/TextEstimate.h"

#include <numeric>

namespace controls
{

TextEstimate::TextEstimate(const QFont &font) : metrics_(font)
{
    for (std::size_t code = 0; code < widths_.size(); ++code) {
        widths_[code] = metrics_.horizontalAdvance(QChar(static_cast<char16_t>(code)));
    }
}

double TextEstimate::width(const QString &text) const
{
    return std::accumulate(text.begin(), text.end(), 0.0, [this](double sum, QChar character) {
        const auto code = static_cast<std::size_t>(character.unicode());
        return sum + (code < widths_.size() ? widths_[code] : metrics_.horizontalAdvance(character));
    });
}

} // namespace controls
