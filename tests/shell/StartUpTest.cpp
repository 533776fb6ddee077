// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/FarmLock.h"
#include "fakes/QueuedDialogs.h"
#include "platform/basic/Clock.h"
#include "platform/basic/TextFiles.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "shell/MDI_Monitoring.h"
#include "store/BackupFolder.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using store::DatabaseFile;

/// The load of the main window on complete, incomplete and damaged folders.
class StartUpTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsOnTheFirstActiveFarm();
    void withoutActiveFarmTheKeyStaysAsRead_data();
    void withoutActiveFarmTheKeyStaysAsRead();
    void lettersInAKeyEndTheStart();
    void otherCopyIsRefusedFirst();
    void anotherComputerMayViewTheFarm();
    void aDeclinedViewOpensNothing();
    void theLockOfADeadComputerIsTakenOver();
    void unopenedFilesEndTheStart_data();
    void unopenedFilesEndTheStart();
    void withoutTheSprayFileTheListIsEmpty();
    void bringsThePestFileUpToDate();
    void copyIsMadeOnceTheWindowIsOpen();
    void copyIsMadeWithTheFirstWriteOfTheNextDay();
    void failedCopyIsReportedAndNotFatal();
    void missingTemplatesAreNotFatal();
    void jetFilesAreUsedAsTheyAre();
    void theMasterFilesAreNeverWritten();

private:
    struct Start {
        QueuedDialogs dialogs;
        MDI_Monitoring window{dialogs, {}};
        std::optional<MDI_Monitoring::Load> load;
        std::optional<basic::RunTimeError> error;

        explicit Start(const QString &appPath, std::optional<controls::Answer> answer = {})
        {
            if (answer) {
                dialogs.queueAnswer(*answer);
            }
            try {
                load = window.load(appPath);
            } catch (const basic::RunTimeError &raised) {
                error = raised;
            }
        }
        const SessionContext &session() { return window.session(); }
        const controls::ItemCombo &farms() const { return *window.findChild<controls::ItemCombo *>(QStringLiteral("cmbFarm")); }
    };
    static std::vector<store::Backup> copiesOf(const TemporaryFarm &farm)
    {
        return store::BackupFolder(farm.databasesPath()).copies();
    }
    static void leaveLock(const TemporaryFarm &farm, int secondsAgo);
    /// All files of a folder, by name and content.
    static QByteArray contentsOf(const QString &folder)
    {
        QByteArray all;
        for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name)) {
            QFile file(info.filePath());
            all += info.fileName().toUtf8() + (file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
        }
        return all;
    }
    static void handOff(const TemporaryFarm &farm, const QString &file, const QString &line)
    {
        basic::writeLine(farm.appPath() + u'/' + file, line);
    }
};

void StartUpTest::startsOnTheFirstActiveFarm()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Given up"), false);
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.addFarm(QStringLiteral("Aloe Ridge"));
    farm.close();
    handOff(farm, QStringLiteral("findFARM.txt"), QStringLiteral("Aloe Ridge"));
    handOff(farm, QStringLiteral("FindfarmID.txt"), QStringLiteral("3"));
    handOff(farm, QStringLiteral("Findyear.txt"), QStringLiteral("\"2026, late\""));
    handOff(farm, QStringLiteral("FindyearID.txt"), QStringLiteral("7"));

    Start start(farm.appPath());
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
    QCOMPARE(start.session().CurrentFarmID, 2);
    QCOMPARE(start.session().CurrentFarm, QStringLiteral("Riverbend"));
    QCOMPARE(start.session().CurrentYear, QStringLiteral("2026, late"));
    QCOMPARE(start.session().CurrentYearID, 7);
    QCOMPARE(start.farms().ListCount(), 2);
    QVERIFY(start.session().MenuRestore);
    QVERIFY(start.window.menuIsOpen());
    QCOMPARE(start.window.statusText(), QString());
    QVERIFY(start.dialogs.allAsExpected());
}

void StartUpTest::withoutActiveFarmTheKeyStaysAsRead_data()
{
    QTest::addColumn<bool>("yearKey");
    QTest::addColumn<int>("farmKey");
    QTest::newRow("all files") << true << 3;
    QTest::newRow("no season key: the farm's key goes") << false << 0;
}

void StartUpTest::withoutActiveFarmTheKeyStaysAsRead()
{
    QFETCH(bool, yearKey);
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Given up"), false);
    farm.close();
    handOff(farm, QStringLiteral("Findfarm.txt"), QStringLiteral("Given up"));
    handOff(farm, QStringLiteral("FindfarmID.txt"), QStringLiteral("3"));
    if (yearKey) {
        handOff(farm, QStringLiteral("FindyearID.txt"), QStringLiteral("7"));
    }
    Start start(farm.appPath());
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
    QTEST(start.session().CurrentFarmID, "farmKey");
    QCOMPARE(start.farms().ListCount(), 0);
    QCOMPARE(start.farms().Text(), QStringLiteral("Given up"));
}

void StartUpTest::lettersInAKeyEndTheStart()
{
    TemporaryFarm farm;
    farm.close();
    handOff(farm, QStringLiteral("FindfarmID.txt"), QStringLiteral("three"));
    Start start(farm.appPath());
    QVERIFY(start.error);
    QCOMPARE(start.error->number(), 13);
    QVERIFY(start.error->description().contains(QStringLiteral("FindfarmID.txt"), Qt::CaseInsensitive));
    QVERIFY(!start.session().dbMain.isSet());
}

void StartUpTest::otherCopyIsRefusedFirst()
{
    TemporaryFarm farm;
    farm.close();
    handOff(farm, QStringLiteral("FindfarmID.txt"), QStringLiteral("three"));
    const FarmLock::Attempt other = FarmLock::tryLock(farm.databasesPath());
    QVERIFY(other.lock != nullptr);
    Start start(farm.appPath());
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::OtherCopyRuns));
    QCOMPARE(start.dialogs.shown().size(), std::size_t(1));
    QCOMPARE(start.dialogs.shown().front().text, QStringLiteral("The Pest Monitoring Module is already open!"));
    QCOMPARE(start.dialogs.shown().front().icon, controls::BoxIcon::Critical);
    QVERIFY(!start.session().dbMain.isSet());
}

/// What the program on another computer has written, so many seconds ago.
void StartUpTest::leaveLock(const TemporaryFarm &farm, int secondsAgo)
{
    QFile file(farm.databasesPath() + QStringLiteral("/PestMon.lock"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("computer=OFFICE-2\nuser=anna\nprocess=77\nsince=2026-05-01T08:00:00\nmachine=OFFICE-2/0123\n");
    QVERIFY(file.flush()
            && file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime));
}

void StartUpTest::anotherComputerMayViewTheFarm()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.addPlanting({.block = farm.addBlock({})});
    farm.addInstruction({.completed = QDate(2026, 1, 8)});
    farm.session.dbPest->Execute(QStringLiteral("UPDATE tblPMTrans SET PMTransWeek = 40"));
    farm.close();
    leaveLock(farm, 20);
    const QByteArray before = contentsOf(farm.databasesPath());
    Start start(farm.appPath(), controls::Answer::Yes);
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
    QVERIFY2(start.dialogs.shown().front().text.contains(QStringLiteral("anna on OFFICE-2 since 2026/05/01 08:00")),
             qPrintable(start.dialogs.shown().front().text));
    QCOMPARE(start.session().CurrentFarm, QStringLiteral("Riverbend"));
    QVERIFY(start.window.statusText().contains(QStringLiteral("OFFICE-2")));
    QVERIFY(start.window.findChild<QWidget *>(QStringLiteral("lblViewOnly")));
    auto &store = start.window.objPestMON();
    QCOMPARE(store.Get_PMTrans(1).longValue("PMTransWeek"), 40);
    for (const auto status : {store.New_Add_Pest_for_Instruction(1), store.Delete_PestMonTrans(1)}) {
        QCOMPARE(status, clsPestMONNew::Failed);
        QCOMPARE(store.lastError()->number(), static_cast<int>(dao::DataErrorNumber::ReadOnly));
        QVERIFY(store.lastError()->description().contains(QStringLiteral("only shows")));
    }
    // Not by any other way either.
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, start.session().dbPest->Execute(QStringLiteral("DELETE FROM tblPMTrans")));
    QCOMPARE(contentsOf(farm.databasesPath()), before);
}

void StartUpTest::aDeclinedViewOpensNothing()
{
    TemporaryFarm farm;
    farm.close();
    leaveLock(farm, 20);
    Start start(farm.appPath(), controls::Answer::No);
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::OtherCopyRuns));
    QVERIFY(!start.session().dbMain.isSet());
}

void StartUpTest::theLockOfADeadComputerIsTakenOver()
{
    TemporaryFarm farm;
    farm.close();
    leaveLock(farm, 1000);
    {
        Start start(farm.appPath());
        QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
        QVERIFY(start.dialogs.shown().empty());
        QCOMPARE(start.window.objPestMON().New_Add_Pest_for_Instruction(1), clsPestMONNew::Done);
        // A second program on this computer is refused, also by another path to the folder.
#ifdef Q_OS_WIN
        const QString other = farm.appPath().toUpper() + QStringLiteral("\\.");
#else
        const QString other = farm.appPath() + QStringLiteral("/link");
        QVERIFY(QDir(farm.appPath()).mkdir("link") && QFile::link(farm.databasesPath(), other + "/Databases"));
#endif
        Start second(other);
        QCOMPARE(second.load, std::optional(MDI_Monitoring::Load::OtherCopyRuns));
        QCOMPARE(second.dialogs.shown().front().text, MDI_Monitoring::alreadyOpenText());
    }
    QCOMPARE(QFileInfo(farm.databasesPath() + "/PestMon.lock").size(), 0);
}

void StartUpTest::unopenedFilesEndTheStart_data()
{
    QTest::addColumn<int>("file");
    QTest::addColumn<bool>("damaged");
    QTest::newRow("no main file") << int(DatabaseFile::Main) << false;
    QTest::newRow("damaged main file") << int(DatabaseFile::Main) << true;
    QTest::newRow("no pest file") << int(DatabaseFile::Pest) << false;
    QTest::newRow("damaged pest file") << int(DatabaseFile::Pest) << true;
}

void StartUpTest::unopenedFilesEndTheStart()
{
    QFETCH(int, file);
    QFETCH(bool, damaged);
    TemporaryFarm farm;
    farm.close();
    const QString path = farm.filePath(static_cast<DatabaseFile>(file));
    QVERIFY(QFile::remove(path));
    if (damaged) {
        basic::writeLine(path, QString(5000, u'x'));
    }
    Start start(farm.appPath());
    QVERIFY(start.error);
    QCOMPARE(start.error->number(), 91);
    QVERIFY2(start.error->description().contains(store::fileName(static_cast<DatabaseFile>(file))),
             qPrintable(start.error->description()));
    QVERIFY2(start.dialogs.shown().empty(), "no box before the error itself");
    QVERIFY(!start.session().MenuRestore);
    QCOMPARE(QFile::exists(path), damaged);
}

void StartUpTest::withoutTheSprayFileTheListIsEmpty()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.close();
    QVERIFY(QFile::remove(farm.filePath(DatabaseFile::Spray)));
    Start start(farm.appPath());
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
    QCOMPARE(start.farms().ListCount(), 0);
    QVERIFY(start.session().MenuRestore);
    QVERIFY(start.window.statusText().contains(store::fileName(DatabaseFile::Spray)));
    QVERIFY(start.dialogs.shown().empty());
}

void StartUpTest::bringsThePestFileUpToDate()
{
    TemporaryFarm farm;
    const int block = farm.addBlock({.name = QStringLiteral("Block 1")});
    farm.addPlanting({.name = QStringLiteral("1a"), .block = block});
    farm.addInstruction({.completed = QDate(2026, 1, 8)});
    farm.session.dbPest->Execute(QStringLiteral("UPDATE tblPMTrans SET PMTransWeek = 40"));
    farm.close();
    const QString leftByAKilledRestore = farm.filePath(DatabaseFile::Pest) + QStringLiteral(".restore.new");
    basic::writeLine(leftByAKilledRestore, QStringLiteral("incomplete"));
    {
        Start start(farm.appPath());
        QVERIFY(start.load);
    }
    QVERIFY(!QFile::exists(leftByAKilledRestore));
    farm.open();
    QCOMPARE(farm.rows(DatabaseFile::Pest, QStringLiteral("Select PMTransWeek from tblPMTrans")),
             QStringList{QStringLiteral("2")});
    QCOMPARE(farm.rows(DatabaseFile::Pest, QStringLiteral("Select tPBlock, tBlock from tblTempBlockPlant")),
             QStringList{QStringLiteral("1a|Block 1")});
}

void StartUpTest::copyIsMadeOnceTheWindowIsOpen()
{
    TemporaryFarm farm;
    farm.close();
    {
        Start start(farm.appPath());
        QVERIFY(start.load);
        QVERIFY2(copiesOf(farm).empty(), "the start does not wait for the copy");
        QTRY_COMPARE(copiesOf(farm).size(), std::size_t(1));
        QTRY_VERIFY(!start.window.findChild<QWidget *>(QStringLiteral("lblBackup"))->isVisibleTo(&start.window));
        QCOMPARE(start.window.statusText(), QString());
    }
}

void StartUpTest::copyIsMadeWithTheFirstWriteOfTheNextDay()
{
    TemporaryFarm farm;
    farm.close();
    const QDateTime evening(QDate(2026, 5, 4), QTime(23, 50));
    basic::Clock::stopAt(evening);
    Start start(farm.appPath());
    QTRY_COMPARE(copiesOf(farm).size(), std::size_t(1));
    QTRY_VERIFY(!start.window.findChild<QWidget *>(QStringLiteral("lblBackup"))->isVisibleTo(&start.window));
    basic::Clock::stopAt(evening.addSecs(3600));
    auto &store = start.window.objPestMON();
    store.Get_Farms();
    QTest::qWait(50);
    QCOMPARE(copiesOf(farm).size(), std::size_t(1));
    QCOMPARE(store.New_Add_Pest_for_Instruction(7), clsPestMONNew::Done);
    QTRY_COMPARE(copiesOf(farm).size(), std::size_t(2));
    QCOMPARE(copiesOf(farm).front().day, QDate(2026, 5, 5));
    basic::Clock::stopAt({});
}

void StartUpTest::missingTemplatesAreNotFatal()
{
    TemporaryFarm farm;
    farm.close();
    basic::writeLine(farm.appPath() + QStringLiteral("/Templates"), QStringLiteral("in the way"));
    Start start(farm.appPath());
    start.window.makeTemplates(farm.appPath());
    QVERIFY2(start.window.statusText().contains(QStringLiteral("Templates")), qPrintable(start.window.statusText()));
}

void StartUpTest::failedCopyIsReportedAndNotFatal()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.close();
    basic::writeLine(farm.databasesPath() + QStringLiteral("/Backups"), QStringLiteral("in the way"));
    QVERIFY(QFile::remove(farm.filePath(DatabaseFile::Spray)));
    Start start(farm.appPath());
    QCOMPARE(start.load, std::optional(MDI_Monitoring::Load::Done));
    QTRY_VERIFY2(start.window.statusText().contains(QStringLiteral("Backups")), qPrintable(start.window.statusText()));
    QVERIFY2(start.window.statusText().contains(store::fileName(DatabaseFile::Spray)), "the earlier failure is still reported");
}

/// A folder with the three files of a suite, as they are.
class JetFolder
{
public:
    JetFolder()
    {
        QDir(appPath()).mkdir(QStringLiteral("Databases"));
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            QFile::copy(QStringLiteral(JET_FIXTURES "/") + store::fileName(file), path(file));
        }
    }
    QString appPath() const { return folder_.path(); }
    QString path(DatabaseFile file) const { return folder_.filePath(QStringLiteral("Databases/") + store::fileName(file)); }
    QByteArray bytes(DatabaseFile file) const
    {
        QFile opened(path(file));
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }

private:
    QTemporaryDir folder_;
};

void StartUpTest::jetFilesAreUsedAsTheyAre()
{
    const JetFolder folder;
    {
        const Start start(folder.appPath());
        QVERIFY2(start.load == MDI_Monitoring::Load::Done, start.error ? qPrintable(start.error->description()) : "");
    }
    // The upgrades of the first start are in the file.
    const auto pest = dao::Workspace::OpenDatabase(folder.path(DatabaseFile::Pest), false, true, store::connectText());
    QVERIFY(pest->tableNames().contains(QStringLiteral("tblTempBlockPlant"), Qt::CaseInsensitive));
    QVERIFY(pest->tableDef(QStringLiteral("tblPMTrans")).findField(u"PMRepeat") != nullptr);
    QVERIFY(!pest->OpenRecordset(QStringLiteral("Select * from tblTempBlockPlant")).Eof());
    QCOMPARE(pest->checkIntegrity(), QStringList());
}

void StartUpTest::theMasterFilesAreNeverWritten()
{
    const JetFolder folder;
    const QByteArray main = folder.bytes(DatabaseFile::Main);
    const QByteArray spray = folder.bytes(DatabaseFile::Spray);
    const int starts = qEnvironmentVariableIsSet("FARM_STARTS") ? qEnvironmentVariableIntValue("FARM_STARTS") : 10;
    for (int start = 0; start < starts; ++start) {
        QVERIFY(Start(folder.appPath()).load == MDI_Monitoring::Load::Done);
    }
    QVERIFY(folder.bytes(DatabaseFile::Main) == main);
    QVERIFY(folder.bytes(DatabaseFile::Spray) == spray);
}

QTEST_MAIN(StartUpTest)
#include "StartUpTest.moc"
