// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace excel
{

/// One storage (a folder) or stream (a file) inside a compound file.
struct CompoundEntry {
    /// Path from the root, which itself has an empty path and comes first.
    QStringList path;
    bool isStorage = false;
    QByteArray bytes;
    /// 16 bytes of a storage that identify the program it belongs to.
    QByteArray classId;
};

/// Whether an entry is the stream of this name in the root.
bool isStream(const CompoundEntry &entry, QLatin1String name);

/// Whether the bytes begin with the signature of a compound file.
bool isCompound(const QByteArray &bytes);

/// Every entry, a storage before its content. ExcelError when the container is damaged.
std::vector<CompoundEntry> readCompound(const QByteArray &bytes);

QByteArray writeCompound(const std::vector<CompoundEntry> &entries);

} // namespace excel
