// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

/// Runs what makes a number of 16 bits. Beyond them error 6 says what takes the number, and which ones it takes.
template <typename Body> auto tellingRange(const QString &what, const Body &body)
{
    return basic::describing(basic::ErrorNumber::Overflow,
                             QStringLiteral("%1 takes whole numbers from -32768 to 32767.").arg(what), body);
}
