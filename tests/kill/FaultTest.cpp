// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultCase.h"
#include "ForeignReader.h"
#include "pestmon/PestMonScreen.h"
#include "pestmon/modPestMon.h"
#include "platform/dao/Workspace.h"

#include <functional>

namespace
{

/// How often another program reads the file.
constexpr int StepsPerForeignReading = 5;

} // namespace

/// A disk that fails at every operation while something is being written. Each time the screen reports the failure, the file
/// stays sound, what was reported as saved is stored, and the same step succeeds once the disk works again.
class FaultTest : public PestMonScreen
{
    Q_OBJECT

private:
    /// Repeats the step with one more operation that succeeds before the fault each time, until no operation is left to fail. The
    /// step returns whether it was reported as written; `check` is given the same.
    void atEveryOperation(
        const std::function<bool()> &step, const std::function<void(bool isWritten)> &check,
        const std::function<void()> &prepare = [] {})
    {
        QFETCH(FaultCase, fault);
        diskCalls::watch(farm_->appPath());
        // While a Jet file cannot be put back, each reading waits for two seconds.
        const bool isSlow = TemporaryFarm::kind() == dao::FileKind::Jet && fault.duration == diskCalls::Duration::FromNowOn;
        for (int number = 1;; number = isSlow ? number + 12 : FaultCase::next(number)) {
            prepare();
            host_->failure.clear();
            fault.failAt(number);
            const bool isWritten = step();
            const bool hasFailed = FaultCase::repair();
            // What cannot be shown afterwards is reported too.
            host_->failure += host_->errors.join(u' ');
            host_->errors.clear();
            QVERIFY2(isWritten || (hasFailed && !fault.isHarmless()), qPrintable(host_->failure));
            // Not every fault hinders: a journal may be emptied at the second try.
            QVERIFY2(isWritten || !host_->failure.isEmpty(), qPrintable(QString::number(number)));
            // What the failure has left is undone by the next write, if not before.
            farm_->session.dbPest->Execute(QStringLiteral("Delete from tblPMTempPest where PMTempPestID = 0"));
            {
                const auto again =
                    dao::Workspace::OpenDatabase(farm_->filePath(store::DatabaseFile::Pest), false, false, store::connectText());
                QCOMPARE(again->checkIntegrity(), QStringList());
            }
            if (number % StepsPerForeignReading == 0 || !hasFailed) {
                QCOMPARE(foreignReader::disagreement(farm_->filePath(store::DatabaseFile::Pest)), QString());
            }
            check(isWritten);
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(QStringLiteral("with operation %1 failing").arg(number)));
            }
            faults_ += hasFailed ? 1 : 0;
            if (!hasFailed) {
                return;
            }
        }
    }

    int instructions() { return farm_->count(QStringLiteral("tblPMTrans")); }
    /// Rows of an instruction, as "data/totals/blocks/pests".
    QString rowsOf(int key)
    {
        QStringList counts;
        for (const char *table : {"tblPMData", "tblPMDataMax", "tblPMBlockTrans", "tblPMTarTrans"}) {
            counts.append(QString::number(farm_->count(QLatin1String(table), QStringLiteral("PMTransID = %1").arg(key))));
        }
        return counts.join(u'/');
    }

private Q_SLOTS:
    void cleanupTestCase() { qInfo("%d faults", faults_); }

    void capturing_data() { FaultCase::addAll(); }
    void capturing()
    {
        capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
        typeInto(Point1 + 1, Value1, QStringLiteral("1000"));
        int value = 0;
        int stored = 0;
        atEveryOperation(
            [&] {
                clickCell("grdPest", Point1, Value1);
                host_->status.clear();
                auto &box = find<QLineEdit>("txtG1");
                box.setText(QString::number(++value));
                QTest::keyClick(&box, Qt::Key_Return);
                return host_->status.contains(QStringLiteral("point 1, Pest 01 = %1 saved").arg(value)) && !box.isVisible();
            },
            [&](bool isWritten) {
                const int now = storedCount(Point1, 1);
                QVERIFY(now == value || (!isWritten && now == stored));
                // A total that could not be written is reported, and corrected by the next save.
                QVERIFY(storedTotal(1) == now + 1000 || !host_->failure.isEmpty());
                auto &box = find<QLineEdit>("txtG1");
                if (box.isVisible()) {
                    box.setFocus();
                    QTest::keyClick(&box, Qt::Key_Return);
                }
                stored = storedCount(Point1, 1);
                QCOMPARE(stored, value);
            });
        QCOMPARE(storedTotal(1), value + 1000);
    }

    void savingAnInstruction_data() { FaultCase::addAll(); }
    void savingAnInstruction()
    {
        const int first = issue(QStringLiteral("Count"), {1}, {1, 2, 3});
        const QString whole = rowsOf(first);
        auto &store = host_->objPestMON();
        QCOMPARE(pestmon::Load_Selection(store, first), clsPestMONNew::Done);
        int before = 0;
        atEveryOperation(
            [&] {
                farm_->session.CurrentPMTransID = 0;
                try {
                    const auto status = pestmon::Save_Instruction(farm_->session, store);
                    host_->failure = store.lastError() ? store.lastError()->description() : QString();
                    return status == clsPestMONNew::Done;
                } catch (const basic::RunTimeError &error) {
                    host_->failure = error.description();
                    return false;
                }
            },
            [&](bool isWritten) {
                const int now = instructions();
                QVERIFY(now == before + 1 || (!isWritten && now == before));
                const int last = farm_->number(QStringLiteral("Select Max(PMTransID) from tblPMTrans"));
                QCOMPARE(rowsOf(last), whole);
                QCOMPARE(farm_->count(QStringLiteral("tblPMData"), QStringLiteral("PMTransID > %1").arg(last)), 0);
                QVERIFY(!isWritten || farm_->session.CurrentPMTransID == last);
            },
            [&] { before = instructions(); });
    }

    void completing_data() { FaultCase::addAll(); }
    void completing()
    {
        const int key = issue(QStringLiteral("Count"), {1}, {1, 2, 3});
        const QString whole = rowsOf(key);
        select(key);
        click("cmdComp");
        int before = 0;
        atEveryOperation(
            [&] {
                farm_->session.RepeatDone = false;
                host_->status.clear();
                click("cmdSaveTrans");
                return host_->status.contains(QStringLiteral("repeated instruction issued"));
            },
            [&](bool isWritten) {
                const int now = instructions();
                QVERIFY(now == before + 1 || (!isWritten && now == before));
                QCOMPARE(rowsOf(farm_->number(QStringLiteral("Select Max(PMTransID) from tblPMTrans"))), whole);
                QVERIFY(!isWritten || host_->objPestMON().Get_PMTrans(key).boolean("PMTransCom"));
                QCOMPARE(farm_->session.CurrentPMTransID, key);
            },
            [&] { before = instructions(); });
    }

    void deleting_data() { FaultCase::addAll(); }
    void deleting()
    {
        const int key = issue(QStringLiteral("Count"), {1}, {1, 2});
        auto &store = host_->objPestMON();
        QCOMPARE(pestmon::Load_Selection(store, key), clsPestMONNew::Done);
        int doomed = 0;
        int others = 0;
        atEveryOperation(
            [&] {
                host_->status.clear();
                click("cmdPdel");
                return host_->status.contains(QStringLiteral("deleted"));
            },
            [&](bool isWritten) {
                const bool isThere =
                    farm_->count(QStringLiteral("tblPMTrans"), QStringLiteral("PMTransID = %1").arg(doomed)) == 1;
                QVERIFY(isThere ? !isWritten : isWritten || instructions() == others);
                QVERIFY(instructions() == others + (isThere ? 1 : 0));
            },
            [&] {
                others = instructions();
                farm_->session.CurrentPMTransID = 0;
                QCOMPARE(pestmon::Save_Instruction(farm_->session, store), clsPestMONNew::Done);
                doomed = farm_->session.CurrentPMTransID;
                screen_->activateScreen();
                select(doomed);
            });
    }

private:
    int faults_ = 0;
};

QTEST_MAIN(FaultTest)
#include "FaultTest.moc"
