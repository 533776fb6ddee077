// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnalysisScreen.h"

#include "store/Upgrades.h"

AnalysisFarm::AnalysisFarm()
{
    addFarm(QStringLiteral("Rivier's Oord"));
    session.CurrentFarmID = 1;
    session.CurrentFarm = QStringLiteral("Rivier's Oord");
    const int block = addBlock({.name = QStringLiteral("Blok")});
    const int valencia = addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    const int eureka = addVariety(QStringLiteral("Citrus"), QStringLiteral("Lemon"), QStringLiteral("Eureka"));
    const int beaumont = addVariety(QStringLiteral("Nuts"), QStringLiteral("Macadamia"), QStringLiteral("Beaumont"));
    constexpr int unknown = 99;
    kloof = addPlanting({.name = QStringLiteral("Kloof"), .block = block, .variety = valencia});
    dam = addPlanting({.name = QStringLiteral("Dam"), .block = block, .variety = eureka});
    rand = addPlanting({.name = QStringLiteral("Rand"), .block = block, .variety = beaumont});
    oud = addPlanting({.name = QStringLiteral("Oud"), .block = block, .active = false, .variety = valencia});
    leeg = addPlanting({.name = QStringLiteral("Leeg"), .block = block, .variety = unknown});
    store::Update_TempBlock(session);
}

int AnalysisFarm::addAnalysis(const AnalysisKind &kind, int planting, QDate date, float value)
{
    clsPestMONNew store(session);
    AnalysisRecord record;
    record.Date = basic::SerialDate::fromDate(date);
    record.Part = QStringLiteral("Stem");
    record.Season = QStringLiteral("Blossom");
    record.Depth = value;
    for (float AnalysisRecord::*member : AnalysisValues) {
        record.*member = value;
    }
    std::int32_t key = 0;
    return kind.add(store, key, planting, record) == clsPestMONNew::Done ? key : -1;
}

void AnalysisScreen::kinds()
{
    QTest::addColumn<const AnalysisKind *>("kind");
    for (const AnalysisKind &kind : analysisKinds()) {
        QTest::newRow(qPrintable(kind.mode.toString())) << &kind;
    }
}

void AnalysisScreen::clickRow(int row)
{
    grid().showCell(row, BlockCol);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().cellRect(row, BlockCol).center());
}

QStringList AnalysisScreen::shown(int col)
{
    QStringList texts;
    for (int row = 1; row < grid().Rows() - 1; ++row) {
        if (grid().RowHeight(row) != 0) {
            texts.append(grid().TextMatrix(row, col));
        }
    }
    return texts;
}

void AnalysisScreen::refuseWrites()
{
    farm_->close();
    farm_->open(true);
}
