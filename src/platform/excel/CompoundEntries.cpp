// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CompoundEntries.h"

#include "platform/excel/ExcelError.h"

#include <utility>

namespace excel
{

namespace
{
constexpr qsizetype Deepest = 16;
constexpr std::size_t MaxEntries = 4096;
} // namespace

void damagedContainer()
{
    throw ExcelError(QStringLiteral("its container is damaged."));
}

void CompoundEntries::addStorage(const QStringList &path, const QByteArray &classId)
{
    if (path.size() > Deepest) {
        damagedContainer();
    }
    add({path, true, {}, classId});
}

QByteArray &CompoundEntries::addStream(const QStringList &path, qint64 size)
{
    if (size < 0 || size > bytesLeft_) {
        damagedContainer();
    }
    bytesLeft_ -= size;
    add({path, false, QByteArray(static_cast<qsizetype>(size), Qt::Uninitialized), {}});
    return entries_.back().bytes;
}

void CompoundEntries::add(CompoundEntry entry)
{
    if (entries_.size() >= MaxEntries) {
        damagedContainer();
    }
    entries_.push_back(std::move(entry));
}

bool isStream(const CompoundEntry &entry, QLatin1String name)
{
    return !entry.isStorage && entry.path.size() == 1 && entry.path.first().compare(name, Qt::CaseInsensitive) == 0;
}

bool isCompound(const QByteArray &bytes)
{
    return bytes.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

} // namespace excel
