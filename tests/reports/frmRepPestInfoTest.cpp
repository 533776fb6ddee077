// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmRepPestInfo.h"

#include "SheetReader.h"
#include "pestmon/PestMonFarm.h"
#include "platform/basic/Clock.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "support/FakeScreenHost.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using controls::FlexGrid;
namespace cellColour = controls::cellColour;

namespace
{

constexpr int PestMark = 3;
constexpr int BlockMark = 4;

} // namespace

class frmRepPestInfoTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void periodStart_data();
    void periodStart();
    void changedPeriodStartIsStored();
    void widthIsUsed();
    void clicksChoose();
    void allAndNone();
    void typeNarrowsAndDeselects();
    void reportFromTheFile_data();
    void reportFromTheFile();
    void progressIsShownAndGoes();
    void withoutTemplateTheScreenStays();
    void closes();

private:
    void open();
    template <typename Control> Control &find(const char *name) { return *screen_->findChild<Control *>(QLatin1String(name)); }
    void clickCell(const char *name, int row, int col)
    {
        auto &grid = find<FlexGrid>(name);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.cellRect(row, col).center());
    }
    int chosen(const char *name, int col)
    {
        auto &grid = find<FlexGrid>(name);
        int count = 0;
        for (int row = 1; row < grid.Rows(); ++row) {
            count += grid.CellBackColor(row, col) == cellColour::Yellow ? 1 : 0;
        }
        return count;
    }

    std::unique_ptr<PestMonFarm> farm_;
    std::unique_ptr<FakeScreenHost> host_;
    std::unique_ptr<frmRepPestInfo> screen_;
};

void frmRepPestInfoTest::init()
{
    basic::Clock::stopAt(QDateTime(QDate(2026, 5, 4), QTime(10, 0)));
    farm_ = std::make_unique<PestMonFarm>();
    host_ = std::make_unique<FakeScreenHost>(farm_->session);
    farm_->session.PestTypeFilter = QStringLiteral("W");
}

void frmRepPestInfoTest::cleanup()
{
    screen_.reset();
    QVERIFY(host_->dialogs().allAsExpected());
    basic::Clock::stopAt({});
}

void frmRepPestInfoTest::open()
{
    screen_ = std::make_unique<frmRepPestInfo>(*host_);
    screen_->resize(1366, 700);
    screen_->show();
}

void frmRepPestInfoTest::periodStart_data()
{
    QTest::addColumn<QString>("session");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QDate>("from");
    QTest::newRow("of the session") << "2026/03/01"
                                    << "2025/01/01" << QDate(2026, 3, 1);
    QTest::newRow("of the file") << ""
                                 << "2025/01/01" << QDate(2025, 1, 1);
    QTest::newRow("neither") << ""
                             << "" << QDate(2026, 1, 1);
}

void frmRepPestInfoTest::periodStart()
{
    QFETCH(QString, file);
    QFETCH(QString, session);
    if (!file.isEmpty()) {
        QFile handOff(farm_->appPath() + QStringLiteral("/FindSDate.txt"));
        QVERIFY(handOff.open(QIODevice::WriteOnly));
        handOff.write(file.toLatin1());
    }
    farm_->session.CurrentSDate = session;
    open();
    QTEST(find<controls::DatePicker>("dtpDateFrom").Value(), "from");
    QCOMPARE(find<controls::DatePicker>("dtpDateTo").Value(), QDate(2026, 5, 4));
    QCOMPARE(find<controls::ItemCombo>("cmbTPest").Text(), QString());
    QCOMPARE(find<FlexGrid>("grdPestIn").Rows(), 22);
    QCOMPARE(find<FlexGrid>("grdBlockIn").Rows(), 5);
}

void frmRepPestInfoTest::changedPeriodStartIsStored()
{
    open();
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    from.setFocus();
    from.selectAll();
    QTest::keyClick(&from, Qt::Key_Up);
    QTest::keyClick(&from, Qt::Key_Return);
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("2026/01/02"));
    QFile file(farm_->appPath() + QStringLiteral("/FindSDate.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().trimmed(), "2026/01/02");
}

void frmRepPestInfoTest::widthIsUsed()
{
    open();
    screen_->resize(1920, 960);
    const auto &pests = find<FlexGrid>("grdPestIn");
    const auto &blocks = find<FlexGrid>("grdBlockIn");
    QTRY_VERIFY(pests.width() + blocks.width() > 1800);
    // The names take the spare width.
    QVERIFY(pests.cellRect(1, 2).width() > pests.width() * 3 / 4);
}

void frmRepPestInfoTest::clicksChoose()
{
    open();
    const auto &pests = find<FlexGrid>("grdPestIn");
    QCOMPARE(pests.CellBackColor(1, PestMark), cellColour::White);
    clickCell("grdPestIn", 2, 2);
    QCOMPARE(pests.CellBackColor(2, PestMark), cellColour::Yellow);
    QCOMPARE(find<QLabel>("lblPests").text(), QStringLiteral("Pests (1 Selected)"));
    clickCell("grdPestIn", 2, PestMark);
    QCOMPARE(find<QLabel>("lblPests").text(), QStringLiteral("Pests (0 Selected)"));
    QCOMPARE(pests.CellBackColor(2, PestMark), cellColour::White);
    // The row behind the last block stays empty.
    clickCell("grdBlockIn", 4, BlockMark);
    QCOMPARE(chosen("grdBlockIn", BlockMark), 0);
}

void frmRepPestInfoTest::allAndNone()
{
    open();
    find<QPushButton>("cmdSAllP").click();
    // The empty last row is painted too.
    QCOMPARE(chosen("grdPestIn", PestMark), 20 + 1);
    QCOMPARE(chosen("grdBlockIn", BlockMark), 0);
    QCOMPARE(find<FlexGrid>("grdPestIn").TextMatrix(1, PestMark), QString());
    find<QPushButton>("cmdSAll").click();
    QCOMPARE(chosen("grdBlockIn", BlockMark), 3 + 1);
    QCOMPARE(find<QLabel>("lblBlocks").text(), QStringLiteral("Blocks (3 Selected)"));
    QCOMPARE(find<FlexGrid>("grdBlockIn").Row(), 1);
    QCOMPARE(find<FlexGrid>("grdBlockIn").Col(), BlockMark);
    find<QPushButton>("cmdDSAll").click();
    find<QPushButton>("cmdDSAllP").click();
    QCOMPARE(chosen("grdPestIn", PestMark) + chosen("grdBlockIn", BlockMark), 0);
}

void frmRepPestInfoTest::typeNarrowsAndDeselects()
{
    open();
    find<QPushButton>("cmdSAllP").click();
    auto &types = find<controls::ItemCombo>("cmbTPest");
    types.setListIndex(types.findText(QStringLiteral("Weeds")));
    QCOMPARE(farm_->session.PestTypeFilter, QStringLiteral("W"));
    QCOMPARE(find<FlexGrid>("grdPestIn").Rows(), 7);
    QCOMPARE(chosen("grdPestIn", PestMark), 0);
    QCOMPARE(types.ListCount(), 4);
    screen_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(screen_.get()));
    types.setFocus();
    QTest::keyClick(&types, Qt::Key_Delete);
    QCOMPARE(types.Text(), QString());
    QCOMPARE(find<FlexGrid>("grdPestIn").Rows(), 22);
}

void frmRepPestInfoTest::reportFromTheFile_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("name");
    QTest::newRow("by pest") << "cmdExcel"
                             << "Pest 01"
                             << "Blok A";
    QTest::newRow("by block") << "cmdPALL"
                              << "Block :  Blok A"
                              << "Pest 01";
}

void frmRepPestInfoTest::reportFromTheFile()
{
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    const int instruction =
        farm_->addInstruction({.completed = QDate(2026, 3, 9), .blocks = {{1, 3}, {2, 5}}, .targets = {1, 2}});
    // Not completed: stays out.
    farm_->addInstruction({.blocks = {{1, 3}}, .targets = {1}});
    farm_->session.dbPest->Execute(
        QStringLiteral("UPDATE tblPMData SET PMCount = 7 WHERE PMTransID = %1 AND PMBPunt = 2 AND CTargetID = 1 AND BlockID = 1")
            .arg(instruction));
    farm_->session.CurrentFarm = QStringLiteral("Rivier");
    open();
    clickCell("grdPestIn", 1, PestMark);
    clickCell("grdBlockIn", 1, BlockMark);
    QFETCH(QString, button);
    find<QPushButton>(qPrintable(button)).click();
    QVERIFY2(host_->errors.isEmpty(), qPrintable(host_->errors.join(u' ')));
    QCOMPARE(host_->launcher().opened.size(), 1);
    const QString path = host_->launcher().opened[0];
    QVERIFY2(path.startsWith(farm_->appPath() + QStringLiteral("/Reports/Pest Monitor Reports/Report_"))
                 && path.endsWith(QLatin1String("  10-00-00.xls")),
             qPrintable(path));
    NEEDS_READERS();
    const ReadSheet sheet(path);
    QCOMPARE(sheet.value(QStringLiteral("A2")), QStringLiteral("Farm :  Rivier"));
    QTEST(sheet.value(QStringLiteral("A4")), "group");
    QTEST(sheet.value(QStringLiteral("B7")), "name");
    QCOMPARE(sheet.value(QStringLiteral("A7")), QStringLiteral("2026/03/09"));
    QCOMPARE(sheet.value(QStringLiteral("D7")), QStringLiteral("7"));
    QCOMPARE(sheet.value(QStringLiteral("B8")), QStringLiteral("Total"));
    QVERIFY(!host_->excelApplication());
    QVERIFY(host_->status.contains(path));
}

void frmRepPestInfoTest::progressIsShownAndGoes()
{
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    open();
    QVERIFY(host_->Picture4().isHidden());
    find<QPushButton>("cmdPALL").click();
    QVERIFY(host_->Picture4().isHidden());
    QCOMPARE(host_->Picture4().caption(), QStringLiteral("100% of Pest monitor records"));
    QCOMPARE(host_->Picture4().barWidth(), host_->Picture4().width());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    QCOMPARE(host_->launcher().opened.size(), 1);
}

void frmRepPestInfoTest::withoutTemplateTheScreenStays()
{
    open();
    find<QPushButton>("cmdExcel").click();
    QCOMPARE(host_->errors.size(), 1);
    QVERIFY2(host_->errors[0].contains(QLatin1String("Analysis.xls")), qPrintable(host_->errors[0]));
    QVERIFY(!host_->excelApplication());
    QVERIFY(QGuiApplication::overrideCursor() == nullptr && screen_->isVisible());
}

void frmRepPestInfoTest::closes()
{
    open();
    QSignalSpy closed(screen_.get(), &ChildScreen::closeRequested);
    find<QPushButton>("cmdTCancel").click();
    QCOMPARE(closed.size(), 1);
}

QTEST_MAIN(frmRepPestInfoTest)
#include "frmRepPestInfoTest.moc"
