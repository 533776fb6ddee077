// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RollbackFile.h"

#include "platform/jet/CommitBytes.h"
#include "platform/jet/DiskFile.h"
#include "platform/jet/Header.h"
#include "platform/jet/LockFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QRandomGenerator>
#include <QtEndian>

#include <algorithm>

namespace jet
{

namespace
{

constexpr char Magic[RollbackFile::MagicSize] = "Jet rollback 3";
constexpr qsizetype PageBytes = static_cast<qsizetype>(PageSize);
constexpr qsizetype HashSize = 32;
/// Magic, length of the whole, a number that no other change has, and four numbers.
constexpr qsizetype HeadSize = sizeof Magic + 2 * sizeof(quint64) + 4 * sizeof(quint32);
/// What a disk writes at once.
constexpr qsizetype SectorSize = 512;

template <typename Number> QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

bool isMixOf(const QByteArray &found, const QByteArray &one, const QByteArray &other)
{
    for (qsizetype at = 0; at < PageBytes; at += SectorSize) {
        const auto is = [&](const QByteArray &page) {
            return std::equal(found.begin() + at, found.begin() + at + SectorSize, page.begin() + at);
        };
        if (!is(one) && !is(other)) {
            return false;
        }
    }
    return true;
}

} // namespace

QByteArray RollbackFile::bytes() const
{
    QByteArray all;
    for (const StoredPage &page : pages) {
        all += littleEndian(page.number) + page.before + page.after;
    }
    const QByteArray head = QByteArray(Magic, sizeof Magic)
        + littleEndian(static_cast<quint64>(HeadSize + all.size() + HashSize))
        // Or the first sector of this change and what is left of the one before could be the whole of that.
        + littleEndian(QRandomGenerator::global()->generate64()) + littleEndian(pagesBefore) + littleEndian(pagesAfter)
        + littleEndian(slot) + littleEndian(static_cast<std::uint32_t>(pages.size()));
    all.prepend(head);
    return all + hashOf(all);
}

bool RollbackFile::isBegin(const QByteArray &bytes)
{
    return bytes.startsWith(QByteArray(Magic, sizeof Magic));
}

std::optional<RollbackFile> RollbackFile::read(const QByteArray &all)
{
    if (all.size() < HeadSize + HashSize || !isBegin(all)) {
        return std::nullopt;
    }
    const auto length = static_cast<qsizetype>(qFromLittleEndian<quint64>(all.constData() + sizeof Magic));
    if (length < HeadSize + HashSize || length > all.size()) {
        return std::nullopt;
    }
    const QByteArray bytes = all.first(length);
    if (hashOf(bytes.chopped(HashSize)) != bytes.last(HashSize)) {
        return std::nullopt;
    }
    QByteArrayView rest = QByteArrayView(bytes).sliced(sizeof Magic + 2 * sizeof(quint64)).chopped(HashSize);
    const auto next = [&](qsizetype size) {
        const QByteArrayView part = rest.first(std::min(size, rest.size()));
        rest = rest.sliced(part.size());
        return part.toByteArray().leftJustified(size, '\0');
    };
    const auto number = [&] { return qFromLittleEndian<std::uint32_t>(next(4).constData()); };
    RollbackFile file;
    file.pagesBefore = number();
    file.pagesAfter = number();
    file.slot = number();
    for (std::uint32_t left = number(); left > 0 && !rest.isEmpty(); --left) {
        StoredPage stored{number(), {}, {}};
        if (stored.number < file.pagesBefore) {
            stored.before = next(PageBytes);
        }
        stored.after = next(PageBytes);
        file.pages.push_back(std::move(stored));
    }
    return file.slot < static_cast<std::uint32_t>(LockFile::Slots) ? std::optional(file) : std::nullopt;
}

bool RollbackFile::fits(QFile &database) const
{
    if (database.size() < pagesBefore * PageBytes || database.size() > pagesAfter * PageBytes) {
        return false;
    }
    return std::all_of(pages.begin(), pages.end(), [&](const StoredPage &page) {
        if (page.before.isEmpty()) {
            return true;
        }
        QByteArray found;
        if (database.seek(page.number * PageBytes)) {
            found = database.read(PageBytes);
        }
        QByteArray before = page.before;
        if (found.size() != PageBytes) {
            return false;
        }
        if (page.number == 0) {
            // While the change was written, its user's pair said so.
            const auto user = static_cast<int>(slot);
            const auto pair = static_cast<qsizetype>(CommitBytes::offsetOf(user));
            if (found.mid(pair, CommitBytes::Size) == QByteArray(CommitBytes::Size, '\0')) {
                CommitBytes::setWriting(reinterpret_cast<unsigned char *>(before.data()), user);
            }
        }
        return isMixOf(found, before, page.after);
    });
}

void RollbackFile::restore(QFile &database) const
{
    for (const StoredPage &page : pages) {
        if (!page.before.isEmpty()) {
            writeAt(database, page.number * PageBytes, page.before.constData(), PageBytes);
        }
    }
    resizeFile(database, pagesBefore * PageBytes);
    syncFile(database);
}

} // namespace jet
