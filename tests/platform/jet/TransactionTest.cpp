// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"
#include "Judges.h"

#include "platform/jet/DatabaseMaker.h"
#include "platform/jet/Transaction.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>

using jet::ColumnType;
using jet::Database;
using jet::Date;
using jet::ErrorNumber;
using jet::NewTable;
using jet::Null;
using jet::RowPosition;
using jet::Transaction;
using jet::Value;

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

} // namespace

/// Changes of a file, each judged by the page walker and by other readers.
class TransactionTest : public QObject
{
    Q_OBJECT

private:
    void openFixture(const QString &name)
    {
        database_.reset();
        judges::write(path_, judges::fixture(name));
        database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
    }

    void openNew()
    {
        database_.reset();
        QFile::remove(path_);
        jet::createDatabase(path_, judges::Password);
        database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
    }

    template <typename Body> void change(Body &&body)
    {
        Transaction transaction(*database_);
        body(transaction);
        transaction.commit();
    }

    std::vector<std::vector<Value>> rows(const QString &table) const
    {
        std::vector<std::vector<Value>> all;
        database_->readRows(table, [&](const jet::Row &row) { all.push_back(row.values); });
        return all;
    }

    std::vector<RowPosition> positions(const QString &table) const
    {
        std::vector<RowPosition> all;
        database_->readRows(table, [&](const jet::Row &row) { all.push_back(row.position); });
        return all;
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath("Farm.mdb");
    std::unique_ptr<Database> database_;

private Q_SLOTS:
    void cleanup()
    {
        database_.reset();
        if (QFile::exists(path_)) {
            const QString complaints = judges::complaints(path_);
            QVERIFY2(complaints.isEmpty(), qPrintable(complaints));
        }
        QVERIFY(!QFile::exists(folder_.filePath("Farm.ldb")));
    }

    void rowsOfTheFixturesChange()
    {
        openFixture("PestMon_indexed.mdb");
        RowPosition added;
        change([&](Transaction &transaction) {
            std::vector<Value> row(10);
            row[3] = Date{45000.25};
            row[6] = QString("½ dag – ρ");
            const jet::Inserted inserted = transaction.insert("TBLpmtrans", row);
            QCOMPARE(*inserted.autoNumber, 9);
            added = inserted.position;
            QVERIFY(transaction.remove("tblPMTrans", *transaction.findByKey("tblPMTrans", {3})));
            QVERIFY(transaction.update("tblPMTrans", *transaction.findByKey("tblPMTrans", {5}),
                                       {{6, QString()}, {9, false}, {1, Null{}}}));
            QVERIFY(!transaction.findByKey("tblPMTrans", {3}));
            QVERIFY(!transaction.remove("tblPMTrans", {added.page, 200}));
        });
        const auto again = database_->readRow("tblPMTrans", added);
        QCOMPARE(std::get<QString>((*again)[6]), QString("½ dag – ρ"));
        QCOMPARE(database_->definition("tblPMTrans").rowCount, 6U);
        QCOMPARE(database_->definition("tblPMTrans").lastAutoNumber, 9);
        const auto five = rows("tblPMTrans")[3];
        QVERIFY(std::get<QString>(five[6]).isEmpty() && !std::get<bool>(five[9]) && five[1] == Value(Null{}));
        // The number of a row that is given counts too, and one that is gone is not given out again.
        change([&](Transaction &transaction) {
            std::vector<Value> row(10);
            row[0] = 40;
            QVERIFY(!transaction.insert("tblPMTrans", row).autoNumber);
            row[0] = Null{};
            const RowPosition last = transaction.insert("tblPMTrans", row).position;
            transaction.remove("tblPMTrans", last);
            QCOMPARE(*transaction.insert("tblPMTrans", row).autoNumber, 42);
        });
    }

    void withoutCommitNothingIsChanged()
    {
        openFixture("PestMon_indexed.mdb");
        const QByteArray before = judges::fixture("PestMon_indexed.mdb");
        {
            Transaction transaction(*database_);
            for (int i = 0; i < 3000; ++i) {
                transaction.insert("tblPMData", {Null{}, i, 2, 3, 4});
            }
            transaction.addBooleanColumn("tblPMTrans", "PMRepeat");
            transaction.createTable({"tblNew", {{"A"}}, {}});
            QCOMPARE(database_->tableNames().size(), 17);
        }
        QCOMPARE(database_->tableNames().size(), 16);
        QCOMPARE(rows("tblPMData").size(), std::size_t{281});
        QVERIFY(!database_->definition("tblPMTrans").findColumn("PMRepeat"));
        QFile file(path_);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == before);
        // The same object goes on.
        change([](Transaction &transaction) { transaction.insert("tblPMData", {Null{}, 1, 2, 3, 4}); });
        QCOMPARE(rows("tblPMData").size(), std::size_t{282});
    }

    void whatCannotBeIsRefusedAndLeavesTheTransaction()
    {
        openFixture("PestMon_indexed.mdb");
        change([&](Transaction &transaction) {
            const auto insert = [&](const Value &key, const Value &week) {
                std::vector<Value> row(10);
                row[0] = key;
                row[5] = week;
                transaction.insert("tblPMTrans", row);
            };
            QVERIFY(errorOf(ErrorNumber::DuplicateKey, [&] { insert(5, Null{}); }).contains("PrimaryKey"));
            QVERIFY(errorOf(ErrorNumber::TypeConversion, [&] { insert(QString("5"), Null{}); }).contains("PMTransID"));
            QVERIFY(errorOf(ErrorNumber::TypeConversion, [&] { insert(Null{}, 40000); }).contains("PMTransWeek"));
            QVERIFY(errorOf(ErrorNumber::TypeConversion, [&] { insert(Null{}, 1.5); }).contains("PMTransWeek"));
            const RowPosition row = *transaction.findByKey("tblPMTrans", {5});
            const auto update = [&](std::size_t column, const Value &value) {
                transaction.update("tblPMTrans", row, {{column, value}});
            };
            QVERIFY(errorOf(ErrorNumber::NullKey, [&] { update(0, Null{}); }).contains("PrimaryKey"));
            QVERIFY(errorOf(ErrorNumber::DuplicateKey, [&] { update(0, 6); }).contains("PrimaryKey"));
            QVERIFY(errorOf(ErrorNumber::FieldTooSmall, [&] { update(6, QString(256, 'x')); }).contains("PMNotes"));
            QVERIFY(errorOf(ErrorNumber::TableNotFound, [&] { transaction.remove("tblNone", row); }).contains("tblNone"));
            QVERIFY(errorOf(ErrorNumber::TableExists, [&] {
                        transaction.createTable({"TBLPMTRANS", {{"A"}}, {}});
                    }).contains("already"));
            QVERIFY(errorOf(ErrorNumber::FieldExists, [&] {
                        transaction.addBooleanColumn("tblPMTrans", "pmnotes");
                    }).contains("already"));
            QVERIFY(errorOf(ErrorNumber::ReadOnly, [&] {
                        transaction.createTable({"tblNeuß", {{"A"}}, {}});
                    }).contains("letters"));
            QVERIFY(errorOf(ErrorNumber::ItemNotFound, [&] {
                        transaction.findByKey("tblFTransaction", {1});
                    }).contains("no primary key"));
            // The key of the row itself is not taken.
            update(0, 5);
            insert(Null{}, 7);
        });
        QCOMPARE(rows("tblPMTrans").size(), std::size_t{7});
    }

    void aTableThatCannotBeKeptTrueIsOnlyRead()
    {
        openFixture("ZN4.mdb");
        const QString reason = errorOf(ErrorNumber::ReadOnly, [&] {
            Transaction transaction(*database_);
            transaction.insert("MSysObjects", std::vector<Value>(17));
        });
        QVERIFY2(reason.contains("MSysObjects can only be read: the index ParentIdName is on the Text column Name"),
                 qPrintable(reason));
        const auto readOnly = Database::open(path_, judges::Password);
        QVERIFY(errorOf(ErrorNumber::ReadOnly, [&] { Transaction transaction(*readOnly); }).contains("opened for reading"));
        // A table of the user's with an index on a Text column, by a change of the column's type in its definition.
        QByteArray file = judges::fixture("ZN4.mdb");
        const int column = static_cast<int>(database_->definition("tblWorker").page) * bytes::PageSize + 63 + 12;
        QCOMPARE(file[column], char(ColumnType::Long));
        file[column] = char(ColumnType::Text);
        bytes::setNumber<quint16>(file, 0, 0xE02, 0x0155);
        judges::write(path_, file);
        database_->refresh();
        change([&](Transaction &transaction) {
            const QString refused = errorOf(ErrorNumber::ReadOnly, [&] {
                transaction.insert("tblWorker", {QString("x"), Null{}});
            });
            QVERIFY2(refused.contains("tblWorker can only be read: the index PrimaryKey is on the Text column WorkerID"),
                     qPrintable(refused));
            transaction.insert("tblYear", {QString("2031")});
        });
        QCOMPARE(rows("tblWorker").size(), std::size_t{4});
        QFile::remove(path_);
    }

    void aRowThatOutgrowsItsPageKeepsItsPosition()
    {
        openNew();
        change([](Transaction &transaction) {
            transaction.createTable(
                {"tblNotes",
                 {{"ID", ColumnType::Long, 0, true}, {"A", ColumnType::Text, 255}, {"B", ColumnType::Text, 255}},
                 {{"PrimaryKey", {"ID"}, true, true}}});
            for (int i = 0; i < 100; ++i) {
                transaction.insert("tblNotes", {Null{}, QString("short"), QString("ж")});
            }
        });
        const std::vector<RowPosition> before = positions("tblNotes");
        const auto update = [&](int row, const QString &text) {
            change([&](Transaction &transaction) {
                QVERIFY(transaction.update("tblNotes", before[static_cast<std::size_t>(row)], {{1, text}, {2, text + "!"}}));
            });
        };
        const QString longText(250, QChar(0x6F22));
        for (int row = 0; row < 30; ++row) {
            update(row, longText);
        }
        // Grown where it has moved to, shrunk there, and moved once more.
        update(3, "shorter");
        update(4, longText + "x");
        for (int row = 31; row < 40; ++row) {
            update(row, longText);
        }
        update(3, longText);
        QCOMPARE(positions("tblNotes"), before);
        auto all = rows("tblNotes");
        QCOMPARE(std::get<QString>(all[4][1]), longText + "x");
        QCOMPARE(std::get<QString>(all[3][2]), longText + "!");
        QCOMPARE(std::get<QString>(all[99][1]), QString("short"));
        // Moved rows that are deleted stay away, for every reader.
        change([&](Transaction &transaction) {
            for (std::size_t row = 0; row < 20; ++row) {
                QVERIFY(transaction.remove("tblNotes", before[row]));
                QVERIFY(!transaction.remove("tblNotes", before[row]));
            }
        });
        QCOMPARE(rows("tblNotes").size(), std::size_t{80});
        change([&](Transaction &transaction) {
            for (int i = 0; i < 300; ++i) {
                transaction.insert("tblNotes", {Null{}, QString("new"), longText});
            }
        });
        QCOMPARE(rows("tblNotes").size(), std::size_t{380});
    }

    void everyKindOfValueComesBackBitForBit()
    {
        openNew();
        using Limits = std::numeric_limits<double>;
        const std::vector<double> numbers{
            0.0, -0.0, 1.5, -1.5, 1e-300, Limits::denorm_min(), Limits::max(), -Limits::max(), Limits::infinity()};
        change([&](Transaction &transaction) {
            NewTable table{"tblValues",
                           {{"ID", ColumnType::Long, 0, true},
                            {"Flag", ColumnType::Boolean},
                            {"Small", ColumnType::Byte},
                            {"Number", ColumnType::Integer},
                            {"Money", ColumnType::Currency},
                            {"Real", ColumnType::Single},
                            {"Exact", ColumnType::Double},
                            {"Moment", ColumnType::Date},
                            {"Name", ColumnType::Text, 255, false, true},
                            {"Story", ColumnType::Memo},
                            {"Thing", ColumnType::Ole}},
                           {{"PrimaryKey", {"ID"}, true, true}}};
            // Both orders of each kind of number.
            for (const char *column : {"Flag", "Small", "Number", "Money", "Real", "Exact", "Moment"}) {
                table.indexes.push_back({QString("i") + column, {column}});
                table.indexes.push_back({QString("j") + column, {"Flag", column, "Exact"}});
            }
            transaction.createTable(table);
            transaction.insert("tblValues", {Null{}});
            for (const double number : numbers) {
                const int sign = std::signbit(number) ? -1 : 1;
                transaction.insert("tblValues",
                                   {Null{}, sign < 0, 255, sign * 32767, jet::Currency{sign * 1234567},
                                    static_cast<float>(sign * 0.1), number, Date{sign * 1.75}, QString(""), QString("memo"),
                                    QByteArray("\0\x01", 2)});
            }
        });
        const auto all = rows("tblValues");
        QCOMPARE(all[0][1], Value(false));
        QVERIFY(std::all_of(all[0].begin() + 2, all[0].end(), [](const Value &value) { return value == Value(Null{}); }));
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const double stored = std::get<double>(all[i + 1][6]);
            QVERIFY(memcmp(&stored, &numbers[i], sizeof stored) == 0);
            QVERIFY(!std::get<QString>(all[i + 1][8]).isNull());
        }
        QCOMPARE(all[2][7], Value(Date{-1.75}));
        QCOMPARE(all[2][4], Value(jet::Currency{-1234567}));
    }

    void textInEveryScriptComesBack()
    {
        openNew();
        QStringList texts{"",
                          "a",
                          "NA",
                          "abc",
                          "café",
                          QString("x") + QChar(0x100) + "y",
                          QString(QChar(0xFEFF)) + "mark",
                          "Ђ",
                          "漢字仮名",
                          "עברית",
                          "ไทย",
                          "\u2013½",
                          QString("tab\tand\nline"),
                          QString(255, QChar(0xE9)),
                          QString(255, QChar(0x20AC))};
        for (char16_t code = 1; code < 0xD800; code = static_cast<char16_t>(code + 97)) {
            texts.append(QString("x") + QChar(code) + QChar(static_cast<char16_t>(code ^ 0x5A)));
        }
        change([&](Transaction &transaction) {
            transaction.createTable({"tblTexts", {{"ID", ColumnType::Long}, {"T", ColumnType::Text, 255}}, {}});
            for (int i = 0; i < texts.size(); ++i) {
                transaction.insert("tblTexts", {i, texts[i]});
            }
        });
        const auto all = rows("tblTexts");
        for (int i = 0; i < texts.size(); ++i) {
            QCOMPARE(std::get<QString>(all[static_cast<std::size_t>(i)][1]), texts[i]);
        }
    }

    void charactersOfTwoUnitsComeBack()
    {
        openNew();
        change([&](Transaction &transaction) {
            transaction.createTable({"tblTexts", {{"T", ColumnType::Text, 4}}});
            transaction.insert("tblTexts", {QString::fromUtf8("😀🌱")});
        });
        QCOMPARE(std::get<QString>(rows("tblTexts")[0][0]), QString::fromUtf8("😀🌱"));
        if (const auto tables = judges::byMdbReader(path_)) {
            QCOMPARE(tables->value("tblTexts"), QStringList(QString::fromUtf8("😀🌱")));
        }
        // mdb-export cannot print them.
        change([&](Transaction &transaction) { transaction.remove("tblTexts", positions("tblTexts")[0]); });
    }

    void longValuesTakeOnePieceOrMany()
    {
        openNew();
        const std::vector<int> sizes{0, 1, 64, 65, 4076, 4077, 4072, 8144, 8145, 30000};
        change([&](Transaction &transaction) {
            transaction.createTable({"tblLong",
                                     {{"ID", ColumnType::Long}, {"M", ColumnType::Memo}, {"O", ColumnType::Ole}},
                                     {{"PrimaryKey", {"ID"}, true, true}}});
            for (const int size : sizes) {
                transaction.insert("tblLong", {size, QString(size / 2, QChar(0x3B1)), QByteArray(size, 'o')});
            }
        });
        auto all = rows("tblLong");
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            QCOMPARE(std::get<QString>(all[i][1]), QString(sizes[i] / 2, QChar(0x3B1)));
            QCOMPARE(std::get<QByteArray>(all[i][2]).size(), sizes[i]);
        }
        // Replaced and deleted values free space for new ones.
        const auto refill = [&] {
            change([&](Transaction &transaction) {
                for (const int size : sizes) {
                    const RowPosition row = *transaction.findByKey("tblLong", {size});
                    transaction.update("tblLong", row, {{1, QString(size, 'm')}, {2, Null{}}});
                    transaction.update("tblLong", row, {{2, QByteArray(size, 'p')}});
                }
                transaction.remove("tblLong", *transaction.findByKey("tblLong", {30000}));
                transaction.insert("tblLong", {30000, Null{}, QByteArray(30000, 'q')});
            });
        };
        refill();
        const qint64 size = QFileInfo(path_).size();
        for (int i = 0; i < 5; ++i) {
            refill();
        }
        QVERIFY2(QFileInfo(path_).size() <= size + 20 * bytes::PageSize,
                 qPrintable(QString::number(QFileInfo(path_).size() - size)));
    }

    void rowsOlderThanAColumnAreRead()
    {
        openFixture("PestMon.mdb");
        const auto before = rows("tblPMTrans");
        change([](Transaction &transaction) { transaction.addBooleanColumn("tblPMTrans", "PMRepeat"); });
        QCOMPARE(database_->definition("tblPMTrans").columns.back().name, QString("PMRepeat"));
        auto all = rows("tblPMTrans");
        for (std::size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(all[i].back(), Value(false));
            all[i].pop_back();
            QVERIFY(all[i] == before[i]);
        }
        // The fifteenth to seventeenth column make the null mask longer.
        change([&](Transaction &transaction) {
            for (int i = 0; i < 7; ++i) {
                transaction.addBooleanColumn("tblPMTrans", QString("Extra%1").arg(i));
            }
            for (const RowPosition row : positions("tblPMTrans")) {
                QVERIFY(transaction.update("tblPMTrans", row, {{10, false}, {16, true}}));
            }
        });
        all = rows("tblPMTrans");
        QCOMPARE(all[2][16], Value(true));
        QCOMPARE(all[2][6], before[2][6]);
    }

    void aDefinitionOfTwoPagesIsReadAndGrows()
    {
        openNew();
        NewTable table{"tblWide", {}, {}};
        for (int i = 0; i < 75; ++i) {
            table.columns.push_back(
                {QString("A column with a rather long name %1").arg(i), i % 3 == 0 ? ColumnType::Text : ColumnType::Double, 20});
        }
        table.indexes.push_back({"PrimaryKey", {table.columns[1].name, table.columns[2].name}, true, true});
        change([&](Transaction &transaction) {
            transaction.createTable(table);
            std::vector<Value> row(75);
            for (int i = 0; i < 50; ++i) {
                row[1] = i * 0.5;
                row[2] = -1.0;
                row[72] = QString("last %1").arg(i);
                transaction.insert("tblWide", row);
            }
        });
        for (int i = 0; i < 45; ++i) {
            change([&](Transaction &transaction) {
                transaction.addBooleanColumn("tblWide", QString("Another column with a long name %1").arg(i));
            });
        }
        QCOMPARE(database_->definition("tblWide").columns.size(), std::size_t{120});
        QCOMPARE(std::get<QString>(rows("tblWide")[49][72]), QString("last 49"));
    }

    void mapsGrowBeyondTheirRow()
    {
        openNew();
        change([](Transaction &transaction) {
            for (const char *name : {"tblOne", "tblTwo"}) {
                transaction.createTable({name,
                                         {{"ID", ColumnType::Long, 0, true}, {"T", ColumnType::Text, 255}},
                                         {{"PrimaryKey", {"ID"}, true, true}}});
            }
        });
        // In turn, so that each table's pages are spread over the file; the map in a row ends at 512 pages.
        const QString text(250, QChar(0x3B1));
        for (int round = 0; round < 6; ++round) {
            change([&](Transaction &transaction) {
                for (int i = 0; i < 400; ++i) {
                    transaction.insert("tblOne", {Null{}, text});
                    transaction.insert("tblTwo", {Null{}, text});
                }
            });
            QCOMPARE(judges::faults(path_), QString());
        }
        QVERIFY(QFileInfo(path_).size() > 600 * bytes::PageSize);
    }

    void encodedFilesStayEncoded()
    {
        judges::write(path_, bytes::encoded(judges::fixture("PestMon.mdb"), 0xABCD1234));
        database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
        change([](Transaction &transaction) {
            transaction.createTable({"tblNew", {{"Name", ColumnType::Text, 50}}, {}});
            transaction.insert("tblNew", {QString("somewhere in the clear")});
        });
        QFile file(path_);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("somewhere"));
    }

    void aFileThatChangedMeanwhileIsNotWritten()
    {
        openFixture("PestMon.mdb");
        QByteArray other = judges::fixture("PestMon.mdb");
        bytes::setNumber<quint16>(other, 0, 0xE02, 0x0155);
        judges::write(path_, other);
        QVERIFY(errorOf(ErrorNumber::ChangedMeanwhile, [&] { Transaction transaction(*database_); }).contains(path_));
        QVERIFY(database_->refresh());
        change([](Transaction &transaction) { transaction.insert("tblPMTempPest", {Null{}, 1}); });
        // A pair of commit bytes that says "writing", without a user: a program was stopped while writing.
        database_.reset();
        bytes::setNumber<quint16>(other, 0, 0xE04, 0);
        judges::write(path_, other);
        database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
        QVERIFY(!database_->isSettled());
        QVERIFY(errorOf(ErrorNumber::NeedsRepair, [&] { Transaction transaction(*database_); }).contains("repair"));
        QCOMPARE(rows("tblPMData").size(), std::size_t{281});
    }

    void anIndexOfManyLevelsGrowsAndEmpties()
    {
        openNew();
        change([](Transaction &transaction) {
            transaction.createTable({"tblDeep",
                                     {{"A", ColumnType::Double},
                                      {"B", ColumnType::Double},
                                      {"C", ColumnType::Double},
                                      {"D", ColumnType::Date},
                                      {"N", ColumnType::Long}},
                                     {{"PrimaryKey", {"A", "B", "C", "D"}, true, true}, {"Same", {"N"}}, {"Mixed", {"D", "N"}}}});
        });
        constexpr int Count = 15000;
        const auto rowOf = [](int i) {
            const int mixed = i * 7919 % Count;
            return std::vector<Value>{mixed % 2 ? -1.5 : 1.5, mixed * 0.25, 3.0, Date{mixed / 3.0}, i % 5};
        };
        change([&](Transaction &transaction) {
            for (int i = 0; i < Count; ++i) {
                transaction.insert("tblDeep", rowOf(i));
            }
        });
        const auto isValid = [&] { QCOMPARE(judges::faults(path_), QString()); };
        isValid();
        for (int part = 0; part < 4; ++part) {
            change([&](Transaction &transaction) {
                for (int i = part; i < Count; i += 4) {
                    std::vector<Value> key = rowOf(i);
                    key.pop_back();
                    QVERIFY(transaction.remove("tblDeep", *transaction.findByKey("tblDeep", key)));
                }
            });
            isValid();
        }
        for (const jet::IndexDefinition &index : database_->definition("tblDeep").indexes) {
            QCOMPARE(index.distinctKeys, 0U);
        }
        const qint64 size = QFileInfo(path_).size();
        change([&](Transaction &transaction) {
            for (int i = 0; i < Count; ++i) {
                transaction.insert("tblDeep", rowOf(i));
            }
        });
        QCOMPARE(database_->definition("tblDeep").primaryKey()->distinctKeys, static_cast<quint32>(Count));
        QVERIFY2(QFileInfo(path_).size() < size + size / 20, qPrintable(QString::number(QFileInfo(path_).size() - size)));
    }

    void pagesFreedInOneSessionServeTheNext()
    {
        openNew();
        change([](Transaction &transaction) {
            transaction.createTable({"tblYears",
                                     {{"ID", ColumnType::Long}, {"Day", ColumnType::Date}},
                                     {{"PrimaryKey", {"ID"}, true, true}, {"Day", {"Day"}}}});
        });
        constexpr int Count = 4000;
        qint64 size = 0;
        // Keys that never come back, as autonumbers do not.
        for (int session = 0; session < 6; ++session) {
            database_.reset();
            database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
            const int first = session * Count;
            change([&](Transaction &transaction) {
                for (int i = first; i < first + Count; ++i) {
                    transaction.insert("tblYears", {i, Date{i / 7.0}});
                }
            });
            change([&](Transaction &transaction) {
                for (int i = first; i < first + Count; ++i) {
                    transaction.remove("tblYears", *transaction.findByKey("tblYears", {i}));
                }
            });
            QCOMPARE(judges::faults(path_), QString());
            size = session == 1 ? QFileInfo(path_).size() : size;
        }
        QVERIFY2(QFileInfo(path_).size() <= size, qPrintable(QString::number(QFileInfo(path_).size() - size)));
    }
};

QTEST_GUILESS_MAIN(TransactionTest)
#include "TransactionTest.moc"
