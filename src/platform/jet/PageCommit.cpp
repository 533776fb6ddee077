// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/PageCommit.h"

#include "platform/basic/FileReplacement.h"
#include "platform/jet/CommitBytes.h"
#include "platform/jet/DiskFile.h"
#include "platform/jet/Error.h"
#include "platform/jet/OpenRollback.h"
#include "platform/jet/Pager.h"
#include "platform/jet/RollbackFile.h"

#include <QFile>

#include <algorithm>
#include <iterator>

namespace jet
{

namespace
{

constexpr qint64 PageBytes = static_cast<qint64>(PageSize);

void openForWriting(QFile &file, QIODevice::OpenMode mode)
{
    if (!basic::openWhenFree(file, mode | QIODevice::Unbuffered)) {
        throw Error(ErrorNumber::CannotOpenFile,
                    QStringLiteral("%1 cannot be written: %2.").arg(file.fileName(), file.errorString()));
    }
}

RollbackFile rollbackOf(const Pager &pager, int slot)
{
    RollbackFile rollback{pager.filePageCount(), pager.pageCount(), static_cast<std::uint32_t>(slot), {}};
    const auto inFile = [&](std::uint32_t number, const unsigned char *bytes) {
        const auto page = pager.encoded(number, bytes);
        return QByteArray(reinterpret_cast<const char *>(page.data()), PageBytes);
    };
    for (const PageEdit &edit : pager.edits()) {
        rollback.pages.push_back(
            {edit.page, edit.before ? inFile(edit.page, edit.before) : QByteArray(), inFile(edit.page, edit.after)});
    }
    return rollback;
}

/// Pages that are new first: when the disk is full, nothing else has been touched. The first page last, since it says that all
/// is done.
void writePages(const RollbackFile &rollback, QFile &database)
{
    std::vector<const StoredPage *> pages;
    std::transform(rollback.pages.begin(), rollback.pages.end(), std::back_inserter(pages),
                   [](const StoredPage &page) { return &page; });
    const auto rank = [](const StoredPage *page) { return page->number == 0 ? 2 : page->before.isEmpty() ? 0 : 1; };
    std::stable_sort(pages.begin(), pages.end(), [&](const StoredPage *a, const StoredPage *b) { return rank(a) < rank(b); });

    QByteArray marked = pages.back()->before;
    CommitBytes::setWriting(reinterpret_cast<unsigned char *>(marked.data()), static_cast<int>(rollback.slot));
    writeAt(database, 0, marked.constData(), PageBytes);
    for (const StoredPage *page : pages) {
        writeAt(database, page->number * PageBytes, page->after.constData(), PageBytes);
    }
    syncFile(database);
}

} // namespace

QString rollbackPath(const QString &databasePath)
{
    return databasePath + QStringLiteral("-rollback");
}

std::vector<std::uint32_t> commitPages(Pager &pager, int slot, OpenRollback &stored)
{
    if (!pager.hasEdits()) {
        return {};
    }
    CommitBytes::setWritten(pager.edit(0), slot);
    const RollbackFile rollback = rollbackOf(pager, slot);
    QFile database(pager.path());
    openForWriting(database, QIODevice::ReadWrite | QIODevice::ExistingOnly);
    bool isTouched = false;
    try {
        stored.write(rollback);
        isTouched = true;
        writePages(rollback, database);
        stored.clear();
    } catch (const Error &) {
        // Should this fail too, the rollback file does it when the database is next opened.
        basic::runOrIgnore([&] {
            if (isTouched) {
                rollback.restore(database);
            }
            stored.remove();
        });
        throw;
    }
    pager.acceptEdits();
    std::vector<std::uint32_t> pages;
    std::transform(rollback.pages.begin(), rollback.pages.end(), std::back_inserter(pages),
                   [](const StoredPage &page) { return page.number; });
    return pages;
}

bool hasRollback(const QString &databasePath)
{
    QFile stored(rollbackPath(databasePath));
    if (!stored.exists()) {
        return false;
    }
    if (!stored.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        // Another user may have removed it meanwhile.
        return stored.exists();
    }
    const QByteArray begin = stored.read(RollbackFile::MagicSize);
    return stored.error() != QFileDevice::NoError || RollbackFile::isBegin(begin);
}

void rollBack(const QString &databasePath)
{
    if (!hasRollback(databasePath)) {
        return;
    }
    QFile stored(rollbackPath(databasePath));
    openForWriting(stored, QIODevice::ReadOnly);
    const QByteArray bytes = stored.readAll();
    // A file that cannot be read must not pass for one that was not completed.
    if (bytes.size() != stored.size() || stored.error() != QFileDevice::NoError) {
        throw Error(ErrorNumber::DiskError,
                    QStringLiteral("%1 cannot be read: %2.").arg(stored.fileName(), stored.errorString()));
    }
    if (const std::optional<RollbackFile> rollback = RollbackFile::read(bytes)) {
        QFile database(databasePath);
        openForWriting(database, QIODevice::ReadWrite | QIODevice::ExistingOnly);
        if (!rollback->fits(database)) {
            throw Error(ErrorNumber::NeedsRepair,
                        QStringLiteral("A change of %1 was cut short, and another program has written to the file since. Restore "
                                       "it from a backup, or remove %2 to use it as it is.")
                            .arg(databasePath, stored.fileName()));
        }
        rollback->restore(database);
    }
    stored.close();
    removeFile(stored.fileName());
    syncFolderOf(databasePath);
}

void removeIdleRollback(const QString &databasePath)
{
    if (!hasRollback(databasePath)) {
        QFile::remove(rollbackPath(databasePath));
    }
}

} // namespace jet
