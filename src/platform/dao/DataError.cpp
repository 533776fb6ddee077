// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/DataError.h"

#include <utility>

namespace dao
{

DataError::DataError(DataErrorNumber number, QString description) : RunTimeError(static_cast<int>(number), std::move(description))
{
}

} // namespace dao
