// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

#include <vector>

namespace jet
{

/// Two bytes a user on the first page. Each change of a file counts the first one up; the second is 1, and 0 while the user
/// writes or after finding damage. Their meaning is published for the format before this one; that it holds here is inferred
/// from files that nobody writes.
namespace CommitBytes
{

constexpr std::size_t Size = 2;

/// Of the user in a slot of the lock file. The first pair of all belongs to who has the file to himself.
std::size_t offsetOf(int slot);
/// As in a file that has never been written.
void setNew(unsigned char *firstPage);
/// As they are while the user writes.
void setWriting(unsigned char *firstPage, int slot);
void setWritten(unsigned char *firstPage, int slot);
/// Slots whose users are writing or were when they ended, -1 for who has the file to himself. Empty for a file whose pairs are
/// all zero, as a program leaves them that does not use them.
std::vector<int> writers(Bytes firstPage);

} // namespace CommitBytes

} // namespace jet
