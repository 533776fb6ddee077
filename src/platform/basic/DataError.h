// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace basic
{

/// Numbers of the data modules. Facts of their documented error list.
enum class DataErrorNumber : int {
    TableExists = 3010,
    UpdateWithoutEdit = 3020,
    NoCurrentRecord = 3021,
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
    TooFewParameters = 3061,
    SyntaxError = 3075,
    TableNotFound = 3078,
    FieldTooSmall = 3163,
    RecordDeleted = 3167,
    FieldExists = 3191,
    ChangedMeanwhile = 3197,
    FileExists = 3204,
    Locked = 3260,
    ItemNotFound = 3265,
    ZeroLengthNotAllowed = 3315,
    UnrecognizedFormat = 3343,
    TypeConversion = 3421,
    NeedsRepair = 3428,
};

/// A failure of a data module. The description is whole sentences that name the file and, where they are known, the table, the
/// page, the row or the field, and what can be done.
class DataError : public RunTimeError
{
public:
    DataError(DataErrorNumber number, QString description);

    bool is(DataErrorNumber number) const { return this->number() == static_cast<int>(number); }
};

} // namespace basic
