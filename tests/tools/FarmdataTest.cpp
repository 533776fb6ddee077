// SPDX-License-Identifier: GPL-3.0-or-later
#include "FarmdataProcess.h"

#include "common/FarmLock.h"
#include "pestmon/DamagedFile.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "support/HostileJournal.h"
#include "support/TemporaryFarm.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QtTest>

using store::DatabaseFile;

namespace
{

QByteArray fingerprint(const QString &folder)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        hash.addData(info.fileName().toUtf8());
        if (file.open(QIODevice::ReadOnly)) {
            hash.addData(&file);
        }
    }
    return hash.result();
}

/// The demonstration farm, made once.
class DemoFarm
{
public:
    DemoFarm() : run(farmdata({"demo", folder.filePath("Databases")})) {}

    QStringList rows(DatabaseFile file, const QString &sql) const
    {
        const auto database = dao::Workspace::OpenDatabase(folder.filePath("Databases/") + store::fileName(file), false, true,
                                                           store::connectText());
        QStringList lines;
        for (dao::Recordset found = database->OpenRecordset(sql); !found.Eof(); found.MoveNext()) {
            QStringList cells;
            for (int i = 0; i < found.fieldCount(); ++i) {
                cells.append(found.isNull(i) ? QString("NULL") : QString::number(found.number(i)));
            }
            lines.append(cells.join('|'));
        }
        return lines;
    }

    QTemporaryDir folder;
    FarmdataRun run;
};

} // namespace

/// The tool as it is called from a shell.
class FarmdataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWrongCallSaysHowToCall_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << QStringList{} << 2 << "--help";
        QTest::newRow("unknown") << QStringList{"erase", "x"} << 2 << "no such command";
        QTest::newRow("too few") << QStringList{"restore", "x"} << 2 << "restore DIR FILE";
        QTest::newRow("help") << QStringList{"--help"} << 0 << "import FROM DIR";
    }

    void aWrongCallSaysHowToCall()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, expected);
        const FarmdataRun run = farmdata(arguments);
        QCOMPARE(run.status, status);
        QVERIFY((status == 0 ? run.output : run.errors).contains(expected));
    }

    void createMakesWholeFilesAndNeverOverwrites()
    {
        const QTemporaryDir folder;
        const QString databases = folder.filePath("new/Databases");
        QCOMPARE(farmdata({"create", databases}).status, 0);
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            const auto database =
                dao::Workspace::OpenDatabase(databases + '/' + store::fileName(file), false, true, store::connectText());
#ifndef Q_OS_WIN
            // A private folder has private files; on Windows a file has the permissions of its folder.
            QCOMPARE(QFile::permissions(database->Name())
                         & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                     QFile::Permissions());
#endif
            for (const store::SchemaTable &table : store::schema()) {
                QCOMPARE(database->tableNames().contains(table.name), table.file == file);
            }
        }
        const auto pest = dao::Workspace::OpenDatabase(databases + "/PestMon.mdb", false, true, store::connectText());
        dao::Recordset methods = pest->OpenRecordset("Select * from tblPMMethod order by PMMethodID");
        QCOMPARE(methods.longValue(0), 1);
        QCOMPARE(methods.text(1), QString("Count"));
        methods.MoveLast();
        QCOMPARE(methods.longValue(0), 2);
        QCOMPARE(methods.text(1), QString("Yes/No"));

        QFile::remove(databases + "/PestMon.mdb");
        const QByteArray before = fingerprint(databases);
        for (const char *command : {"create", "demo"}) {
            const FarmdataRun run = farmdata({command, databases});
            QCOMPARE(run.status, 1);
            QVERIFY(run.errors.contains("exists already"));
        }
        QCOMPARE(fingerprint(databases), before);
        QFile inTheWay(folder.filePath("file"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        QCOMPARE(farmdata({"create", inTheWay.fileName()}).status, 1);
    }

    void theDemonstrationFarmHoldsTogether()
    {
        const DemoFarm demo;
        QVERIFY2(demo.run.status == 0, qPrintable(demo.run.errors));
        const auto one = [&](DatabaseFile file, const QString &sql) { return demo.rows(file, sql).value(0); };
        QCOMPARE(one(DatabaseFile::Main, "Select Count(*) from tblFarms"), QString("3"));
        QCOMPARE(one(DatabaseFile::Main, "Select Count(*) from tblFarms where isactive = False"), QString("1"));
        QCOMPARE(one(DatabaseFile::Main, "Select Count(*) from tblBlock"), QString("30"));
        QCOMPARE(one(DatabaseFile::Main, "Select Count(*) from tblBlockPlant"), QString("70"));
        QCOMPARE(one(DatabaseFile::Main, "Select Count(*) from tblWorker"), QString("12"));
        QCOMPARE(one(DatabaseFile::Spray, "Select Count(*) from tblCTarget"), QString("45"));
        QCOMPARE(one(DatabaseFile::Pest, "Select Count(*) from tblPMData"),
                 one(DatabaseFile::Pest, "Select Count(*) from tblPMDataMax"));
        for (const char *table : {"tblLeaveAnalysis", "tblFruitAnalysis", "tblSoilBasic", "tblSoilMicro", "tblSoilExtraction"}) {
            QVERIFY(one(DatabaseFile::Pest, QString("Select Count(*) from %1").arg(table)).toInt() > 50);
        }
        // The last instruction is open, and open ones are few.
        const int open = one(DatabaseFile::Pest, "Select Count(*) from tblPMTrans where PMTransCom = False").toInt();
        const int all = one(DatabaseFile::Pest, "Select Count(*) from tblPMTrans").toInt();
        QVERIFY(all > 200 && open >= 1 && open < 12);
        // The total rows add up to their points, and none but the first of a pair holds a value.
        const QStringList points =
            demo.rows(DatabaseFile::Pest,
                      "Select PMTransID, BlockID, CTargetID, Sum(PMCount), Sum(PMCountUnder), "
                      "Sum(PMCountUpper), Sum(PMYes) from tblPMData group by PMTransID, BlockID, CTargetID "
                      "order by PMTransID, BlockID, CTargetID");
        QSet<QString> seen;
        QHash<QString, QString> firstTotals;
        for (const QString &line :
             demo.rows(DatabaseFile::Pest,
                       "Select PMTransID, BlockID, CTargetID, PMCountMax, PMCountUnderMax, PMCountUpperMax, "
                       "PMYesMax from tblPMDataMax order by PMDataMaxID")) {
            const QString keys = line.section('|', 0, 2);
            const QString values = line.section('|', 3);
            if (!seen.contains(keys)) {
                firstTotals.insert(keys, values);
            } else if (values != "0|0|0|0") {
                QFAIL(qPrintable("a second total holds a value: " + line));
            }
            seen.insert(keys);
        }
        QCOMPARE(firstTotals.size(), points.size());
        for (const QString &line : points) {
            QStringList cells = line.split('|');
            cells[6] = QString::number(-cells[6].toInt()); // True is -1
            QCOMPARE(firstTotals.value(cells.mid(0, 3).join('|')), cells.mid(3).join('|'));
        }
    }

    void checkReportsAndChangesNothing()
    {
        TemporaryFarm farm;
        const int block = farm.addBlock({.farm = farm.addFarm("Môreson")});
        farm.addTarget("Ants");
        farm.addInstruction({.blocks = {{block, 3}}, .targets = {1}});
        farm.add(u"tblPMData", {{u"PMTransID", 1}, {u"BlockID", block}, {u"CTargetID", 1}, {u"PMBPunt", 2}});
        farm.add(u"tblPMBlockTrans", {{u"PMTransID", 1}, {u"BlockID", 55}});
        farm.add(u"tblPMData", {{u"PMTransID", 9}, {u"BlockID", block}});
        farm.close();
        const QByteArray before = fingerprint(farm.databasesPath());
        FarmdataRun run = farmdata({"check", farm.databasesPath()});
        QVERIFY2(run.status == 0, qPrintable(run.output));
        QVERIFY(run.output.contains("rows of tblPMData whose instruction is gone: 1"));
        QVERIFY(run.output.contains("rows of tblPMBlockTrans whose block is gone: 1"));
        QVERIFY(run.output.contains("as saving an instruction again makes them: 1"));
        QVERIFY(run.output.contains("as every instruction has them: 2"));
        QCOMPARE(fingerprint(farm.databasesPath()), before);

        QFile pest(farm.filePath(DatabaseFile::Pest));
        QVERIFY(pest.open(QIODevice::ReadWrite));
        QVERIFY(pest.resize(pest.size() - 5000));
        pest.close();
        QFile::remove(farm.filePath(DatabaseFile::Spray));
        run = farmdata({"check", farm.databasesPath()});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output.count("FAULT"), 2);
        QVERIFY(run.output.contains("PestMon.mdb") && run.output.contains("ZN4_Spray.mdb"));
    }

    void checkReadsACopyWhileTheFarmIsOpen()
    {
        TemporaryFarm farm;
        const FarmLock::Attempt running = FarmLock::tryLock(farm.databasesPath());
        QVERIFY(running.lock);
        const QByteArray before = fingerprint(farm.databasesPath());
        const FarmdataRun run = farmdata({"check", farm.databasesPath()});
        QVERIFY2(run.status == 0, qPrintable(run.output));
        QCOMPARE(run.output.count("a copy of the file is checked"), 3);
        QCOMPARE(fingerprint(farm.databasesPath()), before);
    }

    void checkListsValuesThatTheirFieldsCannotHold()
    {
        TemporaryFarm farm;
        farm.addInstruction({});
        farm.addInstruction({});
        farm.close();
        QVERIFY(changeFile(farm.filePath(DatabaseFile::Pest),
                           "UPDATE tblPMTrans SET PMTransDateCom = 'soon' WHERE PMTransID = 2;"
                           "UPDATE tblPMTrans SET PMTransWeek = 99999 WHERE PMTransID = 1"));
        const FarmdataRun run = farmdata({"check", farm.databasesPath()});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output.count("FAULT"), 2);
        QVERIFY(run.output.contains("tblPMTrans, row 2: the field PMTransDateCom cannot hold the text soon"));
        QVERIFY(run.output.contains("tblPMTrans, row 1: the field PMTransWeek cannot hold the integer 99999"));
    }

    void checkCountsDuplicateRowsAndRowsWithoutInstruction()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 2}}, .targets = {1, 2}});
        // A further zero row of a point that has counts, one of a point that has none, and one that is no zero row.
        farm.session.dbPest->Execute("Update tblPMData set PMCount = 5 where PMDataID = 1");
        for (const char *point : {"1, 1, 0", "2, 1, 0", "2, 1, 7"}) {
            farm.session.dbPest->Execute(QString("Insert into tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount) "
                                                 "Values (1, 1, %1)")
                                             .arg(point));
        }
        farm.session.dbPest->Execute("Insert into tblPMTarTrans (PMTransID, CTargetID) Values (99, 1)");
        farm.session.dbPest->Execute("Insert into tblPMTarTrans (PMTransID, CTargetID) Values (99, 2)");
        farm.close();
        const QString jet = farm.appPath() + "/Jet";
        QCOMPARE(farmdata({"export", "--jet", farm.databasesPath(), jet}).status, 0);
        for (const QString &folder : {farm.databasesPath(), jet}) {
            const FarmdataRun run = farmdata({"check", folder});
            QVERIFY2(run.status == 0, qPrintable(run.output));
            for (const char *note : {"duplicate zero rows of tblPMData, as saving an instruction again makes them: 2\n",
                                     "further zero rows of tblPMDataMax, as every instruction has them: 2\n",
                                     "rows of tblPMTarTrans whose instruction is gone: 2\n"}) {
                QVERIFY2(run.output.contains(note), qPrintable(run.output));
            }
        }
    }

    void aFileLeftInTheMiddleOfAWriteIsSound()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 3}}, .targets = {1}});
        const QString pest = farm.filePath(DatabaseFile::Pest);
        {
            // What a program killed here would leave behind.
            dao::CommitScope scope(*farm.session.dbPest);
            farm.session.dbPest->Execute("DELETE from tblPMData");
            QVERIFY(QFile::copy(pest, pest + ".killed") && QFile::copy(pest + "-journal", pest + ".killed-journal"));
            scope.rollback();
        }
        // SQLite writes the number of pages into its journal before it changes the file.
        QFile journal(pest + ".killed-journal");
        QVERIFY(journal.open(QIODevice::ReadWrite));
        journal.write(QByteArray::fromHex("d9d505f920a163d7ffffffff"));
        journal.close();
        farm.close();
        QVERIFY(QFile::remove(pest) && QFile::rename(pest + ".killed", pest)
                && QFile::rename(pest + ".killed-journal", pest + "-journal"));
        const QByteArray before = fingerprint(farm.databasesPath());
        const FarmdataRun run = farmdata({"check", farm.databasesPath()});
        QVERIFY2(run.status == 0, qPrintable(run.output));
        QVERIFY(run.output.contains("was left in the middle of a write"));
        QCOMPARE(fingerprint(farm.databasesPath()), before);
        QCOMPARE(farmdata({"backup", farm.databasesPath()}).status, 0);
        farm.open();
        QCOMPARE(farm.count("tblPMData"), 3);
    }

    void aHostileFolderHarmsNoOtherFile()
    {
        TemporaryFarm farm;
        QCOMPARE(farmdata({"backup", farm.databasesPath()}).status, 0);
        const QString copy = QDir(farm.databasesPath() + "/Backups").entryList({"*.mdb"}, QDir::Files).front();
        farm.close();
        QFile letter(farm.appPath() + "/letter.txt");
        QVERIFY(letter.open(QIODevice::WriteOnly));
        QVERIFY(addHostileJournal(farm.filePath(DatabaseFile::Pest), letter.fileName()));
        const QByteArray before = fingerprint(farm.databasesPath());
        for (const QStringList &call :
             {QStringList{"check", farm.databasesPath()}, QStringList{"backup", farm.databasesPath()}}) {
            const FarmdataRun run = farmdata(call);
            QCOMPARE(run.status, 1);
            QVERIFY2((run.output + run.errors).contains("names the file " + letter.fileName()), qPrintable(run.errors));
            QCOMPARE(fingerprint(farm.databasesPath()), before);
        }
        // A restore moves the journal away with the replaced file.
        QVERIFY2(farmdata({"restore", farm.databasesPath(), copy}).status == 0, "the copy is sound");
        QVERIFY(!QFile::exists(farm.filePath(DatabaseFile::Pest) + "-journal"));
        QVERIFY(letter.exists());
    }

    void damageInsideIsFoundAndACopyRestoresIt()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
        const QStringList rows = farm.rows(DatabaseFile::Pest, "Select * from tblPMData");
        farm.close();
        QCOMPARE(farmdata({"backup", farm.databasesPath()}).status, 0);
        const QString folder = farm.databasesPath() + "/Backups/";
        const QString copy = QDir(folder).entryList({"*.mdb"}, QDir::Files).front();
        // The length and the header stay as they are; what is lost belongs to the rows or their indexes.
        const auto damage = [](const QString &path) {
            QFile file(path);
            const qint64 page = 4096;
            return file.open(QIODevice::ReadWrite) && file.seek(file.size() / page / 2 * page)
                && file.write(QByteArray(page, '\x2a')) == page;
        };
        QVERIFY(QFile::copy(folder + copy, folder + "second.mdb") && damage(folder + "second.mdb"));
        QVERIFY(damage(farm.filePath(DatabaseFile::Pest)));
        FarmdataRun run = farmdata({"check", farm.databasesPath()});
        QCOMPARE(run.status, 1);
        QVERIFY(run.output.contains("FAULT"));
        QVERIFY(run.output.contains("Faults were found."));
        run = farmdata({"backup", farm.databasesPath()});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("PestMon.mdb is damaged"), qPrintable(run.errors));

        run = farmdata({"restore", farm.databasesPath(), "second.mdb"});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("second.mdb is damaged"), qPrintable(run.errors));
        QCOMPARE(farmdata({"restore", farm.databasesPath(), copy}).status, 0);
        QCOMPARE(farmdata({"check", farm.databasesPath()}).status, 0);
        farm.open();
        QCOMPARE(farm.rows(DatabaseFile::Pest, "Select * from tblPMData"), rows);
    }

    void aCopyIsMadeAndRestoredUnlessTheProgramRuns()
    {
        TemporaryFarm farm;
        farm.addInstruction({});
        FarmdataRun run = farmdata({"backup", farm.databasesPath()});
        QVERIFY2(run.status == 0, qPrintable(run.errors));
        farm.addInstruction({});
        farm.close();
        const QStringList copies = QDir(farm.databasesPath() + "/Backups").entryList({"*.mdb"}, QDir::Files);
        QCOMPARE(copies.size(), 1);
        QByteArray before;
        {
            const FarmLock::Attempt running = FarmLock::tryLock(farm.databasesPath());
            QVERIFY(running.lock);
            run = farmdata({"restore", farm.databasesPath(), copies.front()});
            QCOMPARE(run.status, 1);
            QVERIFY2(run.errors.contains(QSysInfo::machineHostName() + " since"), qPrintable(run.errors));
        }
        before = fingerprint(farm.databasesPath());
        run = farmdata({"restore", farm.databasesPath(), farm.filePath(DatabaseFile::Main)});
        QCOMPARE(run.status, 1);
        QVERIFY(run.errors.contains("is not a copy of PestMon.mdb"));
        QCOMPARE(fingerprint(farm.databasesPath()), before);

        run = farmdata({"restore", farm.databasesPath(), copies.front()});
        QVERIFY2(run.status == 0, qPrintable(run.errors));
        farm.open();
        QCOMPARE(farm.count("tblPMTrans"), 1);
        QCOMPARE(QDir(farm.databasesPath() + "/Backups").entryList({"PestMon-replaced-*"}, QDir::Files).size(), 1);
    }
};

QTEST_GUILESS_MAIN(FarmdataTest)
#include "FarmdataTest.moc"
