// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/DataError.h"

#include <utility>

namespace basic
{

DataError::DataError(DataErrorNumber number, QString description) : RunTimeError(static_cast<int>(number), std::move(description))
{
}

} // namespace basic
