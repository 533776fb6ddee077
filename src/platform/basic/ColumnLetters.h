// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// Name of a spreadsheet column, counted from 0: 0 is "A", 26 "AA". Empty for a negative number.
QString columnLetters(int column);

} // namespace basic
