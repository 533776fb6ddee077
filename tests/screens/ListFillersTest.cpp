// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ListFillers.h"
#include "platform/controls/ItemCombo.h"
#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using controls::ItemCombo;

/// What the lists hold, in which order, and what they leave out.
class ListFillersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void farmsAndWorkers();
    void plantingsOfTheCopy();
    void cropsGoDownStepByStep();
    void anErrorLeavesTheListEmpty();
    void onlyEnterMovesOn();

private:
    static QStringList entries(const ItemCombo &combo)
    {
        QStringList all;
        for (int i = 0; i < combo.ListCount(); ++i) {
            all += QStringLiteral("%1=%2").arg(combo.List(i)).arg(combo.ItemData(i));
        }
        return all;
    }
};

void ListFillersTest::farmsAndWorkers()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Zandvlei"));
    farm.addFarm(QStringLiteral("Given up"), false);
    farm.addFarm(QStringLiteral("Aloe Ridge"));
    farm.addWorker(QStringLiteral("Anna"));
    farm.addWorker(std::nullopt);
    clsPestMONNew store(farm.session);
    ItemCombo combo;
    QSignalSpy clicks(&combo, &ItemCombo::Click);
    Fill_Farm_Combo(combo, store);
    QCOMPARE(entries(combo), (QStringList{QStringLiteral("Zandvlei=1"), QStringLiteral("Aloe Ridge=3")}));
    Fill_Worker_Combo(combo, store);
    QCOMPARE(entries(combo), QStringList{QStringLiteral("Anna=1")});
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(combo.ListIndex(), -1);
}

void ListFillersTest::plantingsOfTheCopy()
{
    TemporaryFarm farm;
    const auto copy = [&](int key, const QString &name, bool active) {
        farm.add(u"tblTempBlockPlant",
                 {{u"tBlockPID", key},
                  {u"tBlockID", 1},
                  {u"tPBlock", name},
                  {u"tBlock", name},
                  {u"tFlag", false},
                  {u"PBActive", active}});
    };
    copy(8, QStringLiteral("B2"), true);
    copy(3, QStringLiteral("A1"), true);
    copy(5, QStringLiteral("A0"), false);
    ItemCombo combo;
    Fill_Block_Combo_Temp(combo, farm.session);
    QCOMPARE(entries(combo), (QStringList{QStringLiteral("A1=3"), QStringLiteral("B2=8")}));
}

void ListFillersTest::cropsGoDownStepByStep()
{
    TemporaryFarm farm;
    const int owner = farm.addFarm(QStringLiteral("Riverbend"));
    farm.addVariety(QStringLiteral("Nuts"), QStringLiteral("Macadamia"), QStringLiteral("Beaumont"));
    const int valencia = farm.addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    const int block = farm.addBlock({.farm = owner});
    farm.addPlanting({.name = QStringLiteral("1a"), .block = block, .variety = valencia});
    farm.session.CurrentFarmID = owner;
    clsPestMONNew store(farm.session);
    ItemCombo combo;
    Fill_CrGroup_Combo(combo, store);
    QCOMPARE(entries(combo), QStringList{QStringLiteral("Citrus=2")});
    Fill_CrType_Combo(combo, store, 2);
    QCOMPARE(entries(combo), QStringList{QStringLiteral("Orange=2")});
    Fill_CrVariety_Combo(combo, store, 2);
    QCOMPARE(entries(combo), QStringList{QStringLiteral("Valencia=%1").arg(valencia)});
    Fill_BlockPlant_Combo(combo, store, farm.session);
    QCOMPARE(entries(combo), QStringList{QStringLiteral("1a=1")});
    farm.session.FilterCrVaID = valencia + 1;
    Fill_BlockPlant_Combo(combo, store, farm.session);
    QCOMPARE(combo.ListCount(), 0);
}

void ListFillersTest::anErrorLeavesTheListEmpty()
{
    SessionContext empty;
    clsPestMONNew store(empty);
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Of another farm"), 7);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Fill_Worker_Combo(combo, store));
    QCOMPARE(combo.ListCount(), 0);
}

void ListFillersTest::onlyEnterMovesOn()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit first;
    QLineEdit second;
    layout.addWidget(&first);
    layout.addWidget(&second);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first.setFocus();
    Key_Enter_To_Tab(int('a'));
    QCoreApplication::processEvents();
    QVERIFY(first.hasFocus());
    Key_Enter_To_Tab(13);
    QTRY_VERIFY(second.hasFocus());
}

QTEST_MAIN(ListFillersTest)
#include "ListFillersTest.moc"
