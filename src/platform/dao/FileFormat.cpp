// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/FileFormat.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringList>
#include <QtEndian>

#include <sqlite3.h>

#include <array>

namespace dao
{

namespace
{

constexpr int HeaderSize = 100;
constexpr int SaltSize = 16;

[[noreturn]] void failFormat(const QString &path, const QString &what)
{
    throw DataError(DataErrorNumber::UnrecognizedFormat, QStringLiteral("%1 %2").arg(path, what));
}

[[noreturn]] void failDamaged(const QString &path, const QString &what)
{
    throw DataError(DataErrorNumber::Damaged, QStringLiteral("%1 is damaged: %2. Restore it from a backup.").arg(path, what));
}

/// Reads through SQLite's own file handle, since closing a second one would drop the locks that this process holds on it.
QByteArray readHeader(const Connection &connection, std::int64_t &size)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(connection.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods == nullptr) {
        connection.fail(SQLITE_CANTOPEN);
    }
    sqlite3_int64 bytes = 0;
    QByteArray header(HeaderSize, '\0');
    int code = file->pMethods->xFileSize(file, &bytes);
    if (code == SQLITE_OK && bytes > 0) {
        code = file->pMethods->xRead(file, header.data(), HeaderSize, 0);
    }
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
        connection.fail(code);
    }
    size = bytes;
    return header;
}

quint32 numberAt(const QByteArray &header, qsizetype at)
{
    return qFromBigEndian<quint32>(header.constData() + at);
}

QByteArray hashOf(const QByteArray &salt, const QString &password)
{
    return QCryptographicHash::hash(salt + password.toUtf8(), QCryptographicHash::Sha256);
}

} // namespace

void checkHeader(const Connection &connection)
{
    const QString &path = connection.path();
    if (QFileInfo(path + QLatin1String("-journal")).size() > 0) {
        return;
    }
    std::int64_t size = 0;
    const QByteArray header = readHeader(connection, size);
    if (size == 0) {
        failDamaged(path, QStringLiteral("it is empty"));
    }
    if (!header.startsWith(QByteArrayView("SQLite format 3\0", 16))) {
        failFormat(path, QStringLiteral("is not a database of this program."));
    }
    if (size < HeaderSize) {
        failDamaged(path, QStringLiteral("most of it is missing"));
    }
    if (numberAt(header, 68) != static_cast<quint32>(ApplicationId)) {
        failFormat(path, QStringLiteral("is a database of another program."));
    }
    const quint32 declared = qFromBigEndian<quint16>(header.constData() + 16);
    const std::int64_t pageSize = declared == 1 ? 65536 : declared;
    // The page count is valid only when the same writer changed it last, that is when the two counters are equal.
    const bool isCountValid = numberAt(header, 24) == numberAt(header, 92);
    if (isCountValid && size < pageSize * numberAt(header, 28)) {
        failDamaged(path, QStringLiteral("a part of it is missing"));
    }
}

void checkApplication(Connection &connection)
{
    if (connection.number("PRAGMA application_id") != ApplicationId) {
        failFormat(connection.path(), QStringLiteral("is a database of another program."));
    }
}

QString passwordIn(const QString &connect)
{
    for (const QString &part : connect.split(u';')) {
        if (part.trimmed().startsWith(QLatin1String("pwd="), Qt::CaseInsensitive)) {
            return part.mid(part.indexOf(u'=') + 1);
        }
    }
    return {};
}

void storePassword(Connection &connection, const QString &password)
{
    std::array<quint32, SaltSize / 4> random{};
    QRandomGenerator::system()->fillRange(random.data(), static_cast<qsizetype>(random.size()));
    const QByteArray salt(reinterpret_cast<const char *>(random.data()), SaltSize);
    connection.execute("CREATE TABLE dao_Access (salt BLOB NOT NULL, hash BLOB NOT NULL)");
    Statement statement(connection, "INSERT INTO dao_Access (salt, hash) VALUES (?1, ?2)");
    statement.bindBytes(1, salt);
    statement.bindBytes(2, hashOf(salt, password));
    statement.step();
}

void checkPassword(Connection &connection, const QString &password)
{
    if (connection.number("SELECT count(*) FROM sqlite_schema WHERE name = 'dao_Access'") == 0) {
        failDamaged(connection.path(), QStringLiteral("its password is missing"));
    }
    Statement statement(connection, "SELECT salt, hash FROM dao_Access");
    const bool hasRow = statement.step();
    const std::string_view salt = hasRow ? statement.textAt(0) : std::string_view();
    const QByteArray saltBytes(salt.data(), static_cast<qsizetype>(salt.size()));
    const std::string_view hash = hasRow ? statement.textAt(1) : std::string_view();
    if (QByteArrayView(hash.data(), static_cast<qsizetype>(hash.size())) != hashOf(saltBytes, password)) {
        throw DataError(DataErrorNumber::NotAValidPassword,
                        QStringLiteral("Not a valid password for %1.").arg(connection.path()));
    }
}

} // namespace dao
