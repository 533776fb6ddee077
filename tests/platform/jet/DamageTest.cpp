// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"
#include "Judges.h"

#include "platform/jet/Check.h"
#include "platform/jet/Transaction.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace
{

// The sanitizers make everything ten times slower.
#ifdef __SANITIZE_ADDRESS__
constexpr int FilesPerFixture = 150;
#else
constexpr int FilesPerFixture = 1500;
#endif
constexpr qint64 SlowestFile = 2000;

/// Some bytes changed: most of them near the beginning of a page, where the numbers are that everything else hangs on.
QByteArray damaged(QByteArray file, std::mt19937 &random)
{
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned int>(limit)); };
    const int changes = 1 + below(8);
    for (int i = 0; i < changes; ++i) {
        const int page = below(static_cast<int>(file.size() / bytes::PageSize));
        const int offset = below(3) == 0 ? below(bytes::PageSize) : below(160);
        const int at = page * bytes::PageSize + offset;
        switch (below(4)) {
        case 0:
            file[at] = static_cast<char>(file[at] ^ (1 << below(8)));
            break;
        case 1:
            file[at] = '\xff';
            break;
        case 2:
            file[at] = static_cast<char>(below(256));
            break;
        default:
            // Another page in its place.
            file.replace(page * bytes::PageSize, bytes::PageSize,
                         file.mid(below(static_cast<int>(file.size() / bytes::PageSize)) * bytes::PageSize, bytes::PageSize));
            break;
        }
    }
    return file;
}

/// Waiting for a disk would be most of the work.
QString memoryFolder()
{
    const QDir memory("/dev/shm");
    return (memory.exists() ? memory : QDir::temp()).filePath("DamageTest-XXXXXX");
}

} // namespace

/// Damage may cost a table, but no crash, no hang and no memory.
class DamageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void damageIsAnErrorOrAValue_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"PestMon_indexed.mdb", "ZN4.mdb", "ZN4_Spray.mdb"}) {
            QTest::newRow(name) << name;
        }
    }

    void damageIsAnErrorOrAValue()
    {
        QFETCH(QString, name);
        const QByteArray valid = judges::fixture(name);
        const QTemporaryDir folder(memoryFolder());
        const QString path = folder.filePath("Farm.mdb");
        std::mt19937 random(20240229);
        int refused = 0;
        int seen = 0;
        for (int i = 0; i < FilesPerFixture; ++i) {
            judges::write(path, damaged(valid, random));
            QElapsedTimer timer;
            timer.start();
            refused += faultsOf(path) > 0 ? 1 : 0;
            if (i % 3 == 0) {
                attempt(path, [&] { seen += jet::check(path, judges::Password).faults.isEmpty() ? 0 : 1; });
                changeEveryTable(path);
            }
            QVERIFY2(timer.elapsed() < SlowestFile, qPrintable(QString("file %1 took %2 ms").arg(i).arg(timer.elapsed())));
        }
        // Most of the damage is on pages that matter; the rest changes a value, an index or free space.
        QVERIFY2(refused > FilesPerFixture / 8 && refused < FilesPerFixture, qPrintable(QString::number(refused)));
        QVERIFY2(seen > FilesPerFixture / 10, qPrintable(QString::number(seen)));
    }

private:
    /// Returns whether it ended in an error, which must name the file; any other exception ends the test.
    template <typename Body> static bool attempt(const QString &path, Body &&body)
    {
        try {
            body();
            return false;
        } catch (const jet::Error &error) {
            if (!error.description().contains(path) && error.is(jet::ErrorNumber::Damaged)) {
                QTest::qFail(qPrintable(error.description()), __FILE__, __LINE__);
            }
            return true;
        }
    }

    /// Reads every table; returns how many cannot be.
    static int faultsOf(const QString &path)
    {
        int faults = 0;
        faults += attempt(path, [&] {
            const auto database = jet::Database::open(path, judges::Password);
            for (const QString &table : database->tableNames()) {
                faults += attempt(path, [&] { database->readRows(table, [](const jet::Row &) {}); });
            }
        });
        return faults;
    }

    static void changeTable(jet::Database &database, const QString &table)
    {
        std::vector<jet::RowPosition> rows;
        std::vector<jet::Value> values;
        database.readRows(table, [&](const jet::Row &row) {
            rows.push_back(row.position);
            values = row.values;
        });
        if (values.empty()) {
            return;
        }
        jet::Transaction transaction(database);
        for (const jet::RowPosition row : rows) {
            if (row.slot % 3 == 0) {
                transaction.remove(table, row);
            } else {
                transaction.update(table, row, {{values.size() - 1, values.back()}});
            }
        }
        for (int i = 0; i < 40; ++i) {
            values[0] = 1000 + i;
            attempt(database.path(), [&] { transaction.insert(table, values); });
        }
        transaction.commit();
    }

    static void changeEveryTable(const QString &path)
    {
        attempt(path, [&] {
            const auto database = jet::Database::open(path, judges::Password, jet::Access::ReadWrite);
            for (const QString &table : database->tableNames()) {
                attempt(path, [&] { changeTable(*database, table); });
                attempt(path, [&] {
                    jet::Transaction transaction(*database);
                    transaction.addBooleanColumn(table, "Added");
                    transaction.createTable({"Added to " + table.left(20), {{"ID"}}});
                    transaction.commit();
                });
            }
        });
    }
};

QTEST_GUILESS_MAIN(DamageTest)
#include "DamageTest.moc"
