// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"
#include "Judges.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace
{

constexpr int FilesPerFixture = 1500;
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
        const QByteArray sound = judges::fixture(name);
        QTemporaryDir folder;
        const QString path = folder.filePath("Farm.mdb");
        std::mt19937 random(20240229);
        int refused = 0;
        for (int i = 0; i < FilesPerFixture; ++i) {
            judges::write(path, damaged(sound, random));
            QElapsedTimer timer;
            timer.start();
            refused += faultsOf(path) > 0 ? 1 : 0;
            QVERIFY2(timer.elapsed() < SlowestFile, qPrintable(QString("file %1 took %2 ms").arg(i).arg(timer.elapsed())));
        }
        // Most of the damage is on pages that matter; the rest changes a value, an index or free space.
        QVERIFY2(refused > FilesPerFixture / 4 && refused < FilesPerFixture, qPrintable(QString::number(refused)));
    }

private:
    /// Reads every table; a RunTimeError that says nothing fails the test, any other exception ends it.
    static int faultsOf(const QString &path)
    {
        int faults = 0;
        const auto attempt = [&](auto &&body) {
            try {
                body();
            } catch (const jet::Error &error) {
                ++faults;
                QVERIFY2(error.description().contains(path), qPrintable(error.description()));
            }
        };
        attempt([&] {
            const auto database = jet::Database::open(path, judges::Password);
            attempt([&] {
                for (const QString &table : database->tableNames()) {
                    attempt([&] { database->readRows(table, [](const jet::Row &) {}); });
                }
            });
        });
        return faults;
    }
};

QTEST_GUILESS_MAIN(DamageTest)
#include "DamageTest.moc"
