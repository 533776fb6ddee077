// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"
#include "Judges.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using jet::Database;
using jet::ErrorNumber;

namespace
{

template <typename Body> QString errorOf(ErrorNumber number, Body &&body)
{
    try {
        body();
    } catch (const jet::Error &error) {
        return error.is(number) ? error.description() : QString("error %1: %2").arg(error.number()).arg(error.description());
    }
    return "no error";
}

QStringList keysOf(const Database &database, const QString &table)
{
    QStringList keys;
    database.readRows(table, [&](const jet::Row &row) { keys.append(QString::number(std::get<std::int32_t>(row.values[0]))); });
    return keys;
}

} // namespace

/// Whole files: the fixtures as they are, and changed byte by byte.
class DatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyValueIsWhatOtherReadersSay_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"PestMon.mdb", "PestMon_indexed.mdb", "ZN4.mdb", "ZN4_Spray.mdb"}) {
            QTest::newRow(name) << name;
        }
    }

    void everyValueIsWhatOtherReadersSay()
    {
        QFETCH(QString, name);
        const QString path = QStringLiteral(JET_FIXTURES "/") + name;
        const auto database = Database::open(path, judges::Password);
        QVERIFY(!database->tableNames().isEmpty());
#ifdef Q_OS_WIN
        QSKIP("The other readers do not run on Windows.");
#endif
        QString disagreement = judges::disagreement(path);
        QVERIFY2(disagreement.isEmpty(), qPrintable(disagreement));
        // The same with its pages encoded.
        const QByteArray encoded = bytes::encoded(judges::fixture(name), 0x1234ABCD);
        const QByteArray columnName("F\0l\0a\0g\0s\0", 10);
        QVERIFY(judges::fixture(name).contains(columnName) && !encoded.contains(columnName));
        put(encoded);
        disagreement = judges::disagreement(path_);
        QVERIFY2(disagreement.isEmpty(), qPrintable(disagreement));
    }

    void definitionsAreRead()
    {
        const auto database = Database::open(QStringLiteral(JET_FIXTURES "/PestMon_indexed.mdb"), judges::Password);
        const jet::TableDefinition &trans = database->definition("TBLPMTRANS");
        QCOMPARE(trans.name, QString("tblPMTrans"));
        QCOMPARE(trans.rowCount, 6U);
        QCOMPARE(trans.lastAutoNumber, 8);
        QStringList names;
        for (const jet::ColumnDefinition &column : trans.columns) {
            names.append(column.name);
        }
        QCOMPARE(
            names.join(' '),
            QString(
                "PMTransID BlockID PMMethodID PMTransDate PMTransDateCom PMTransWeek PMNotes PMPerson NoofMpoints PMTransCom"));
        const jet::ColumnDefinition &key = trans.columns[0];
        QVERIFY(key.isAutoNumber && key.isFixed && key.type == jet::ColumnType::Long);
        const jet::ColumnDefinition &notes = *trans.findColumn("pmnotes");
        QVERIFY(notes.type == jet::ColumnType::Text && notes.characters() == 255 && notes.isCompressed && !notes.isFixed);
        QVERIFY(trans.primaryKey());
        QVERIFY(trans.primaryKey()->isUnique);
        QCOMPARE(trans.primaryKey()->columns.size(), std::size_t{1});
        QCOMPARE(trans.primaryKey()->columns[0].column, std::size_t{0});
        QVERIFY(!database->definition("tblFTransaction").primaryKey());
        // One table has a key of two columns.
        const QStringList tables = database->tableNames();
        QVERIFY(std::any_of(tables.begin(), tables.end(), [&](const QString &table) {
            const jet::IndexDefinition *primary = database->definition(table).primaryKey();
            return primary && primary->columns.size() == 2;
        }));
    }

    void rowsAreFoundByTheirPosition()
    {
        const auto database = Database::open(QStringLiteral(JET_FIXTURES "/PestMon.mdb"), judges::Password);
        database->readRows("tblPMTrans", [&](const jet::Row &row) {
            const auto again = database->readRow("tblPMTrans", row.position);
            QVERIFY(again && *again == row.values);
            QVERIFY(!database->readRow("tblPMTrans", {row.position.page, 200}));
        });
    }

    void aFileThatCannotBeReadIsNamed()
    {
        QVERIFY(errorOf(ErrorNumber::FileNotFound, [&] { Database::open(path_ + "x", ""); }).contains(path_ + "x"));
        QVERIFY(errorOf(ErrorNumber::FileNotFound, [&] { Database::open(folder_.path(), ""); }).contains("no file"));
        const QByteArray valid = judges::fixture("ZN4_Spray.mdb");
        const auto errorWith = [&](ErrorNumber number, const QByteArray &file, const QString &password = judges::Password) {
            put(file);
            return errorOf(number, [&] { Database::open(path_, password); });
        };
        QCOMPARE(errorWith(ErrorNumber::NotAValidPassword, valid, "Krelpon"), QString("Not a valid password for %1.").arg(path_));
        QVERIFY(errorWith(ErrorNumber::NotAValidPassword, valid, "").contains("password"));
        QVERIFY(errorWith(ErrorNumber::UnrecognizedFormat, {}).contains("no Jet database"));
        QVERIFY(errorWith(ErrorNumber::UnrecognizedFormat, QByteArray(8192, 'x')).contains("no Jet database"));
        QByteArray other = valid;
        other[0x14] = 0;
        QVERIFY(errorWith(ErrorNumber::UnrecognizedFormat, other).contains("Jet 3"));
        other[0x14] = 2;
        QVERIFY(errorWith(ErrorNumber::UnrecognizedFormat, other).contains("after Jet 4"));
        QVERIFY(errorWith(ErrorNumber::Damaged, valid.left(valid.size() - 100)).contains("length"));
        QVERIFY(errorWith(ErrorNumber::Damaged, valid.left(2 * bytes::PageSize)).contains("length"));
    }

    void aFileWithoutPasswordAsksForNone()
    {
        QByteArray file = judges::fixture("ZN4.mdb");
        bytes::changeHeader(file, [](QByteArray &bytes) {
            const QByteArray date = bytes.mid(0x72, 8);
            double created = 0;
            memcpy(&created, date.constData(), sizeof created);
            for (int at = 0x42; at < 0x42 + 40; at += 4) {
                bytes::setNumber<quint32>(bytes, 0, at, static_cast<quint32>(created));
            }
        });
        put(file);
        QCOMPARE(Database::open(path_, "")->tableNames().size(), 9);
        QVERIFY(errorOf(ErrorNumber::NotAValidPassword, [&] { Database::open(path_, "krelpon"); }).contains(path_));
    }

    void aMovedRowKeepsItsPlaceAndADeletedOneStaysAway()
    {
        QByteArray file = judges::fixture("ZN4.mdb");
        const int definition = bytes::definitionPage(file, 10);
        const int data = bytes::dataPage(file, definition);
        const auto entry = [&](int slot) { return bytes::number<quint16>(file, data, bytes::slotOffset(slot)); };
        const auto setEntry = [&](int slot, int value) {
            bytes::setNumber<quint16>(file, data, bytes::slotOffset(slot), static_cast<quint16>(value));
        };
        // Rows 1 and 3 have outgrown the page: they are on a page of their own, a pointer in their place.
        QByteArray target(bytes::PageSize, '\0');
        target[0] = 1;
        qToLittleEndian<quint32>(static_cast<quint32>(definition), target.data() + 4);
        qToLittleEndian<quint16>(2, target.data() + 12);
        const auto newPage = static_cast<quint32>(file.size() / bytes::PageSize);
        int end = bytes::PageSize;
        for (const int slot : {1, 3}) {
            const int length = entry(slot - 1) - entry(slot);
            const QByteArray row = file.mid(data * bytes::PageSize + entry(slot), length);
            end -= length;
            target.replace(end, length, row);
            qToLittleEndian<quint16>(static_cast<quint16>(end | 0x8000), target.data() + bytes::slotOffset(slot / 2));
            bytes::setNumber<quint32>(file, data, entry(slot), newPage << 8 | static_cast<quint32>(slot / 2));
        }
        setEntry(1, entry(1) | 0x4000);
        // Row 3 was deleted after it moved: its bytes are still on the other page.
        setEntry(3, entry(3) | 0xC000);
        bytes::setNumber<quint32>(file, definition, 16, 9);
        const QByteArray valid = file + target;
        put(valid);
        QCOMPARE(keysOf(*Database::open(path_, judges::Password), "tblBlockPlant").join(' '),
                 QString("10 12 13 15 17 18 19 21 22"));
        // Deleted where it has moved to, its pointer left behind.
        file = valid;
        bytes::setNumber<quint32>(file, definition, 16, 8);
        const int targetPage = static_cast<int>(newPage);
        bytes::setNumber<quint16>(file, targetPage, 14,
                                  static_cast<quint16>(bytes::number<quint16>(file, targetPage, 14) | 0x4000));
        put(file);
        QCOMPARE(keysOf(*Database::open(path_, judges::Password), "tblBlockPlant").join(' '), QString("10 13 15 17 18 19 21 22"));
        // A pointer to itself.
        file = valid;
        bytes::setNumber<quint32>(file, data, entry(1) & 0x1FFF, static_cast<quint32>(data) << 8 | 1);
        put(file);
        const auto database = Database::open(path_, judges::Password);
        const QString error = errorOf(ErrorNumber::Damaged, [&] { keysOf(*database, "tblBlockPlant"); });
        QVERIFY2(error.contains(QString("table tblBlockPlant, page %1, row 2:").arg(data)) && error.contains("circle"),
                 qPrintable(error));
        QCOMPARE(keysOf(*database, "tblBlock").size(), 6);
    }

    void aRowTooFewIsAnErrorOfItsTableAlone()
    {
        QByteArray file = judges::fixture("PestMon.mdb");
        bytes::setNumber<quint32>(file, bytes::definitionPage(file, 281), 16, 282);
        put(file);
        const auto database = Database::open(path_, judges::Password);
        const QString error = errorOf(ErrorNumber::Damaged, [&] { keysOf(*database, "tblPMData"); });
        QVERIFY2(error.contains("table tblPMData, 281 rows can be read, but its definition counts 282"), qPrintable(error));
        QCOMPARE(keysOf(*database, "tblPMDataMax").size(), 271);
    }

    void staleMapsDoNotHideRows()
    {
        QByteArray file = judges::fixture("PestMon.mdb");
        const int definition = bytes::definitionPage(file, 281);
        const auto map = bytes::number<quint32>(file, definition, 55);
        const int mapPage = static_cast<int>(map >> 8);
        const int row = bytes::number<quint16>(file, mapPage, bytes::slotOffset(static_cast<int>(map & 0xFF)));
        // An inline map without a page.
        file.replace(mapPage * bytes::PageSize + row, 69, QByteArray(69, '\0'));
        put(file);
        QCOMPARE(keysOf(*Database::open(path_, judges::Password), "tblPMData").size(), 281);
    }

    void aDamagedPropertyBlobLeavesTheRowsReadable()
    {
        // The length of a name within the properties of a table.
        QByteArray file = judges::fixture("ZN4.mdb");
        file[59704] = 120;
        put(file);
        const auto database = Database::open(path_, judges::Password);
        QCOMPARE(database->tableNames().size(), 9);
        for (const QString &table : database->tableNames()) {
            QCOMPARE(database->readRows(table, [](const jet::Row &) {}), database->definition(table).rowCount);
        }
    }

    void aChangeOfTheFileIsSeen()
    {
        QByteArray file = judges::fixture("ZN4.mdb");
        put(file);
        const auto database = Database::open(path_, judges::Password);
        QVERIFY(!database->refresh());
        const int definition = bytes::definitionPage(file, 6);
        QVERIFY(definition > 0);
        bytes::setNumber<quint16>(file, 0, 0xE02, 0x0147);
        put(file);
        QVERIFY(database->stamp() != jet::stampOf(path_));
        QVERIFY(database->refresh());
        QVERIFY(!database->refresh());
#ifndef Q_OS_WIN
        // What cannot be read leaves the object as it was. Windows removes no open file.
        QFile::remove(path_);
        QVERIFY(errorOf(ErrorNumber::FileNotFound, [&] { database->refresh(); }).contains(path_));
        QCOMPARE(database->tableNames().size(), 9);
#endif
    }

private:
    void put(const QByteArray &file) const
    {
        judges::write(path_, file);
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath("Farm.mdb");
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "DatabaseTest.moc"
