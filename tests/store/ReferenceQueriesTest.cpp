// SPDX-License-Identifier: GPL-3.0-or-later
#include "ErrorOf.h"

#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QtTest>

/// Farms, crops, blocks and targets as the data class gives them.
class ReferenceQueriesTest : public QObject
{
    Q_OBJECT

private:
    static QStringList column(dao::Recordset rows, const char *field)
    {
        QStringList texts;
        for (; !rows.Eof(); rows.MoveNext()) {
            texts.append(rows.text(field));
        }
        return texts;
    }

private Q_SLOTS:
    void plantingsFollowTheMostSpecificFilter_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("variety");
        QTest::addColumn<QString>("expected");
        // Groups: Citrus 1, Nuts 2. Types: Orange 1, Lemon 2, Macadamia 3. Varieties in the order of addVariety.
        QTest::newRow("none: active plantings") << 0 << 0 << 0 << "Eureka block,Navel young,nut,Valencia old";
        QTest::newRow("group alone lists inactive too") << 1 << 0 << 0 << "Eureka block,Navel young,Valencia out,Valencia old";
        QTest::newRow("type wins over group") << 2 << 1 << 0 << "Navel young,Valencia old";
        QTest::newRow("variety wins over type") << 2 << 3 << 1 << "Valencia old";
        QTest::newRow("nothing planted") << 0 << 0 << 99 << "";
    }

    void plantingsFollowTheMostSpecificFilter()
    {
        QFETCH(int, group);
        QFETCH(int, type);
        QFETCH(int, variety);
        QFETCH(QString, expected);
        TemporaryFarm farm;
        const int valencia = farm.addVariety("Citrus", "Orange", "Valencia");
        const int navel = farm.addVariety("Citrus", "Orange", "Navel");
        const int eureka = farm.addVariety("Citrus", "Lemon", "Eureka");
        const int nut = farm.addVariety("Nuts", "Macadamia", "A4");
        const int block = farm.addBlock({.name = "One", .farm = 7});
        const int elsewhere = farm.addBlock({.name = "Two", .farm = 8});
        farm.addPlanting({.name = "Valencia old", .block = block, .variety = valencia});
        farm.addPlanting({.name = "Valencia out", .block = block, .active = false, .variety = valencia});
        farm.addPlanting({.name = "Navel young", .block = block, .variety = navel});
        farm.addPlanting({.name = "Eureka block", .block = block, .variety = eureka});
        farm.addPlanting({.name = "nut", .block = block, .variety = nut});
        farm.addPlanting({.name = "other farm", .block = elsewhere, .variety = valencia});
        clsPestMONNew store(farm.session);
        store.RecordTotal = 77;
        QStringList names = column(store.Get_Blocks_All(7, group, type, variety), "PBlock");
        QStringList wanted = expected.split(',', Qt::SkipEmptyParts);
        QCOMPARE(store.RecordTotal, static_cast<int>(wanted.size()));
        std::sort(wanted.begin(), wanted.end(),
                  [](const QString &left, const QString &right) { return left.compare(right, Qt::CaseInsensitive) < 0; });
        QCOMPARE(names, wanted);
    }

    void groupsAreThoseOfTheFarm()
    {
        TemporaryFarm farm;
        const int citrus = farm.addVariety("Citrus", "Orange", "Valencia");
        const int nut = farm.addVariety("Nuts", "Macadamia", "A4");
        farm.addVariety("Vines", "Grape", "Barlinka");
        farm.addPlanting({.block = farm.addBlock({.farm = 1}), .variety = citrus});
        farm.addPlanting({.block = farm.addBlock({.farm = 2}), .active = false, .variety = nut});
        clsPestMONNew store(farm.session);
        farm.session.CurrentFarmID = 2;
        QCOMPARE(column(store.Get_CropGroup_for_Farm(), "Group"), QStringList{"Nuts"});
        farm.session.FilterCrGrID = 2;
        QCOMPARE(column(store.Get_CropType_for_Group_for_Farm(), "Type"), QStringList{"Macadamia"});
        farm.session.FilterCrGrID = 1;
        QVERIFY(store.Get_CropType_for_Group_for_Farm().Eof());
    }

    void sharedColumnsOfAPlantingHaveNamesOfTheirOwn()
    {
        TemporaryFarm farm;
        farm.addVariety("Nuts", "Macadamia", "A4");
        const int navel = farm.addVariety("Citrus", "Orange", "Navel");
        farm.addBlock({.name = "First"});
        const int block = farm.addBlock({.name = "Second"});
        const int active = farm.addPlanting({.name = "now", .block = block, .variety = navel});
        const int inactive = farm.addPlanting({.name = "then", .block = block, .active = false, .variety = navel});
        clsPestMONNew store(farm.session);
        const dao::Recordset rows = store.Get_BlocksPlant_Variety_for_Block(block);
        QCOMPARE(rows.RecordCount(), 1);
        QCOMPARE(rows.longValue("BlockPID"), active);
        QCOMPARE(rows.longValue("BlockIDD"), block);
        QCOMPARE(rows.longValue("CrGrIDD"), 2);
        QCOMPARE(rows.longValue("CrTyIDD"), 2);
        QCOMPARE(rows.longValue("CrVaIDD"), navel);
        farm.session.ShowActive = 0;
        QVERIFY(store.Get_BlocksPlant_Variety_for_Block_new(active).Eof());
        QCOMPARE(store.Get_BlocksPlant_Variety_for_Block_new(inactive).text("PBlock"), QString("then"));
    }

    void blocksToMonitorAreTheActiveOnesOfAllFarms()
    {
        TemporaryFarm farm;
        clsPestMONNew store(farm.session);
        store.RecordTotal = 5;
        QVERIFY(store.XGet_PestBlocks_for_Farms(1).Eof());
        QCOMPARE(store.RecordTotal, 0);
        farm.addBlock({.name = "Vlei", .farm = 1});
        farm.addBlock({.name = "élan", .farm = 2, .points = std::nullopt});
        farm.addBlock({.name = "Dam", .farm = 1, .active = false});
        farm.addBlock({.name = "O'Brien", .farm = 3});
        dao::Recordset rows = store.XGet_PestBlocks_for_Farms(1);
        QCOMPARE(store.RecordTotal, 3);
        QCOMPARE(rows.text("Block"), QString("élan"));
        QCOMPARE(rows.longValue("NoofMpoints"), 0);
        QCOMPARE(column(std::move(rows), "Block"), (QStringList{"élan", "O'Brien", "Vlei"}));
    }

    void targetsOfAKindKeepTheOldTotalWhenThereAreNone()
    {
        TemporaryFarm farm;
        farm.addTarget("Thrips", "P", {5});
        farm.addTarget("Black spot", "D", {5, 6});
        farm.addTarget("Ants", "P", {6});
        clsPestMONNew store(farm.session);
        QCOMPARE(column(store.Get_Pests_for_ALL_FruitTypes({}), "Target"), (QStringList{"Ants", "Black spot", "Thrips"}));
        QCOMPARE(store.RecordTotal, 3);
        QCOMPARE(column(store.Get_Pests_for_ALL_FruitTypes("P"), "CCTargetID"), (QStringList{"3", "1"}));
        QCOMPARE(store.RecordTotal, 2);
        QVERIFY(store.Get_Pests_for_ALL_FruitTypes("W").Eof());
        QCOMPARE(store.RecordTotal, 2);
        QCOMPARE(column(store.Get_Pests_for_FruitType(6, "P"), "Target"), QStringList{"Ants"});
        QCOMPARE(store.RecordTotal, 1);
    }

    void oneValueOfAMissingRowIsNeutral()
    {
        TemporaryFarm farm;
        const int block = farm.addBlock({.name = "D'Almeida", .points = std::nullopt});
        const int planting = farm.addPlanting({.name = "P", .block = block});
        const int target = farm.addTarget("Scale", "P");
        clsPestMONNew store(farm.session);
        QCOMPARE(store.BigBlock_Name(block), QString("D'Almeida"));
        QCOMPARE(store.BigBlock_ID(planting), block);
        QCOMPARE(store.PlantBlock_Name(planting), QString("P"));
        QCOMPARE(int{store.NoofMPoints_Are(block)}, 0);
        QCOMPARE(store.ChemTarget_Is(target), QString("Scale"));
        QCOMPARE(store.CTarget_Is(target), QString("Scale"));
        QCOMPARE(store.BigBlock_Name(99), QString());
        QCOMPARE(store.BigBlock_ID(99), 0);
        QCOMPARE(int{store.NoofMPoints_Are(99)}, 0);
        QCOMPARE(store.ChemTarget_Is(99), QString());
        QCOMPARE(store.CrTyID_Is("None"), 0);
    }

    void errorsPassToTheCaller()
    {
        TemporaryFarm farm;
        clsPestMONNew store(farm.session);
        const int noTable = static_cast<int>(dao::DataErrorNumber::TableNotFound);
        QCOMPARE(errorOf([&] { store.GetCrGroup_byID(1); }), noTable);
        QCOMPARE(errorOf([&] { store.CTargetID_Is("Ants"); }), noTable);
        // A quote in a name breaks the statement; it must not turn into another one.
        QVERIFY(errorOf([&] { store.CrTyID_Is("O'Brien"); }) != 0);
        farm.session.dbSpray.set(nullptr);
        farm.session.dbSpray.setFailure("ZN4_Spray.mdb", "it is locked");
        QCOMPARE(errorOf([&] { store.Get_ChemTarget(); }), static_cast<int>(basic::ErrorNumber::ObjectNotSet));
    }
};

QTEST_GUILESS_MAIN(ReferenceQueriesTest)
#include "ReferenceQueriesTest.moc"
