// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace jet
{

/// Locks on bytes of a file, which may be beyond its end. They belong to the open file, not to the process: other files that the
/// process opens and closes do not touch them, and another opening of the same file in this process counts as another user.
class RangeLock
{
public:
    /// `handle` is the descriptor of an open file.
    explicit RangeLock(int handle) : handle_(handle) {}

    /// At once; false when another user has a lock on one of the bytes.
    bool tryLock(std::uint64_t first, std::uint64_t count);
    void unlock(std::uint64_t first, std::uint64_t count);
    /// Whether another user has a lock on that byte.
    bool isTaken(std::uint64_t byte);

private:
    int handle_;
};

} // namespace jet
