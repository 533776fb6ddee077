// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Sits between the program under test and the calls by which it writes: counts them, and at the one that is asked for ends the
/// process or lets the call fail.
namespace failingDisk
{

enum class Failure {
    /// The process ends before the call.
    End,
    /// The process ends when half of the bytes are written.
    EndHalfway,
    /// This call fails, later ones do not.
    Once,
    /// No call succeeds from now on.
    FromNowOn,
};

/// Counts from 1; 0 lets everything succeed.
void failAt(int call, Failure failure);
/// Calls since then.
int calls();

} // namespace failingDisk
