// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Sqlite.h"

namespace dao
{

/// Marks the files of this program in the header of the SQLite format ("Farm" as four bytes).
inline constexpr int ApplicationId = 0x4661726D;

/// Refuses a file that is not a sound database of ours by its first bytes and its length: 3343, 3049. A file with a journal is
/// left to SQLite, which rolls it back first.
void checkHeader(const Connection &connection);
/// After SQLite has read the file: refuses a database of another program.
void checkApplication(Connection &connection);

/// The password after "pwd=" in a connect text such as ";pwd=secret"; empty without one.
QString passwordIn(const QString &connect);
/// Stores a salted hash of the password in the file. It guards against the wrong file and encrypts nothing.
void storePassword(Connection &connection, const QString &password);
/// 3031 when the password is another.
void checkPassword(Connection &connection, const QString &password);

} // namespace dao
