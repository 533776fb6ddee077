// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskImages.h"
#include "Import.h"
#include "pestmon/modPestMon.h"
#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Workspace.h"
#include "store/BackupFolder.h"
#include "store/Backups.h"
#include "store/Connection.h"
#include "store/Staging.h"
#include "store/Upgrades.h"
#include "support/TemporaryFarm.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QTest>

#include <functional>

using diskCalls::Kind;
using store::DatabaseFile;

namespace
{

/// Random images after each call; FARM_POWER_LOSS_IMAGES sets another number for a long run.
constexpr int RandomImages = 2;
const QByteArray Begin = "begin";
const QByteArray Done = "done";

QString memoryFolder()
{
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("PowerLossTest-XXXXXX"));
}

/// Every value of every table, as one hash.
QByteArray digest(dao::Database &database)
{
    struct Bytes {
        QByteArray operator()(dao::Null) const { return "-"; }
        QByteArray operator()(bool flag) const { return flag ? "t" : "f"; }
        QByteArray operator()(std::int32_t number) const { return QByteArray::number(number); }
        QByteArray operator()(double number) const { return QByteArray::number(number, 'g', 17); }
        QByteArray operator()(basic::SerialDate date) const { return QByteArray::number(date.days(), 'g', 17); }
        QByteArray operator()(const QString &text) const { return '"' + text.toUtf8(); }
    };
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QStringList tables = database.tableNames();
    tables.sort();
    for (const QString &table : tables) {
        QByteArrayList lines;
        for (dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select * from [%1]").arg(table)); !rows.Eof();
             rows.MoveNext()) {
            QByteArray line;
            for (int field = 0; field < rows.fieldCount(); ++field) {
                line += std::visit(Bytes(), rows.value(field)) + '|';
            }
            lines.append(line);
        }
        std::sort(lines.begin(), lines.end());
        hash.addData(table.toUtf8() + lines.join('\n'));
    }
    return hash.result();
}

/// The digest of a database that the program opens as it does at its start, with every page checked; why it cannot be read.
QByteArray digestOf(const QString &path, QString &fault)
{
    try {
        const auto database = dao::Workspace::OpenDatabase(path, false, false, store::connectText());
        if (const QStringList problems = database->checkIntegrity(); !problems.isEmpty()) {
            fault = path + QStringLiteral(" is damaged: ") + problems.front();
        }
        return digest(*database);
    } catch (const basic::RunTimeError &error) {
        fault = error.description();
        return {};
    }
}

/// What happened before the power failed.
struct Moment {
    /// Pieces of work that were begun, and those reported as done.
    int begun = 0;
    int done = 0;
};
/// What is wrong with an image; empty for nothing.
using Judge = std::function<QString(const QString &folder, Moment moment)>;

/// A farm whose monitoring is worked on, and what the file held after each piece of work.
class Office
{
public:
    Office()
    {
        farm_.addFarm(QStringLiteral("Rivier's Oord"));
        for (int block = 1; block <= 2; ++block) {
            farm_.addBlock({.name = QStringLiteral("Blok %1").arg(block), .points = 9 * block});
            farm_.addPlanting({.name = QStringLiteral("Blok %1").arg(block), .block = block});
        }
        farm_.addWorker(QStringLiteral("Anna"));
        for (int pest = 1; pest <= 4; ++pest) {
            farm_.addTarget(QStringLiteral("Pest %1").arg(pest));
        }
        states_.append(digest(*farm_.session.dbPest));
        farm_.close();
    }

    QString folder() const { return farm_.appPath(); }

    void work(const QByteArray &setting)
    {
        SessionContext &session = farm_.session;
        session.DatabasePath = farm_.databasesPath() + u'/';
        openDatabases(session);
        if (!setting.isEmpty()) {
            session.dbPest->state().engine->connection().execute(setting);
        }
        store::Key first = 0;
        store::Key analysis = 0;
        const basic::SerialDate day = basic::SerialDate::fromDate(QDate(2026, 5, 4));
        const auto expectDone = [this](store::Status status) {
            if (status != clsPestMONNew::Done) {
                qFatal("%s", qPrintable(store_.lastError()->description()));
            }
        };
        step([&] { store::Update_TempBlock(session); });
        step([&] {
            for (const int block : {1, 2}) {
                expectDone(store_.New_Add_Block_for_Instruction(block, static_cast<std::int16_t>(9 * block)));
            }
            for (const int pest : {1, 2, 3, 4}) {
                expectDone(store_.New_Add_Pest_for_Instruction(pest));
            }
        });
        session.CurrentPMMethodID = 1;
        session.CurrentPMDate = day;
        session.CurrentPMWeek = 18;
        session.CurrentPMPerson = QStringLiteral("Anna");
        session.CurrentPMNotes = QStringLiteral("Noord");
        step([&] { expectDone(pestmon::Save_Instruction(session, store_)); });
        first = session.CurrentPMTransID;
        for (const int count : {30, 31}) {
            step([&] {
                store::Key point = 1;
                store::Key total = 1;
                expectDone(store_.Save_PestDataMax(total, first, 1, {.PMCountMax = static_cast<std::int16_t>(count)}, 1));
                expectDone(store_.Save_PestData(point, first, 1, 1, {.PMCount = static_cast<std::int16_t>(count)}, 1));
            });
        }
        step([&] { expectDone(pestmon::Save_Instruction(session, store_)); });
        step([&] { expectDone(pestmon::Repeat_Instruction(session, store_)); });
        step([&] {
            expectDone(store_.Add_Leave_Analysis(analysis, 1, day, QStringLiteral("Blaar"), QStringLiteral("2026"), {1.5F}));
        });
        step([&] { expectDone(store_.Delete_Leave_Analysis(analysis)); });
        step([&] { expectDone(store_.New_Delete_Pest_for_Transaction(first, 2)); });
        step([&] { expectDone(store_.Delete_PestMonTrans(first)); });
        farm_.close();
    }

    QString faultIn(const QString &folder, Moment moment) const
    {
        QString fault;
        const QByteArray found = digestOf(folder + QStringLiteral("/Databases/PestMon.mdb"), fault);
        if (!fault.isEmpty() || found == states_[moment.done] || found == states_[moment.begun]) {
            return fault;
        }
        return states_.contains(found) ? QStringLiteral("reported work is missing")
                                       : QStringLiteral("a piece of work is there by half");
    }

private:
    /// One piece of work, which is one transaction.
    void step(const std::function<void()> &body)
    {
        diskCalls::note(Begin);
        {
            dao::CommitScope scope(*farm_.session.dbPest);
            body();
            scope.commit();
        }
        diskCalls::note(Done);
        states_.append(digest(*farm_.session.dbPest));
    }

    TemporaryFarm farm_;
    clsPestMONNew store_{farm_.session};
    QByteArrayList states_;
};

} // namespace

/// The power fails after each call by which the program changes the disk. Whatever part of the unsynced changes survives, what
/// was reported as done is there, and nothing is there by half.
class PowerLossTest : public QObject
{
    Q_OBJECT

private:
    /// Records the calls of `work` on the files of the folder.
    std::vector<diskCalls::Call> recorded(const QString &folder, const std::function<void()> &work)
    {
        diskCalls::watch(folder);
        diskCalls::record();
        work();
        std::vector<diskCalls::Call> calls = diskCalls::takeRecord();
        diskCalls::watch({});
        return calls;
    }

    /// The faults of all images; with `ignored`, of the images of a disk that does not sync, up to the first one.
    QStringList faultsOf(DiskImages disk, const std::vector<diskCalls::Call> &calls, const Judge &judge,
                         bool isFirstEnough = false)
    {
        using Survivors = DiskImages::Survivors;
        QStringList faults;
        Moment moment;
        QSet<QByteArray> seen;
        for (const diskCalls::Call &call : calls) {
            disk.apply(call);
            moment.begun += call.kind == Kind::Note && call.path == Begin ? 1 : 0;
            moment.done += call.kind == Kind::Note && call.path == Done ? 1 : 0;
            QList<Survivors> all{Survivors::None, Survivors::All, Survivors::Contents, Survivors::Names};
            all.insert(all.end(), randomImages_, Survivors::Random);
            for (const Survivors survivors : all) {
                const DiskImages::Image image = disk.image(survivors, random_);
                if (const QByteArray hash = hashOf(image, moment); !seen.contains(hash)) {
                    seen.insert(hash);
                    ++images_;
                    DiskImages::write(image, image_);
                    if (const QString fault = judge(image_, moment); !fault.isEmpty()) {
                        faults.append(QStringLiteral("after %1 of %2, image %3: %4")
                                          .arg(moment.done)
                                          .arg(moment.begun)
                                          .arg(images_)
                                          .arg(fault));
                        if (isFirstEnough) {
                            return faults;
                        }
                    }
                }
            }
        }
        return faults;
    }

    static QByteArray hashOf(const DiskImages::Image &image, Moment moment)
    {
        QCryptographicHash hash(QCryptographicHash::Md5);
        hash.addData(QByteArray::number(moment.begun) + '/' + QByteArray::number(moment.done));
        for (auto file = image.begin(); file != image.end(); ++file) {
            hash.addData(file.key() + '/' + QByteArray::number(file.value().size()));
            hash.addData(file.value());
        }
        return hash.result();
    }

    /// No fault on a disk that syncs, one on each that does not sync files, or folders.
    void proveSafe(const QString &folder, const std::function<void()> &work, const Judge &judge,
                   std::initializer_list<Kind> needed = {Kind::Sync, Kind::SyncFolder})
    {
        const DiskImages disk(folder);
        std::vector<DiskImages> careless;
        for (const Kind kind : needed) {
            careless.emplace_back(folder, kind);
        }
        const std::vector<diskCalls::Call> calls = recorded(folder, work);
        const QStringList faults = faultsOf(disk, calls, judge);
        QVERIFY2(faults.isEmpty(), qPrintable(QString::number(faults.size()) + u' ' + faults.mid(0, 3).join(u'\n')));
        qInfo("%zu calls, %d images", calls.size(), images_);
        for (const DiskImages &one : careless) {
            QVERIFY2(!faultsOf(one, calls, judge, true).isEmpty(), "a missing sync is not found");
        }
    }

    QTemporaryDir folder_{memoryFolder()};
    QString image_ = folder_.filePath(QStringLiteral("image"));
    std::mt19937 random_{7};
    int randomImages_ = qEnvironmentVariableIsSet("FARM_POWER_LOSS_IMAGES")
        ? qEnvironmentVariableIntValue("FARM_POWER_LOSS_IMAGES")
        : RandomImages;
    int images_ = 0;

private Q_SLOTS:
    void init() { images_ = 0; }
    void cleanup()
    {
        diskCalls::watch({});
        basic::Clock::stopAt({});
    }

    void monitoring_data()
    {
        QTest::addColumn<QByteArray>("setting");
        QTest::newRow("as it is") << QByteArray();
        if (TemporaryFarm::kind() == dao::FileKind::Sqlite) {
            QTest::newRow("never synced") << QByteArray("PRAGMA synchronous=OFF");
            QTest::newRow("the folder not synced") << QByteArray("PRAGMA synchronous=FULL");
            QTest::newRow("without a journal on the disk") << QByteArray("PRAGMA journal_mode=MEMORY");
        }
    }

    /// The work of some days, from the start of the program on. Another setting of SQLite must be found faulty.
    void monitoring()
    {
        QFETCH(QByteArray, setting);
        Office office;
        const Judge judge = [&office](const QString &folder, Moment moment) { return office.faultIn(folder, moment); };
        if (setting.isEmpty()) {
            proveSafe(
                office.folder(), [&] { office.work({}); }, judge);
        } else {
            const DiskImages disk(office.folder());
            const auto calls = recorded(office.folder(), [&] { office.work(setting); });
            QVERIFY2(!faultsOf(disk, calls, judge, true).isEmpty(), "the test finds no fault in this setting");
        }
    }

    void copies()
    {
        TemporaryFarm farm;
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        const QByteArray expected = digest(*farm.session.dbPest);
        farm.close();
        basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1), QTime(7, 30)));
        const auto work = [&farm] {
            for (int copy = 0; copy < 2; ++copy) {
                diskCalls::note(Begin);
                store::backUpNow(farm.databasesPath());
                diskCalls::note(Done);
            }
        };
        proveSafe(farm.appPath(), work, [&expected](const QString &folder, Moment moment) {
            QString fault;
            const auto copies = store::BackupFolder(folder + QStringLiteral("/Databases")).copies();
            for (const store::Backup &copy : copies) {
                if (digestOf(copy.path, fault) != expected && fault.isEmpty()) {
                    fault = copy.path + QStringLiteral(" is no copy");
                }
            }
            return static_cast<int>(copies.size()) < moment.done ? QStringLiteral("a reported copy is missing") : fault;
        });
    }

    void restoring()
    {
        TemporaryFarm farm;
        basic::Clock::stopAt(QDateTime(QDate(2026, 5, 1), QTime(7, 30)));
        const QString copy = store::backUpNow(farm.databasesPath());
        const QByteArray restored = digest(*farm.session.dbPest);
        farm.addInstruction({.blocks = {{1, 20}}, .targets = {1, 2, 3}});
        const QByteArray replaced = digest(*farm.session.dbPest);
        farm.close();
        const auto work = [&] {
            diskCalls::note(Begin);
            store::restoreBackup(farm.databasesPath(), copy);
            diskCalls::note(Done);
        };
        proveSafe(farm.appPath(), work, [&](const QString &folder, Moment moment) {
            QString fault;
            const QString databases = folder + QStringLiteral("/Databases");
            const QByteArray found = digestOf(databases + QStringLiteral("/PestMon.mdb"), fault);
            if (!fault.isEmpty() || (found == replaced && moment.done == 0)) {
                return fault;
            }
            if (found != restored) {
                return QStringLiteral("the file is neither the old nor the restored one");
            }
            const QStringList moved =
                QDir(databases + QStringLiteral("/Backups")).entryList({QStringLiteral("PestMon-replaced*.mdb")});
            const bool isThere =
                moved.size() == 1 && digestOf(databases + QStringLiteral("/Backups/") + moved[0], fault) == replaced;
            return isThere ? fault : QStringLiteral("the replaced file is lost");
        });
    }

    void newDatabases_data()
    {
        using Make = std::function<void(const QString &)>;
        QTest::addColumn<Make>("make");
        QTest::addColumn<bool>("hasOtherFiles");
        const bool isJet = TemporaryFarm::kind() == dao::FileKind::Jet;
        const Make make = [](const QString &folder) { createDatabases(folder, TemporaryFarm::kind()); };
        const Make import = [](const QString &folder) { importFarm(QStringLiteral(JET_FIXTURES), folder); };
        QTest::newRow("created") << make << false;
        QTest::newRow("created among other files") << make << true;
        if (!isJet) {
            QTest::newRow("imported") << import << false;
        }
    }

    void newDatabases()
    {
        QFETCH(std::function<void(const QString &)>, make);
        QFETCH(bool, hasOtherFiles);
        const QTemporaryDir root(memoryFolder());
        const QString target = QStringLiteral("/office/farm/Databases");
        if (hasOtherFiles) {
            QVERIFY(QDir().mkpath(root.path() + target + QStringLiteral("/Other")));
        }
        QMap<DatabaseFile, QByteArray> expected;
        const auto work = [&] {
            diskCalls::note(Begin);
            make(root.path() + target);
            diskCalls::note(Done);
            QString fault;
            for (const DatabaseFile file : store::AllDatabaseFiles) {
                expected[file] = digestOf(root.path() + target + u'/' + store::fileName(file), fault);
            }
        };
        proveSafe(root.path(), work, [&](const QString &folder, Moment moment) {
            QString fault;
            int whole = 0;
            for (const DatabaseFile file : store::AllDatabaseFiles) {
                const QString path = folder + target + u'/' + store::fileName(file);
                if (QFile::exists(path)) {
                    const bool isExpected = digestOf(path, fault) == expected[file];
                    whole += isExpected ? 1 : 0;
                    fault = isExpected || !fault.isEmpty() ? fault : path + QStringLiteral(" is not whole");
                }
            }
            const bool isAllOrNone = whole == 3 || (moment.done == 0 && (whole == 0 || hasOtherFiles));
            return isAllOrNone ? fault : QStringLiteral("%1 of three databases; %2").arg(whole).arg(fault);
        });
    }
};

QTEST_GUILESS_MAIN(PowerLossTest)
#include "PowerLossTest.moc"
