// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Workspace.h"

#include "ThingsFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace dao;

/// Jet files behind the object layer: what the mirror holds, and what happens when another program changes the file.
class JetStorageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void queriesJoinAndSortAsElsewhere();
    void definitionsAreThoseOfTheFile();
    void aForeignChangeIsSeenByTheNextQuery();
    void aHalfWrittenStateLeavesTheLastGoodOne();
    void aDamagedTableLeavesTheOthersReadable();
    void openingChangesNothing();
    void otherFilesAreRefused();

private:
    std::unique_ptr<Database> open(const QString &name = QStringLiteral("ZN4.mdb"))
    {
        return Workspace::OpenDatabase(path(name), false, true, QStringLiteral(";pwd=krelpon"));
    }
    QString path(const QString &name = QStringLiteral("ZN4.mdb")) const { return folder_->filePath(name); }
    QByteArray bytes(const QString &name = QStringLiteral("ZN4.mdb")) const;
    void put(const QByteArray &bytes, const QString &name = QStringLiteral("ZN4.mdb")) const;
    static QStringList column(Database &database, const QString &sql);

    std::unique_ptr<QTemporaryDir> folder_;
    QStringList notices_;
};

void JetStorageTest::init()
{
    folder_ = std::make_unique<QTemporaryDir>();
    for (const char *name : {"ZN4.mdb", "PestMon.mdb", "ZN4_Spray.mdb"}) {
        QVERIFY(QFile::copy(QStringLiteral(JET_FIXTURES "/") + QLatin1String(name), path(QLatin1String(name))));
    }
    notices_.clear();
    Workspace::setNoticeHandler([this](const QString &sentence) { notices_.append(sentence); });
}

void JetStorageTest::cleanup()
{
    Workspace::setNoticeHandler({});
}

QByteArray JetStorageTest::bytes(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void JetStorageTest::put(const QByteArray &bytes, const QString &name) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    // Clocks of file systems are coarse.
    file.setFileTime(QDateTime::currentDateTime().addSecs(static_cast<qint64>(bytes.size() % 1000) + 10),
                     QFileDevice::FileModificationTime);
}

QStringList JetStorageTest::column(Database &database, const QString &sql)
{
    QStringList values;
    for (Recordset rows = database.OpenRecordset(sql); !rows.Eof(); rows.MoveNext()) {
        values.append(rows.isNull(0) ? QStringLiteral("NULL") : rows.text(0));
    }
    return values;
}

void JetStorageTest::queriesJoinAndSortAsElsewhere()
{
    const auto main = open();
    QCOMPARE(column(*main, QStringLiteral("Select WNickName from tblWorker order by WorkerID")),
             (QStringList{QStringLiteral("Thabo"), QStringLiteral("NULL"), QStringLiteral("Renée"), QStringLiteral("O'Reilly")}));
    QCOMPARE(column(*main, QStringLiteral("Select Block from tblBlock where active <> 0 order by Block asc")).first(),
             QStringLiteral("élan"));
    QCOMPARE(column(*main,
                    QStringLiteral("Select tblBlockPlant.PBlock from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = "
                                   "tblBlock.BlockID and tblBlockPlant.PBActive = True"))
                 .size(),
             column(*main,
                    QStringLiteral("Select PBlock from tblBlockPlant where PBActive = True and BlockID in (Select BlockID "
                                   "from tblBlock)"))
                 .size());
    const auto pest = open(QStringLiteral("PestMon.mdb"));
    QCOMPARE(pest->OpenRecordset(QStringLiteral("Select * from tblPMData")).RecordCount(), 281);
    // A table without a key.
    QCOMPARE(pest->OpenRecordset(QStringLiteral("Select * from tblPMBlockTrans")).RecordCount(), 15);
    Recordset dates = pest->OpenRecordset(QStringLiteral("Select * from tblPMTrans where PMTransCom = True order by PMTransID"));
    QVERIFY(dates.date("PMTransDateCom").has_value());
}

void JetStorageTest::definitionsAreThoseOfTheFile()
{
    const auto pest = open(QStringLiteral("PestMon.mdb"));
    const TableDef table = pest->tableDef(QStringLiteral("tblpmtrans"));
    QCOMPARE(table.Name(), QStringLiteral("tblPMTrans"));
    QVERIFY(table.Fields().front().autoIncrement);
    QVERIFY(table.findField(u"PMRepeat") == nullptr);
    QCOMPARE(table.findField(u"PMNotes")->size, 255);
    QVERIFY(pest->isMirrored());
    // An index of the mirror needs no write to the file.
    pest->Append(QStringLiteral("tblPMTrans"), Index{QStringLiteral("Day"), {QStringLiteral("PMTransDate")}, false, false});
    const std::vector<Index> indexes = pest->tableDef(QStringLiteral("tblPMTrans")).Indexes();
    QVERIFY(std::any_of(indexes.begin(), indexes.end(), [](const Index &index) { return index.name == QLatin1String("Day"); }));
}

void JetStorageTest::aForeignChangeIsSeenByTheNextQuery()
{
    const auto main = open();
    const QString sql = QStringLiteral("Select WNickName from tblWorker order by WorkerID");
    Recordset before = main->OpenRecordset(sql);
    QByteArray changed = bytes();
    QVERIFY(changed.contains("Thabo"));
    put(changed.replace("Thabo", "Tembi"));
    QCOMPARE(column(*main, sql).first(), QStringLiteral("Tembi"));
    QCOMPARE(before.text(0), QStringLiteral("Thabo"));
    QVERIFY(notices_.isEmpty());
}

void JetStorageTest::aHalfWrittenStateLeavesTheLastGoodOne()
{
    const auto main = open();
    const QString sql = QStringLiteral("Select WNickName from tblWorker order by WorkerID");
    const QByteArray good = bytes();
    put(good.left(good.size() / 2));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(column(*main, sql).first(), QStringLiteral("Thabo"));
    QVERIFY2(clock.elapsed() >= 1900 && clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(notices_.size(), 1);
    QVERIFY2(notices_.first().contains(QLatin1String("ZN4.mdb")), qPrintable(notices_.first()));
    // The same state is not waited for again.
    clock.restart();
    QCOMPARE(column(*main, sql).size(), 4);
    QVERIFY(clock.elapsed() < 500);
    put(QByteArray(good).replace("Thabo", "Tembi"));
    QCOMPARE(column(*main, sql).first(), QStringLiteral("Tembi"));
}

void JetStorageTest::aDamagedTableLeavesTheOthersReadable()
{
    // The count of rows in the definition of tblPMData, which holds 281.
    QByteArray damaged = bytes(QStringLiteral("PestMon.mdb"));
    bool found = false;
    for (qsizetype page = 0; page + 4096 <= damaged.size() && !found; page += 4096) {
        if (damaged[page] == 2 && damaged.mid(page + 16, 4) == QByteArray("\x19\x01\x00\x00", 4)) {
            damaged[page + 16] = '\x1a';
            found = true;
        }
    }
    QVERIFY(found);
    put(damaged, QStringLiteral("PestMon.mdb"));
    const auto pest = open(QStringLiteral("PestMon.mdb"));
    QCOMPARE(pest->OpenRecordset(QStringLiteral("Select * from tblPMTrans")).RecordCount(), 6);
    try {
        pest->OpenRecordset(QStringLiteral("Select * from tblPMData"));
        QFAIL("a table that does not prove itself was read");
    } catch (const DataError &error) {
        QCOMPARE(error.number(), static_cast<int>(DataErrorNumber::Damaged));
        QVERIFY2(error.description().contains(QLatin1String("tblPMData")), qPrintable(error.description()));
    }
    QCOMPARE(pest->checkPages().size(), 1);
}

void JetStorageTest::openingChangesNothing()
{
    const QByteArray before = bytes();
    for (int start = 0; start < 20; ++start) {
        const auto main = open();
        QCOMPARE(main->OpenRecordset(QStringLiteral("Select * from tblFarms")).RecordCount(), 2);
        QCOMPARE(errorOf([&] { main->Execute(QStringLiteral("Delete from tblFarms")); }), 3027);
        QCOMPARE(main->OpenRecordset(QStringLiteral("Select * from tblFarms")).RecordCount(), 2);
    }
    QVERIFY(bytes() == before);
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

void JetStorageTest::otherFilesAreRefused()
{
    QCOMPARE(errorOf([this] { Workspace::OpenDatabase(path(), false, true, QStringLiteral(";pwd=other")); }), 3031);
    QByteArray older = bytes();
    older[20] = 0;
    put(older);
    QCOMPARE(errorOf([this] { open(); }), 3343);
    put(older.left(10));
    QVERIFY(errorOf([this] { open(); }) != 0);
}

QTEST_GUILESS_MAIN(JetStorageTest)
#include "JetStorageTest.moc"
