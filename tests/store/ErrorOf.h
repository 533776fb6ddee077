// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

#include <functional>

/// Number of the error that ends the body; 0 when none does.
inline int errorOf(const std::function<void()> &body)
{
    try {
        body();
        return 0;
    } catch (const basic::RunTimeError &error) {
        return error.number();
    }
}
