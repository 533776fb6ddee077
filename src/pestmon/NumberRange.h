// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

/// Runs what makes a number of 16 bits. Beyond them error 6 says what takes the number, and which ones it takes.
template <typename Body> auto tellingRange(const QString &what, Body &&body)
{
    try {
        return body();
    } catch (const basic::RunTimeError &error) {
        if (error.number() != static_cast<int>(basic::ErrorNumber::Overflow)) {
            throw;
        }
        throw basic::RunTimeError(basic::ErrorNumber::Overflow,
                                  QStringLiteral("%1 takes whole numbers from -32768 to 32767.").arg(what));
    }
}
