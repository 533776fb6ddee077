// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace jet
{

/// Numbers of the data layer's documented error list.
enum class ErrorNumber : int {
    TableExists = 3010,
    DuplicateKey = 3022,
    FileNotFound = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    NotAValidPassword = 3031,
    DiskError = 3043,
    FileInUse = 3045,
    RowTooLong = 3047,
    Damaged = 3049,
    CannotOpenFile = 3051,
    NullKey = 3058,
    TableNotFound = 3078,
    FieldTooSmall = 3163,
    FieldExists = 3191,
    ChangedMeanwhile = 3197,
    FileExists = 3204,
    ItemNotFound = 3265,
    UnrecognizedFormat = 3343,
    TypeConversion = 3421,
    NeedsRepair = 3428,
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
