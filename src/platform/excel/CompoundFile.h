// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace excel
{

/// One storage (a folder) or stream (a file) inside a compound file.
struct CompoundEntry {
    /// From the root, which has an empty path itself and comes first.
    QStringList path;
    bool isStorage = false;
    QByteArray bytes;
    /// 16 bytes of a storage that tell the program it belongs to.
    QByteArray classId;
};

/// Whether an entry is the stream of this name that lies in the root.
bool isStream(const CompoundEntry &entry, QLatin1String name);

/// Whether the bytes begin as a compound file does.
bool isCompound(const QByteArray &bytes);

/// Every entry, a storage before what it holds. ExcelError when the container is damaged.
std::vector<CompoundEntry> readCompound(const QByteArray &bytes);

QByteArray writeCompound(const std::vector<CompoundEntry> &entries);

} // namespace excel
