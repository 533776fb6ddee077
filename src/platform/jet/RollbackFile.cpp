// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RollbackFile.h"

#include "platform/jet/CommitBytes.h"
#include "platform/jet/DiskFile.h"
#include "platform/jet/Header.h"
#include "platform/jet/LockFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace jet
{

namespace
{

constexpr char Magic[] = "Jet rollback 1";
constexpr qsizetype PageBytes = static_cast<qsizetype>(PageSize);
constexpr qsizetype HashSize = 32;
constexpr qsizetype HeadSize = sizeof Magic + 4 * 4;
/// What a disk writes at once.
constexpr qsizetype SectorSize = 512;

QByteArray littleEndian(std::uint32_t number)
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
    QByteArray all(Magic, sizeof Magic);
    all.reserve(HeadSize + static_cast<qsizetype>(pages.size()) * (4 + 2 * PageBytes) + HashSize);
    all += littleEndian(pagesBefore) + littleEndian(pagesAfter) + littleEndian(slot)
        + littleEndian(static_cast<std::uint32_t>(pages.size()));
    for (const StoredPage &page : pages) {
        all += littleEndian(page.number) + page.before + page.after;
    }
    return all + hashOf(all);
}

std::optional<RollbackFile> RollbackFile::read(const QByteArray &bytes)
{
    if (bytes.size() < HeadSize + HashSize || !bytes.startsWith(QByteArray(Magic, sizeof Magic))
        || hashOf(bytes.chopped(HashSize)) != bytes.last(HashSize)) {
        return std::nullopt;
    }
    QByteArrayView rest = QByteArrayView(bytes).sliced(sizeof Magic).chopped(HashSize);
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
