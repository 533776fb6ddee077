// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/DatabaseVfs.h"

#include "platform/dao/DataError.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <sqlite3.h>

#include <map>
#include <mutex>
#include <numeric>

namespace dao
{

namespace
{

/// A copy of the default VFS that opens fewer kinds of files.
struct ConfinedVfs {
    sqlite3_vfs base;
    sqlite3_vfs *underlying;
};

/// Name of the super-journal at the end of a rollback journal: name, its length, the sum of its bytes, the journal magic. Empty
/// without one that SQLite would take for valid. Source: the file format of SQLite, "The Rollback Journal".
QString superJournalIn(const QString &path)
{
    QFile journal(path);
    if (!QFileInfo(path).isFile() || !journal.open(QIODevice::ReadOnly)) {
        return {};
    }
    constexpr qint64 TrailerSize = 16;
    constexpr quint64 Magic = 0xd9d505f920a163d7;
    if (journal.size() < TrailerSize || !journal.seek(journal.size() - TrailerSize)) {
        return {};
    }
    const QByteArray trailer = journal.read(TrailerSize);
    if (trailer.size() != TrailerSize || qFromBigEndian<quint64>(trailer.constData() + 8) != Magic) {
        return {};
    }
    const qint64 length = qFromBigEndian<quint32>(trailer.constData());
    if (length > journal.size() - TrailerSize || !journal.seek(journal.size() - TrailerSize - length)) {
        return {};
    }
    const QByteArray name = journal.read(length);
    const quint32 sum = std::accumulate(name.begin(), name.end(), quint32{0},
                                        [](quint32 total, char byte) { return total + static_cast<quint32>(byte); });
    return sum == qFromBigEndian<quint32>(trailer.constData() + 4) ? QString::fromUtf8(name.constData()) : QString();
}

/// SQLite opens a super-journal before it deletes it, and a journal without the flag to create it when it looks for one to roll
/// back.
int openConfined(sqlite3_vfs *vfs, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    const bool isOther = (flags & (SQLITE_OPEN_SUPER_JOURNAL | SQLITE_OPEN_WAL)) != 0;
    const bool isLeftover = (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0 && (flags & SQLITE_OPEN_CREATE) == 0;
    if (isOther || (isLeftover && !superJournalIn(QString::fromUtf8(name)).isEmpty())) {
        file->pMethods = nullptr;
        return SQLITE_CANTOPEN;
    }
    sqlite3_vfs *underlying = reinterpret_cast<ConfinedVfs *>(vfs)->underlying;
    return underlying->xOpen(underlying, name, file, flags, outFlags);
}

} // namespace

const char *confinedVfs()
{
    // A test may replace the default VFS; connections to the former one may still be open.
    static std::map<sqlite3_vfs *, ConfinedVfs> registered;
    static std::mutex mutex;
    const std::lock_guard guard(mutex);
    static constexpr const char *Name = "confined";
    sqlite3_vfs *underlying = sqlite3_vfs_find(nullptr);
    const auto [entry, isNew] = registered.try_emplace(underlying);
    ConfinedVfs &vfs = entry->second;
    if (isNew) {
        vfs = {*underlying, underlying};
        vfs.base.zName = Name;
        vfs.base.pNext = nullptr;
        vfs.base.xOpen = openConfined;
    }
    if (sqlite3_vfs_find(Name) != &vfs.base) {
        sqlite3_vfs_unregister(sqlite3_vfs_find(Name));
        sqlite3_vfs_register(&vfs.base, 0);
    }
    return Name;
}

void refuseForeignJournal(const QString &database)
{
    // SQLite resolves a link to the database, but not one to the journal.
    const QString path = QFileInfo(database).canonicalFilePath() + QStringLiteral("-journal");
    const QString advice =
        QStringLiteral("%1 cannot be opened: %2 %3, which no journal of this program does. Nothing was changed. Do "
                       "not use a folder from a source that you do not trust; otherwise remove the journal.");
    if (QFileInfo(path).isSymLink()) {
        throw DataError(DataErrorNumber::CannotOpenFile, advice.arg(database, path, QStringLiteral("is a link to another file")));
    }
    if (const QString name = superJournalIn(path); !name.isEmpty()) {
        throw DataError(DataErrorNumber::CannotOpenFile,
                        advice.arg(database, path, QStringLiteral("names the file %1 for deletion").arg(name)));
    }
}

} // namespace dao
