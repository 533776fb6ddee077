// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Workspace.h"

#include "platform/basic/TextFiles.h"
#include "platform/dao/Engine.h"
#include "platform/dao/FileFormat.h"
#include "platform/dao/JetStorage.h"
#include "platform/dao/SqliteStorage.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace dao
{

namespace
{

QString existingFile(const QString &requested)
{
    const auto path = basic::findPath(requested);
    if (!path) {
        throw DataError(DataErrorNumber::FileNotFound, QStringLiteral("Could not find the file %1.").arg(requested));
    }
    const QFileInfo info(*path);
    if (!info.isFile() || !info.isReadable()) {
        throw DataError(DataErrorNumber::CannotOpenFile,
                        !info.isFile() ? QStringLiteral("%1 is not a file.").arg(*path)
                                       : QStringLiteral("%1 cannot be opened: you have no permission to read it.").arg(*path));
    }
    return info.absoluteFilePath();
}

std::function<void(const QString &)> &noticeHandler()
{
    static std::function<void(const QString &)> handler;
    return handler;
}

std::unique_ptr<Database> databaseOn(std::unique_ptr<Storage> storage, bool exclusive)
{
    auto state = std::make_unique<Database::State>();
    state->engine = std::make_shared<Engine>(std::move(storage), exclusive);
    return std::make_unique<Database>(std::move(state));
}

} // namespace

void Workspace::setNoticeHandler(std::function<void(const QString &)> handler)
{
    noticeHandler() = std::move(handler);
}

void Workspace::notice(const QString &sentence)
{
    if (noticeHandler()) {
        noticeHandler()(sentence);
    }
}

FileKind Workspace::fileKind(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return FileKind::Sqlite;
    }
    constexpr qint64 identified = 19;
    const QByteArray name = file.read(identified).mid(4);
    return name == "Standard Jet DB" || name == "Standard ACE DB" ? FileKind::Jet : FileKind::Sqlite;
}

QStringList Workspace::companionFiles(const QString &path)
{
    return fileKind(path) == FileKind::Jet ? JetStorage::companionFiles(path) : QStringList{path + QLatin1String("-journal")};
}

std::unique_ptr<Database> Workspace::OpenDatabase(const QString &path, bool exclusive, bool readOnly, const QString &connect)
{
    const QString file = existingFile(path);
    const QString password = passwordIn(connect);
    if (fileKind(file) == FileKind::Jet) {
        return databaseOn(JetStorage::open(file, exclusive, readOnly, password), exclusive);
    }
    return databaseOn(SqliteStorage::open(file, exclusive, readOnly, password), exclusive);
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString &path, const QString &connect, FileKind kind)
{
    const QString target = QFileInfo(basic::pathForWriting(path)).absoluteFilePath();
    if (kind == FileKind::Jet) {
        return databaseOn(JetStorage::create(target, passwordIn(connect)), false);
    }
    return databaseOn(SqliteStorage::create(target, passwordIn(connect)), false);
}

} // namespace dao
