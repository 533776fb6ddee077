// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/ModFertPM.h"

#include "AnalysisScreen.h"

/// The list as it is laid out and filled for each kind.
class ModFertPMTest : public AnalysisScreen
{
    Q_OBJECT
private Q_SLOTS:
    void columnsOfAKind_data();
    void columnsOfAKind();
    void everyFieldIsInItsColumn_data();
    void everyFieldIsInItsColumn();
    void rowsShowTheirPlanting_data() { kinds(); }
    void rowsShowTheirPlanting();
    void emptyFieldsAreEmptyTexts();

private:
    void fill(FlexGrid &list, QStringView mode, QDate from = QDate(2026, 1, 1))
    {
        Fill_LeaveGrid(list, analysisKind(mode), from, QDate(2026, 11, 23), host_->objPestMON());
    }
    static QString row(const FlexGrid &list, int number, int first = AnalysisKeyCol, int last = VarietyCol)
    {
        QStringList cells;
        for (int col = first; col <= last; ++col) {
            cells.append(list.TextMatrix(number, col));
        }
        return cells.join(u'|');
    }
};

void ModFertPMTest::columnsOfAKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("headers");
    QTest::addColumn<QList<int>>("widths");
    QTest::newRow("leaf") << "Leaf"
                          << "Part|Season|N|P|K|Ca|Mg|Na|Mn|Fe|Cu|Zn|B"
                          << QList<int>{700, 1000, 460, 460, 460, 460, 460, 460, 460, 460, 460, 460, 460};
    QTest::newRow("basic") << "Basic"
                           << "Depth(cm)|Texture|pH(KCL)|Conduct|KUV|Klip(%)|Clay content(%)|Organic content(%)|||||"
                           << QList<int>{1000, 1000, 800, 800, 800, 800, 800, 800, 0, 0, 0, 0, 0};
    QTest::newRow("extraction") << "Ex"
                                << "Depth (cm)||P (B1)|P (B2)|P (Ohlson)|K|Ca|Na|Mg|Cl|S|Al|"
                                << QList<int>{900, 0, 600, 600, 600, 600, 600, 600, 600, 600, 600, 600, 0};
    QTest::newRow("micro") << "Micro"
                           << "||Zn|Cu|B|Mn|Fe|Mo|||||" << QList<int>{0, 0, 460, 460, 460, 460, 460, 460, 0, 0, 0, 0, 0};
}

void ModFertPMTest::columnsOfAKind()
{
    QFETCH(QString, mode);
    QFETCH(QString, headers);
    QFETCH(QList<int>, widths);
    FlexGrid list;
    // The contents of another kind and of a long list are removed.
    fill(list, u"Leaf");
    list.setRows(40);
    fill(list, mode);
    QCOMPARE(list.Rows(), 2);
    QCOMPARE(row(list, 0, 0, 4), QStringLiteral("LeaveAnalysisID|BlockPID|Block|Cultivar|Date"));
    QCOMPARE(row(list, 0, PartOrDepthCol, LastValueCol), headers);
    QCOMPARE(row(list, 0, GroupCol), QStringLiteral("crGrID|crTyID|crVaID"));
    for (int i = 0; i < widths.size(); ++i) {
        QCOMPARE(list.ColWidth(PartOrDepthCol + i), widths[i]);
    }
    QVERIFY(list.CellFontBold(0, LastValueCol) && !list.CellFontBold(0, GroupCol));
    QCOMPARE(list.RowHeight(0), 450);
    QCOMPARE(list.colAlignment(FirstValueCol), controls::CellAlignment::Right);
    QCOMPARE(list.colAlignment(BlockCol), controls::CellAlignment::Left);
}

void ModFertPMTest::everyFieldIsInItsColumn_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("cells");
    const auto row = [](const char *mode, const char *fields, const char *values, const char *cells) {
        QTest::newRow(mode) << mode
                            << QStringLiteral("(BlockPID, %1) VALUES (1, %2)").arg(QLatin1String(fields), QLatin1String(values))
                            << cells;
    };
    row("Leaf", "LADate, LAPart, LASeason, LA_N, LA_P, LA_K, LA_Ca, LA_Mg, LA_Na, LA_Mn, LA_Fe, LA_Cu, LA_Zn, LA_B",
        "#03/30/2026#, 'Bark', 'May', 1.1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 1000000", "Bark|May|1.1|2|3|4|5|6|7|8|9|10|1000000");
    row("Fruit", "FADate, FAPart, FASeason, FA_N, FA_P, FA_K, FA_Ca, FA_Mg, FA_Na, FA_Mn, FA_Fe, FA_Cu, FA_Zn, FA_B",
        "#03/30/2026#, 'Skin', 'May', 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0.11", "Skin|May|1|2|3|4|5|6|7|8|9|10|0.11");
    row("Basic", "SBDate, SBDepth, SBTexture, SBpHSuur, SBConduct, SBKUV, SBpHWater, SBClay, SBOrganic",
        "#03/30/2026#, 30, 'Sand', 1, 2, 3, 4, 5, 6", "30|Sand|1|2|3|4|5|6|||||");
    row("Ex", "SEDate, SEDepth, SEPBray, SEPB2, SEPAcid, SE_K, SE_Ca, SE_Na, SE_Mg, SE_Cl, SE_S, SE_Al",
        "#03/30/2026#, 60, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10", "60||1|2|3|4|5|6|7|8|9|10|");
    row("Micro", "MicroDate, MicroZn, MicroCu, MicroB, MicroMn, MicroFe, MicroMo", "#03/30/2026#, 1, 2, 3, 4, 5, 6",
        "||1|2|3|4|5|6|||||");
}

void ModFertPMTest::everyFieldIsInItsColumn()
{
    QFETCH(QString, mode);
    QFETCH(QString, insert);
    QFETCH(QString, cells);
    const QHash<QString, QString> tables{{"Leaf", "tblLeaveAnalysis"},
                                         {"Fruit", "tblFruitAnalysis"},
                                         {"Basic", "tblSoilBasic"},
                                         {"Ex", "tblSoilExtraction"},
                                         {"Micro", "tblSoilMicro"}};
    farm_->session.dbPest->Execute(QStringLiteral("INSERT INTO %1 %2").arg(tables[mode], insert));
    FlexGrid list;
    fill(list, mode);
    QCOMPARE(row(list, 1, AnalysisKeyCol, CultivarCol), QStringLiteral("1|1|Kloof|Valencia"));
    QCOMPARE(row(list, 1, PartOrDepthCol, LastValueCol), cells);
    QCOMPARE(list.cellValue(1, DateCol).value<basic::SerialDate>().date(), QDate(2026, 3, 30));
}

void ModFertPMTest::rowsShowTheirPlanting()
{
    QFETCH(const AnalysisKind *, kind);
    const QDate may(2026, 5, 1);
    for (const int planting : {farm_->rand, farm_->kloof, farm_->leeg, farm_->oud, farm_->kloof}) {
        QVERIFY(farm_->addAnalysis(*kind, planting, may, 1.5F) > 0);
    }
    farm_->addAnalysis(*kind, farm_->dam, QDate(2025, 12, 31), 1.0F);
    FlexGrid list;
    for (const int active : {-1, 0}) {
        farm_->session.ShowActive = active;
        fill(list, kind->mode);
        for (int number = 1; number < list.Rows() - 1; ++number) {
            // The same as a query for each planting.
            const dao::Recordset crop =
                host_->objPestMON().Get_BlocksPlant_Variety_for_Block_new(list.TextMatrix(number, PlantingCol).toInt());
            const auto text = [&crop](const char *field) { return crop.Eof() ? QString() : crop.text(field); };
            QCOMPARE(list.TextMatrix(number, CultivarCol), text("Variety"));
            QCOMPARE(row(list, number, GroupCol), QStringList({text("CrGrIDD"), text("CrTyIDD"), text("CrVaIDD")}).join(u'|'));
        }
        QCOMPARE(list.Rows(), active ? 6 : 3);
        QCOMPARE(list.Row(), list.Rows() - 1);
        QCOMPARE(row(list, list.Rows() - 1), QString(AnalysisColumnCount - 1, u'|'));
    }
    fill(list, kind->mode, QDate(2026, 12, 1));
    QCOMPARE(list.Rows(), 2);
}

void ModFertPMTest::emptyFieldsAreEmptyTexts()
{
    farm_->session.dbPest->Execute("INSERT INTO tblSoilBasic (BlockPID, SBDate) VALUES (1, #03/30/2026#)");
    FlexGrid list;
    fill(list, u"Basic");
    QCOMPARE(row(list, 1, PartOrDepthCol, LastValueCol), QString(12, u'|'));
}

QTEST_MAIN(ModFertPMTest)
#include "ModFertPMTest.moc"
