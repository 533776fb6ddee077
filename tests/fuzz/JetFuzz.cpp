// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Check.h"
#include "platform/jet/Transaction.h"

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

/// Runs `body`; an error must name the file, unless it is one of a value.
template <typename Body> void attempt(const QString &path, Body &&body)
{
    try {
        body();
    } catch (const jet::Error &error) {
        if (error.description().isEmpty() || (error.is(jet::ErrorNumber::Damaged) && !error.description().contains(path))) {
            std::abort();
        }
    }
}

/// A row changed, one removed, some added.
void change(jet::Database &database, const QString &table)
{
    std::vector<jet::RowPosition> rows;
    std::vector<jet::Value> values;
    database.readRows(table, [&](const jet::Row &row) {
        rows.push_back(row.position);
        values = row.values;
    });
    if (rows.size() < 2 || values.empty()) {
        return;
    }
    jet::Transaction transaction(database);
    transaction.update(table, rows[0], {{values.size() - 1, values.back()}});
    transaction.remove(table, rows[1]);
    for (int i = 0; i < 20; ++i) {
        values[0] = 1000 + i;
        attempt(database.path(), [&] { transaction.insert(table, values); });
    }
    transaction.commit();
}

} // namespace

/// Whole files, read, checked and changed table by table. The password of the fixtures, unless the input has changed it.
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
        jet::check(path, QStringLiteral("krelpon"));
    });
    attempt(path, [] {
        const auto database = jet::Database::open(path, QStringLiteral("krelpon"), jet::Access::ReadWrite);
        for (const QString &table : database->tableNames()) {
            attempt(path, [&] { change(*database, table); });
        }
    });
    return 0;
}
