// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Database.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

QString memoryFolder()
{
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("JetFuzz-XXXXXX"));
}

/// Runs `body`; an error must name the file.
template <typename Body> void attempt(const QString &path, Body &&body)
{
    try {
        body();
    } catch (const jet::Error &error) {
        if (!error.description().contains(path)) {
            std::abort();
        }
    }
}

} // namespace

/// Whole files, read through table by table. The password of the fixtures, unless the input has changed it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(memoryFolder());
    static const QString path = folder.filePath(QStringLiteral("Farm.mdb"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)) < 0) {
        std::abort();
    }
    file.close();
    attempt(path, [] {
        const auto database = jet::Database::open(path, QStringLiteral("krelpon"));
        for (const QString &table : database->tableNames()) {
            attempt(path, [&] { database->readRows(table, [](const jet::Row &) {}); });
        }
    });
    return 0;
}
