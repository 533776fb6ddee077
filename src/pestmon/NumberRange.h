// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace pestmon
{

/// Runs a conversion to 16 bits. An overflow becomes error 6 with a sentence that names the value and its range.
template <typename Body> auto describingRange(const QString &what, const Body &body)
{
    return basic::describing(basic::ErrorNumber::Overflow,
                             QStringLiteral("%1 takes whole numbers from -32768 to 32767.").arg(what), body);
}

} // namespace pestmon
