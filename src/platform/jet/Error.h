// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace jet
{

/// Numbers of the data layer's documented error list.
enum class ErrorNumber : int {
    FileNotFound = 3024,
    NotAValidPassword = 3031,
    DiskError = 3043,
    Damaged = 3049,
    CannotOpenFile = 3051,
    TableNotFound = 3078,
    UnrecognizedFormat = 3343,
};

/// Every failure of this module. The description is whole sentences that name the file and, where it is known, the table, the
/// page and the row.
class Error : public basic::RunTimeError
{
public:
    Error(ErrorNumber number, QString description);

    bool is(ErrorNumber number) const { return this->number() == static_cast<int>(number); }
};

} // namespace jet
