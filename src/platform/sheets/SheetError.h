// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace sheets
{

/// What is wrong with the content of a file: the rest of a sentence that begins with the file's name.
class SheetError : public basic::RunTimeError
{
public:
    explicit SheetError(const QString &description) : RunTimeError(basic::ErrorNumber::PathFileAccess, description) {}
};

} // namespace sheets
