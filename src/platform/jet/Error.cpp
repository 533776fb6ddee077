// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Error.h"

#include <utility>

namespace jet
{

Error::Error(ErrorNumber number, QString description) : RunTimeError(static_cast<int>(number), std::move(description)) {}

} // namespace jet
