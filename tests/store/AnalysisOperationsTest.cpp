// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upgrades.h"
#include "store/clsPestMONNew.h"
#include "support/TemporaryFarm.h"

#include <QtTest>

using basic::SerialDate;
using Store = clsPestMONNew;

namespace
{

/// The same steps for each of the five kinds.
struct Kind {
    QString table;
    QString key;
    QString date;
    QString lastValue;
    /// Adds with key 0 where the kind's save does that, else through its add.
    std::function<int(Store &, std::int32_t &, int planting, SerialDate, float last)> add;
    std::function<int(Store &, std::int32_t &, int planting, SerialDate, float last)> save;
    std::function<int(Store &, std::int32_t &)> remove;
    std::function<dao::Recordset(Store &, SerialDate, SerialDate, int planting)> list;
    bool saveAdds;
};

Store::PlantValues plant(float last)
{
    return {-0.14F, 0.1F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F, 7.0F, 8.0F, last};
}

Kind leaf()
{
    return {"tblLeaveAnalysis",
            "LeaveAnalysisID",
            "LADate",
            "LA_B",
            [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
                return s.Add_Leave_Analysis(k, p, d, "Stem", "", plant(v));
            },
            [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
                return s.Save_Leave_Analysis(k, p, d, "Stem", "", plant(v));
            },
            [](Store &s, std::int32_t &k) { return s.Delete_Leave_Analysis(k); },
            [](Store &s, SerialDate f, SerialDate t, int p) { return s.Get_MonLeave_for_Period(f, t, p); },
            false};
}

Kind fruit()
{
    return {"tblFruitAnalysis",
            "FruitAnalysisID",
            "FADate",
            "FA_B",
            [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
                return s.Add_Fruit_Analysis(k, p, d, "Meat", "", plant(v));
            },
            [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
                return s.Save_Fruit_Analysis(k, p, d, "Meat", "", plant(v));
            },
            [](Store &s, std::int32_t &k) { return s.Delete_Fruit_Analysis(k); },
            [](Store &s, SerialDate f, SerialDate t, int p) { return s.Get_MonFruit_for_Period(f, t, p); },
            false};
}

Kind soil(const QString &table, const QString &key, const QString &date, const QString &lastValue, decltype(Kind::save) save,
          decltype(Kind::remove) remove, decltype(Kind::list) list)
{
    return {table, key, date, lastValue, save, save, std::move(remove), std::move(list), true};
}

Kind basicSoil()
{
    return soil(
        "tblSoilBasic", "SoilBasicID", "SBDate", "SBOrganic",
        [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
            return s.Save_Soil_Analysis_Basic(k, p, d, {1, 2, 3, 4, 5, 6, v}, "Sand");
        },
        [](Store &s, std::int32_t &k) { return s.Delete_Soil_Analysis_Basic(k); },
        [](Store &s, SerialDate f, SerialDate t, int p) { return s.Get_MonSoilBasic_for_Period(f, t, p); });
}

Kind microSoil()
{
    return soil(
        "tblSoilMicro", "MicroID", "MicroDate", "MicroMo",
        [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
            return s.Save_Soil_Analysis_Micro(k, p, d, {1, 2, 3, 4, 5, v});
        },
        [](Store &s, std::int32_t &k) { return s.Delete_Soil_Analysis_Micro(k); },
        [](Store &s, SerialDate f, SerialDate t, int p) { return s.Get_MonSoilMicro_for_Period(f, t, p); });
}

Kind extraction()
{
    return soil(
        "tblSoilExtraction", "SEExtractionID", "SEDate", "SEPB2",
        [](Store &s, std::int32_t &k, int p, SerialDate d, float v) {
            return s.Save_Soil_Analysis_Extraction(k, p, d, plant(v));
        },
        [](Store &s, std::int32_t &k) { return s.Delete_Soil_Analysis_Extract(k); },
        [](Store &s, SerialDate f, SerialDate t, int p) { return s.Get_MonSoilExtract_for_Period(f, t, p); });
}

SerialDate may(int day)
{
    return SerialDate::fromDate(QDate(2026, 5, day));
}

} // namespace

/// Leaf, fruit and soil analyses of the data class.
class AnalysisOperationsTest : public QObject
{
    Q_OBJECT

private:
    static void kinds()
    {
        QTest::addColumn<Kind>("kind");
        for (const Kind &kind : {leaf(), fruit(), basicSoil(), microSoil(), extraction()}) {
            QTest::newRow(qPrintable(kind.table)) << kind;
        }
    }

private Q_SLOTS:
    void anAnalysisIsAddedSavedAndDeletedByItsKey_data() { kinds(); }
    void anAnalysisIsAddedSavedAndDeletedByItsKey()
    {
        QFETCH(Kind, kind);
        TemporaryFarm farm;
        Store store(farm.session);
        std::int32_t first = 0;
        std::int32_t second = 0;
        QCOMPARE(kind.add(store, first, 4, may(1), 0.1F), Store::Done);
        QCOMPARE(kind.add(store, second, 5, may(2), 3.1F), Store::Done);
        QCOMPARE(first, 1);
        QCOMPARE(second, 2);
        QCOMPARE(kind.save(store, first, 6, may(3), -2.7F), Store::Done);
        const QString sql = QString("Select %1, BlockPID, %3 from %2 order by %1").arg(kind.key, kind.table, kind.lastValue);
        // A Single reads as its shortest text, not as a double's rounding error.
        QCOMPARE(farm.rows(store::DatabaseFile::Pest, sql), (QStringList{"1|6|-2.7", "2|5|3.1"}));

        std::int32_t none = 0;
        QCOMPARE(kind.save(store, none, 9, may(3), 1.0F), Store::Done);
        QCOMPARE(farm.count(kind.table), kind.saveAdds ? 3 : 2);
        QCOMPARE(none, kind.saveAdds ? 3 : 0);
        std::int32_t missing = 77;
        QCOMPARE(kind.remove(store, missing), Store::Done);
        QCOMPARE(kind.remove(store, first), Store::Done);
        QCOMPARE(farm.count(kind.table, kind.key + " = 1"), 0);
        QCOMPARE(farm.count(kind.table), kind.saveAdds ? 2 : 1);
    }

    void everyArgumentGoesToItsField()
    {
        TemporaryFarm farm;
        Store store(farm.session);
        const Store::PlantValues plants{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        std::array<std::int32_t, 5> keys{};
        QCOMPARE(store.Add_Leave_Analysis(keys[0], 1, may(1), "Stem", "Blossom", plants), Store::Done);
        QCOMPARE(store.Add_Fruit_Analysis(keys[1], 1, may(1), "Skin", "Blossom", plants), Store::Done);
        QCOMPARE(store.Save_Soil_Analysis_Basic(keys[2], 1, may(1), {1, 2, 3, 4, 5, 6, 7}, "Fine"), Store::Done);
        QCOMPARE(store.Save_Soil_Analysis_Micro(keys[3], 1, may(1), {1, 2, 3, 4, 5, 6}), Store::Done);
        QCOMPARE(store.Save_Soil_Analysis_Extraction(keys[4], 1, may(1), plants), Store::Done);
        const auto row = [&](const QString &fields, const QString &table) {
            return farm.rows(store::DatabaseFile::Pest, QString("Select %1 from %2").arg(fields, table)).join(' ');
        };
        QCOMPARE(row("LA_N, LA_P, LA_K, LA_Ca, LA_Mg, LA_Na, LA_Mn, LA_Fe, LA_Cu, LA_Zn, LA_B", "tblLeaveAnalysis"),
                 QString("1|2|3|4|5|6|7|8|9|10|11"));
        QCOMPARE(row("FA_N, FA_P, FA_K, FA_Ca, FA_Mg, FA_Na, FA_Mn, FA_Fe, FA_Cu, FA_Zn, FA_B", "tblFruitAnalysis"),
                 QString("1|2|3|4|5|6|7|8|9|10|11"));
        QCOMPARE(row("SBDepth, SBpHWater, SBpHSuur, SBConduct, SBKUV, SBClay, SBOrganic, SBTexture", "tblSoilBasic"),
                 QString("1|2|3|4|5|6|7|Fine"));
        QCOMPARE(row("MicroZn, MicroCu, MicroB, MicroMn, MicroFe, MicroMo", "tblSoilMicro"), QString("1|2|3|4|5|6"));
        QCOMPARE(row("SEDepth, SEPBray, SEPAcid, SE_K, SE_Ca, SE_Na, SE_Mg, SE_Cl, SE_S, SE_Al, SEPB2", "tblSoilExtraction"),
                 QString("1|2|3|4|5|6|7|8|9|10|11"));
    }

    void aPeriodIsListedByBlockNameThenDate_data() { kinds(); }
    void aPeriodIsListedByBlockNameThenDate()
    {
        QFETCH(Kind, kind);
        TemporaryFarm farm;
        const int block = farm.addBlock({.name = "Dam"});
        const int vlei = farm.addPlanting({.name = "Vlei", .block = block});
        const int elan = farm.addPlanting({.name = "élan", .block = block});
        const int gone = farm.addPlanting({.name = "Old", .block = block, .active = false});
        store::Update_TempBlock(farm.session);
        Store store(farm.session);
        const auto add = [&](int planting, int day) {
            std::int32_t key = 0;
            QCOMPARE(kind.add(store, key, planting, may(day), 1.0F), Store::Done);
        };
        add(vlei, 9);
        add(vlei, 2);
        add(elan, 5);
        add(elan, 20); // outside the period
        add(gone, 4);
        add(99, 4); // no such planting
        const auto listed = [&](int planting) {
            QStringList lines;
            for (dao::Recordset rows = kind.list(store, may(1), may(9), planting); !rows.Eof(); rows.MoveNext()) {
                lines.append(rows.text("tPBlock") + QString::number(rows.date(kind.date)->date().day()));
            }
            return lines;
        };
        QCOMPARE(listed(0), (QStringList{"élan5", "Vlei2", "Vlei9"}));
        QCOMPARE(listed(vlei), (QStringList{"Vlei2", "Vlei9"}));
        farm.session.ShowActive = 0;
        QCOMPARE(listed(0), QStringList{"Old4"});
        QVERIFY(kind.list(store, may(9), may(1), 0).Eof());
    }

    void anAnalysisThatCannotBeWrittenLeavesNothing()
    {
        TemporaryFarm farm;
        Store store(farm.session);
        std::int32_t key = 0;
        QCOMPARE(store.Save_Soil_Analysis_Basic(key, 1, may(1), {}, QString(51, 'x')), Store::Failed);
        QCOMPARE(key, 0);
        QCOMPARE(farm.count("tblSoilBasic"), 0);
        QVERIFY(store.lastError());
    }
};

QTEST_GUILESS_MAIN(AnalysisOperationsTest)
#include "AnalysisOperationsTest.moc"
