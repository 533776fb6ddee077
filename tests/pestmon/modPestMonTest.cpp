// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/modPestMon.h"

#include "DamagedFile.h"
#include "PestMonFarm.h"

#include <QTest>

#include <memory>

using namespace pestmon;

namespace
{

constexpr auto Done = clsPestMONNew::Done;

} // namespace

class modPestMonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newInstructionGetsItsZeroRows();
    void savingTwiceLeavesTwoSetsLessOneRow();
    void instructionWithoutChoiceSaves();
    void unselectedBlockKeepsItsRows();
    void successorIsEqualAndEmpty();
    void valueTooLongWritesNothing();
    void interruptedSaveIsContinued();
    void clearEmptiesBothTables();

private:
    void choose(std::initializer_list<int> blocks, std::initializer_list<int> pests);

    std::unique_ptr<PestMonFarm> farm_;
    std::unique_ptr<clsPestMONNew> store_;
};

void modPestMonTest::init()
{
    store_.reset();
    farm_ = std::make_unique<PestMonFarm>();
    store_ = std::make_unique<clsPestMONNew>(farm_->session);
    SessionContext &session = farm_->session;
    session.CurrentPMMethodID = 1;
    session.CurrentPMDate = basic::SerialDate::fromDate(QDate(2026, 5, 4));
    session.CurrentPMWeek = 18;
    session.CurrentPMPerson = QStringLiteral("Anna");
    session.CurrentPMNotes = QStringLiteral("O'Neil – north");
    session.CurrentPMRepeat = true;
}

void modPestMonTest::choose(std::initializer_list<int> blocks, std::initializer_list<int> pests)
{
    for (const int block : blocks) {
        QCOMPARE(store_->New_Add_Block_for_Instruction(block, block == 1 ? 3 : 5), Done);
    }
    for (const int pest : pests) {
        QCOMPARE(store_->New_Add_Pest_for_Instruction(pest), Done);
    }
}

void modPestMonTest::newInstructionGetsItsZeroRows()
{
    choose({1, 2}, {7, 3});
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    const int key = farm_->session.CurrentPMTransID;
    QVERIFY(key > 0);
    QVERIFY(!farm_->session.RepeatDone);
    // (3 + 5) points x 2 pests; there was no row to delete first.
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData")), 16);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMDataMax where BlockID = 1 and CTargetID = 3")), 3);
    // Order of creation: block, point, pest.
    dao::Recordset rows = farm_->session.dbPest->OpenRecordset(QStringLiteral("Select * from tblPMData"));
    rows.MoveNext();
    QCOMPARE(rows.longValue("BlockID"), 1);
    QCOMPARE(rows.longValue("PMBPunt"), 1);
    QCOMPARE(rows.longValue("CTargetID"), 7);
    const dao::Recordset saved = store_->Get_PMTrans(key);
    QCOMPARE(saved.text("PMNotes"), QStringLiteral("O'Neil – north"));
    QVERIFY(!saved.boolean("PMTransCom"));
    QVERIFY(saved.isNull("PMTransDateCom"));
}

void modPestMonTest::savingTwiceLeavesTwoSetsLessOneRow()
{
    choose({1}, {3});
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMBlockTrans")), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTarTrans")), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData")), 5);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMDataMax")), 5);
    // The deleted row is the oldest: point 1 of the first set.
    QCOMPARE(farm_->number(QStringLiteral("Select PMBPunt from tblPMData order by PMDataID asc")), 2);
}

void modPestMonTest::instructionWithoutChoiceSaves()
{
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData")), 0);
}

void modPestMonTest::unselectedBlockKeepsItsRows()
{
    choose({1, 2}, {3});
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    const int key = farm_->session.CurrentPMTransID;
    QCOMPARE(store_->New_Delete_Block_for_Instruction(2), Done);
    QCOMPARE(store_->New_Delete_Block_for_Transaction(key, 2), Done);
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where BlockID = 2")), 5);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where BlockID = 1")), 3 + 3 - 1);
}

void modPestMonTest::successorIsEqualAndEmpty()
{
    choose({1}, {3, 7});
    QCOMPARE(Save_Instruction(farm_->session, *store_), Done);
    SessionContext &session = farm_->session;
    const int key = session.CurrentPMTransID;
    farm_->session.dbPest->Execute(QStringLiteral("UPDATE tblPMData SET PMCount = 9"));
    session.CurrentPMNotes = QStringLiteral("changed at completion");
    QCOMPARE(Repeat_Instruction(session, *store_), Done);
    QCOMPARE(session.CurrentPMTransID, key);
    const dao::Recordset successor = store_->Get_PMTrans(key + 1);
    QCOMPARE(successor.text("PMNotes"), QStringLiteral("changed at completion"));
    QCOMPARE(successor.date("PMTransDate")->days(), session.CurrentPMDate.days());
    QCOMPARE(successor.longValue("PMTransWeek"), 18);
    QVERIFY(successor.boolean("PMRepeat"));
    const QString ofSuccessor = QStringLiteral("Select * from tblPMData where PMTransID = %1 and PMCount = %2").arg(key + 1);
    QCOMPARE(farm_->countOf(ofSuccessor.arg(0)), 6);
    QCOMPARE(farm_->countOf(ofSuccessor.arg(9)), 0);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1 and PMCount = 9").arg(key)), 6);
}

void modPestMonTest::valueTooLongWritesNothing()
{
    choose({1}, {3});
    SessionContext &session = farm_->session;
    session.CurrentPMPerson = QString(80, QLatin1Char('x'));
    QCOMPARE(Save_Instruction(session, *store_), clsPestMONNew::Failed);
    QVERIFY(store_->lastError().has_value());
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 0);
    QCOMPARE(session.CurrentPMTransID, 0);
    // After a correction the same save succeeds.
    session.CurrentPMPerson = QStringLiteral("Anna");
    QCOMPARE(Save_Instruction(session, *store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData")), 3);
}

void modPestMonTest::interruptedSaveIsContinued()
{
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        QSKIP("no table of a Jet file can be taken away meanwhile");
    }
    choose({1}, {3});
    SessionContext &session = farm_->session;
    QVERIFY(changeFile(session.PestDBFile, "ALTER TABLE tblPMTPest RENAME TO other"));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Save_Instruction(session, *store_));
    // The instruction itself is stored; the next save continues with it.
    QCOMPARE(session.CurrentPMTransID, 1);
    QVERIFY(changeFile(session.PestDBFile, "ALTER TABLE other RENAME TO tblPMTPest"));
    QCOMPARE(Save_Instruction(session, *store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData")), 3);
}

void modPestMonTest::clearEmptiesBothTables()
{
    choose({1, 2, 2}, {3, 3, 4});
    QCOMPARE(Clear_Instruction(*store_), Done);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTBlock")), 0);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 0);
}

QTEST_GUILESS_MAIN(modPestMonTest)
#include "modPestMonTest.moc"
