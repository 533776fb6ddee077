// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/CompoundFile.h"

namespace excel
{

/// The error of a container that cannot be what it claims to be.
[[noreturn]] void damagedContainer();

/// Collects what is read from a container, within limits that no undamaged one exceeds.
class CompoundEntries
{
public:
    static constexpr qsizetype ClassIdLength = 16;

    /// Entries of an undamaged container share no bytes, so together they are no larger than the file.
    explicit CompoundEntries(qsizetype fileSize) : bytesLeft_(fileSize) {}

    void addStorage(const QStringList &path, const QByteArray &classId);
    /// Space for a stream's bytes, to be filled.
    QByteArray &addStream(const QStringList &path, qint64 size);
    std::vector<CompoundEntry> take() { return std::move(entries_); }

private:
    void add(CompoundEntry entry);

    qint64 bytesLeft_;
    std::vector<CompoundEntry> entries_;
};

} // namespace excel
