// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace dao
{

/// Numbers of the data layer. Facts of its documented error list.
enum class DataErrorNumber : int {
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    FileNotFound = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    NotAValidPassword = 3031,
    FileInUse = 3045,
    CannotOpenFile = 3051,
    DamagedFile = 3049,
    TooFewParameters = 3061,
    NullKey = 3058,
    SyntaxError = 3075,
    TableNotFound = 3078,
    FieldTooSmall = 3163,
    RecordDeleted = 3167,
    DiskError = 3043,
    Locked = 3260,
    ItemNotFound = 3265,
    ZeroLengthNotAllowed = 3315,
    UpdateWithoutEdit = 3020,
    TypeConversion = 3421,
    UnrecognizedFormat = 3343,
    TableExists = 3010,
    FieldExists = 3191,
    NeedsRepair = 3428,
};

/// A failure of the data layer. The description names the file, table or field concerned and what can be done.
class DataError : public basic::RunTimeError
{
public:
    DataError(DataErrorNumber number, QString description);
};

} // namespace dao
