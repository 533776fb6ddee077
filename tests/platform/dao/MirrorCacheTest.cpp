// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/MirrorCache.h"
#include "platform/dao/Workspace.h"
#include "platform/jet/DatabaseMaker.h"
#include "platform/jet/Transaction.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using jet::ColumnType;

/// The stored mirror of a Jet file that is large enough for one.
class MirrorCacheTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int Rows = 20000;
    static constexpr char Password[] = "krelpon";

    template <typename Body> void change(Body &&body) const
    {
        const auto file = jet::Database::open(path_, Password, jet::Access::ReadWrite);
        jet::Transaction transaction(*file);
        body(transaction);
        transaction.commit();
    }

    QFileInfoList stored() const
    {
        const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
        return QDir(cache + "/farm-monitoring").entryInfoList(QDir::Files | QDir::Hidden);
    }

    /// What a query finds in the row with a key.
    QString note(int key) const
    {
        const auto database = dao::Workspace::OpenDatabase(path_, false, true, QStringLiteral(";pwd=") + Password);
        dao::Recordset rows = database->OpenRecordset(QString("Select Note from tblNotes where ID = %1").arg(key));
        return rows.Eof() ? QString("none") : rows.text(0).left(20);
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath("Farm.mdb");

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CACHE_HOME", folder_.filePath("cache").toUtf8());
#ifdef Q_OS_WIN
        QStandardPaths::setTestModeEnabled(true);
#endif
        jet::createDatabase(path_, Password);
        change([](jet::Transaction &transaction) {
            transaction.createTable(
                {"tblNotes",
                 {{"ID", ColumnType::Long, 0, true}, {"Note", ColumnType::Text, 255}, {"More", ColumnType::Text, 255}},
                 {{"PrimaryKey", {"ID"}, true, true}}});
            const QString filler(230, QChar(0x3B1));
            for (int i = 1; i <= Rows; ++i) {
                transaction.insert("tblNotes", {jet::Null{}, QString("note %1 ").arg(i) + filler, filler});
            }
        });
        QVERIFY(QFileInfo(path_).size() > dao::MirrorCache::SmallestFile);
    }

    void aStoredMirrorIsUsedUntilTheFileChanges()
    {
        QVERIFY(note(77).startsWith("note 77 "));
        QCOMPARE(stored().size(), 1);
        const QFileInfo first = stored().first();
#ifndef Q_OS_WIN
        QCOMPARE(first.permissions() & ~(QFile::ReadUser | QFile::WriteUser), QFile::ReadOwner | QFile::WriteOwner);
        const QFileInfo folder(first.path());
        QVERIFY(!(folder.permissions() & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther)));
#endif
        QVERIFY(note(77).startsWith("note 77 "));
        QCOMPARE(stored().first().fileName(), first.fileName());
        QCOMPARE(stored().first().lastModified(), first.lastModified());
        // One byte of one row.
        change([](jet::Transaction &transaction) {
            transaction.update("tblNotes", *transaction.findByKey("tblNotes", {77}), {{1, QString("changed")}});
        });
        QCOMPARE(note(77), QString("changed"));
        QCOMPARE(stored().size(), 1);
        QVERIFY(stored().first().fileName() != first.fileName());
    }

    void writingGoesOnFromAStoredMirror()
    {
        note(1);
        {
            const auto database = dao::Workspace::OpenDatabase(path_, false, false, QStringLiteral(";pwd=") + Password);
            dao::Recordset rows = database->OpenRecordset("Select * from tblNotes where ID = 5", dao::RecordsetType::Dynaset);
            rows.AddNew();
            QCOMPARE(rows.longValue(0), Rows + 1);
            rows.set(1, QString("added"));
            rows.Update();
            QCOMPARE(database->Execute("Delete from tblNotes where ID = 5"), 1);
        }
        QCOMPARE(note(Rows + 1), QString("added"));
        QCOMPARE(note(5), QString("none"));
    }

    void whatIsStoredIsNotTrusted_data()
    {
        QTest::addColumn<qint64>("place");
        QTest::newRow("a changed row") << qint64{5000000};
        QTest::newRow("its beginning") << qint64{20};
    }

    void whatIsStoredIsNotTrusted()
    {
        QFETCH(qint64, place);
        note(1);
        QFile file(stored().first().filePath());
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(place));
        file.write("damage");
        file.close();
        QVERIFY(note(9000).startsWith("note 9000 "));
        QCOMPARE(stored().size(), 1);
        // The password is asked for all the same.
        QVERIFY_THROWS_EXCEPTION(dao::DataError, dao::Workspace::OpenDatabase(path_, false, true, ";pwd=other"));
    }
};

QTEST_GUILESS_MAIN(MirrorCacheTest)
#include "MirrorCacheTest.moc"
