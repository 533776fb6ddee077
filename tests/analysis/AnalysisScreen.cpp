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

void AnalysisScreen::init()
{
    basic::Clock::stopAt(QDateTime(QDate(2026, 11, 23), QTime(10, 0)));
    farm_ = std::make_unique<AnalysisFarm>();
    host_ = std::make_unique<ScreenHostDouble>(farm_->session);
}

void AnalysisScreen::cleanup()
{
    QVERIFY2(host_->errors.isEmpty(), qPrintable(host_->errors.join(QLatin1Char(' '))));
    QVERIFY(host_->dialogs().allAsExpected());
    screen_.reset();
    host_.reset();
    farm_.reset();
    basic::Clock::stopAt({});
}

void AnalysisScreen::kinds()
{
    QTest::addColumn<const AnalysisKind *>("kind");
    for (const AnalysisKind &kind : analysisKinds()) {
        QTest::newRow(qPrintable(kind.mode.toString())) << &kind;
    }
}

void AnalysisScreen::open(QStringView mode)
{
    screen_ = std::make_unique<frmMonLeave>(*host_);
    screen_->setTag(mode.toString());
    screen_->resize(1366, 700);
    screen_->show();
    screen_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(screen_.get()));
    screen_->activateScreen();
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
