// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

class QFile;

namespace jet
{

/// One changed page, as the file has it.
struct StoredPage {
    std::uint32_t number = 0;
    /// Empty for a page that the file did not have.
    QByteArray before;
    QByteArray after;
};

/// What a change overwrites, and what it writes: so that it is known whether another program has written since.
struct RollbackFile {
    std::uint32_t pagesBefore = 0;
    std::uint32_t pagesAfter = 0;
    /// The user's slot in the lock file.
    std::uint32_t slot = 0;
    /// The first page is always among them.
    std::vector<StoredPage> pages;

    static constexpr int MagicSize = 16;
    /// Whether a file that begins so may hold a change.
    static bool isBegin(const QByteArray &bytes);

    QByteArray bytes() const;
    /// Nothing for bytes that are not whole: then the change had not begun. What follows them is left of an earlier change.
    static std::optional<RollbackFile> read(const QByteArray &all);

    /// Whether every sector of the database is as it was before the change, or as the change wrote it.
    bool fits(QFile &database) const;
    /// Puts everything back, and waits for the disk.
    void restore(QFile &database) const;
};

} // namespace jet
