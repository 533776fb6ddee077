// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A disk below SQLite that fails on demand. All databases that this process opens after construction are on it.
class FaultyDisk
{
public:
    enum class Fault {
        /// One write, one wait for the disk, one opening of a journal or one removal of it fails.
        Write,
        Sync,
        Open,
        Delete,
        /// No write succeeds any more, for want of space.
        Full,
        /// Nothing that changes the disk succeeds any more.
        Gone,
    };

    FaultyDisk();
    ~FaultyDisk();
    FaultyDisk(const FaultyDisk &) = delete;
    FaultyDisk &operator=(const FaultyDisk &) = delete;

    /// Lets the operation of this number fail, from 1, counted from now over the operations that the fault concerns.
    void failAt(Fault fault, int number);
    /// Repairs it; whether anything had failed.
    bool repair();
};
