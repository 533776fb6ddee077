// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Check.h"
#include "platform/jet/Transaction.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace
{

const QString Password = QStringLiteral("krelpon");

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

[[noreturn]] void fail(const QString &what)
{
    std::fprintf(stderr, "%s\n", qPrintable(what));
    std::abort();
}

QStringList faultsOf(const QString &path)
{
    return jet::check(path, Password).faults;
}

/// A row changed, one removed, some added; how many rows there are then. Nothing where the table cannot be changed.
std::optional<std::uint32_t> change(jet::Database &database, const QString &table)
{
    std::vector<jet::RowPosition> rows;
    std::vector<jet::Value> values;
    database.readRows(table, [&](const jet::Row &row) {
        rows.push_back(row.position);
        values = row.values;
    });
    if (rows.size() < 2 || values.empty()) {
        return std::nullopt;
    }
    auto count = static_cast<std::uint32_t>(rows.size());
    jet::Transaction transaction(database);
    transaction.update(table, rows[0], {{values.size() - 1, values.back()}});
    count -= transaction.remove(table, rows[1]) ? 1 : 0;
    for (int i = 0; i < 20; ++i) {
        values[0] = 1000 + i;
        attempt(database.path(), [&] {
            transaction.insert(table, values);
            ++count;
        });
    }
    transaction.commit();
    return count;
}

/// Reads every table and checks the file; whether it is without fault.
bool read(const QString &path)
{
    bool isSound = false;
    attempt(path, [&] {
        const auto database = jet::Database::open(path, Password);
        for (const QString &table : database->tableNames()) {
            attempt(path, [&] { database->readRows(table, [](const jet::Row &) {}); });
        }
        isSound = faultsOf(path).isEmpty();
    });
    return isSound;
}

/// Changes every table that can be changed. A file without fault has none afterwards, and the rows that were written.
void write(const QString &path, bool isSound)
{
    QHash<QString, std::uint32_t> written;
    attempt(path, [&] {
        const auto database = jet::Database::open(path, Password, jet::Access::ReadWrite);
        for (const QString &table : database->tableNames()) {
            attempt(path, [&] {
                if (const auto count = change(*database, table)) {
                    written.insert(table, *count);
                }
            });
        }
    });
    if (!isSound) {
        return;
    }
    if (const QStringList faults = faultsOf(path); !faults.isEmpty()) {
        fail(QStringLiteral("after a change: ") + faults.front());
    }
    const auto database = jet::Database::open(path, Password);
    for (auto table = written.begin(); table != written.end(); ++table) {
        if (const auto rows = database->readRows(table.key(), [](const jet::Row &) {}); rows != table.value()) {
            fail(QStringLiteral("%1 has %2 rows in place of %3").arg(table.key()).arg(rows).arg(table.value()));
        }
    }
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
    write(path, read(path));
    return 0;
}
