// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/RunTimeError.h"

#include <utility>

namespace basic
{

RunTimeError::RunTimeError(int number, QString description)
    : number_(number), description_(std::move(description)), what_(description_.toUtf8())
{
}

RunTimeError::RunTimeError(ErrorNumber number, QString description)
    : RunTimeError(static_cast<int>(number), std::move(description))
{
}

} // namespace basic
