// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/MirrorCache.h"

#include "platform/basic/FileReplacement.h"
#include "platform/dao/Sqlite.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sqlite3.h>

#include <memory>
#include <utility>

namespace dao
{

namespace
{

constexpr auto Algorithm = QCryptographicHash::Blake2b_256;
/// Changes with the tables that a mirror has for the same file.
constexpr char Layout[] = "mirror 1";
const QString Ending = QStringLiteral(".mirror");

QString text(const QByteArray &hash)
{
    return QString::fromLatin1(hash.toHex().left(32));
}

/// Empty for a file that cannot be read.
QString hashOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(Algorithm);
    hash.addData(QByteArrayView(Layout));
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? text(hash.result()) : QString();
}

struct Freeing {
    void operator()(unsigned char *image) const { sqlite3_free(image); }
};

bool copyDatabase(const Connection &from, const Connection &to)
{
    sqlite3_backup *backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (!backup) {
        return false;
    }
    const int code = sqlite3_backup_step(backup, -1);
    return sqlite3_backup_finish(backup) == SQLITE_OK && code == SQLITE_DONE;
}

} // namespace

MirrorCache::MirrorCache(QString folder, QString file, QString content)
    : folder_(std::move(folder)), file_(std::move(file)), content_(std::move(content))
{
}

std::optional<MirrorCache> MirrorCache::of(const QString &jetFile)
{
    const QFileInfo info(jetFile);
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (info.size() < SmallestFile || base.isEmpty()) {
        return std::nullopt;
    }
    const QString folder = base + QStringLiteral("/farm-monitoring");
    constexpr auto OwnerAlone = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    if (!QDir().mkpath(folder) || !QFile::setPermissions(folder, OwnerAlone)) {
        return std::nullopt;
    }
    const QString content = hashOf(jetFile);
    if (content.isEmpty()) {
        return std::nullopt;
    }
    const QByteArray path = info.canonicalFilePath().toUtf8();
    return MirrorCache(folder, text(QCryptographicHash::hash(path, Algorithm)), content);
}

QStringList MirrorCache::stored(const QString &content) const
{
    return QDir(folder_).entryList({file_ + u'-' + content + u'*' + Ending}, QDir::Files);
}

bool MirrorCache::load(Connection &mirror) const
{
    for (const QString &name : stored(content_)) {
        // The last part of the name is the hash of the stored mirror itself.
        const QString path = folder_ + u'/' + name;
        if (hashOf(path) == name.section(u'-', -1).chopped(Ending.size())
            && copyDatabase(Connection(path, Connection::Mode::ReadOnly), mirror)) {
            return true;
        }
        QFile::remove(path);
    }
    return false;
}

void MirrorCache::save(const Connection &mirror) const
{
    for (const QString &name : stored({})) {
        QFile::remove(folder_ + u'/' + name);
    }
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, Freeing> image(sqlite3_serialize(mirror.get(), "main", &size, 0));
    // Nobody but its owner can read such a file from its making on.
    basic::UnfinishedFile unfinished(folder_ + QStringLiteral("/XXXXXX"));
    QFile file(unfinished.path());
    if (!image || unfinished.path().isEmpty() || !file.open(QIODevice::WriteOnly)
        || file.write(reinterpret_cast<const char *>(image.get()), size) != size || !file.flush()) {
        return;
    }
    file.close();
    unfinished.rename(folder_ + u'/' + file_ + u'-' + content_ + u'-' + hashOf(unfinished.path()) + Ending);
}

} // namespace dao
