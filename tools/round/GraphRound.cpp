// SPDX-License-Identifier: GPL-3.0-or-later
#include "GraphRound.h"

#include "platform/chart/ChartView.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/Database.h"
#include "shell/MDI_Monitoring.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using chart::ChartView;
using controls::ItemCombo;

namespace
{

const char *const SeriesLists[] = {"cbo0", "cbo1", "cbo2", "cbo3", "cbo4"};

} // namespace

GraphRound::GraphRound(MDI_Monitoring &window, QueuedDialogs &dialogs, Report &report)
    : window_(window), dialogs_(dialogs), report_(report), driver_(window)
{
}

void GraphRound::play()
{
    driver_.click("imGG");
    chooseCriteria();
    driver_.click("cmd_0");
    compareWithFile();
    readOut();
    drawEachKind();
    zoom();
    style();
    print();
    otherAxes();
    driver_.click("cmd_1");
}

void GraphRound::chooseCriteria()
{
    // A year with a whole round of seasons in it.
    auto &from = driver_.find<controls::DatePicker>("dtpDateFrom");
    from.setFocus();
    from.setValue(driver_.find<controls::DatePicker>("dtpDateTo").Value().addYears(-1).addDays(1));
    auto &blocks = driver_.find<ItemCombo>("cmbBCount");
    blocks.setFocus();
    report_.check(blocks.ListCount() > 0, QStringLiteral("blocks with counts are offered"));
    driver_.key(Qt::Key_Down);
    report_.check(!blocks.Text().isEmpty(), QStringLiteral("a block is chosen by key"));
    driver_.click("chk_3");
    report_.step(QStringLiteral("Graph of %1 by week").arg(blocks.Text()));
}

void GraphRound::compareWithFile()
{
    const chart::Chart &chGraph = driver_.find<ChartView>("chGraph").model();
    report_.check(chGraph.RowCount() == 53, QStringLiteral("53 weeks are drawn"));
    double last = 0.0;
    for (int series = 1; series <= chGraph.SeriesCount(); ++series) {
        const auto &list = driver_.find<ItemCombo>(SeriesLists[series - 1]);
        const int pest = list.ItemData(list.ListIndex());
        const auto &blocks = driver_.find<ItemCombo>("cmbBCount");
        const QString sql =
            QStringLiteral(
                "Select Sum(tblPMDataMax.PMCountMax) as Total from tblPMDataMax, tblPMTrans where tblPMDataMax.PMTransID "
                "= tblPMTrans.PMTransID and tblPMTrans.PMTransCom = True and tblPMTrans.PMMethodID = 1 and "
                "tblPMTrans.PMTransDateCom >=#%1# and tblPMDataMax.BlockID = %2 and tblPMDataMax.CTargetID = %3")
                .arg(driver_.find<controls::DatePicker>("dtpDateFrom").Value().toString(QStringLiteral("MM/dd/yyyy")))
                .arg(blocks.ItemData(blocks.ListIndex()))
                .arg(pest);
        const dao::Recordset rows = window_.session().dbPest->OpenRecordset(sql);
        const double drawn = chGraph.ChartData().columnSum(series).value_or(0.0);
        report_.compare(QString::number(drawn), QString::number(rows.number("Total")),
                        QStringLiteral("sum of %1").arg(chGraph.columnLabelAt(series)));
        report_.check(series == 1 || drawn <= last, QStringLiteral("the largest sums come first"));
        last = drawn;
    }
}

void GraphRound::readOut()
{
    auto &view = driver_.find<ChartView>("chGraph");
    view.setFocus();
    driver_.key(Qt::Key_Home);
    const QString point = driver_.find<QLabel>("lblPointVal_1").text();
    const QString value = driver_.find<QLabel>("lblPointVal_2").text();
    report_.check(!point.isEmpty() && !value.isEmpty(), QStringLiteral("the first point is read out"));
    report_.step(QStringLiteral("Week %1: %2").arg(point, value));
}

void GraphRound::drawEachKind()
{
    auto &kinds = driver_.find<ItemCombo>("cbo_6");
    // The list shows its first kind, while the chart begins as another.
    report_.screenshot(window_, QStringLiteral("graph"));
    for (int kind = 0; kind < kinds.ListCount(); ++kind) {
        kinds.setListIndex(kind);
        report_.screenshot(driver_.find<QWidget>("fmeGraph"), QStringLiteral("graph-%1").arg(kinds.Text()));
    }
    kinds.setListIndex(3);
    driver_.click("chk_0");
    driver_.click("chk_1");
    report_.screenshot(window_, QStringLiteral("graph-markers-labels"));
    driver_.click("chk_1");
}

void GraphRound::zoom()
{
    const QSize before = driver_.find<ChartView>("chGraph").size();
    driver_.click("cmd_2");
    driver_.click("cmd_2");
    report_.screenshot(window_, QStringLiteral("graph-zoomed"));
    driver_.click("cmd_3");
    driver_.click("cmd_3");
    report_.check(driver_.find<ChartView>("chGraph").size() == before,
                  QStringLiteral("zoomed out, the graph has its size again"));
}

void GraphRound::style()
{
    QTimer::singleShot(0, &window_, [this] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        report_.check(dialog != nullptr, QStringLiteral("the styles open"));
        if (!dialog) {
            return;
        }
        report_.screenshot(*dialog, QStringLiteral("graph-styles"));
        dialog->findChild<QLineEdit *>(QStringLiteral("txtLW"))->setText(QStringLiteral("60"));
        dialog->findChild<QPushButton *>(QStringLiteral("cmdGSOK"))->click();
    });
    driver_.click("cmd_5");
    report_.check(driver_.find<ChartView>("chGraph").model().series(1).Pen.Width == 60,
                  QStringLiteral("the line is as wide as set"));
}

void GraphRound::print()
{
    const QString file = QDir(report_.pictures()).filePath(QStringLiteral("graph.pdf"));
    dialogs_.queuePrinter(file);
    driver_.click("cmd_4");
    report_.check(QFileInfo(file).size() > 0, QStringLiteral("the graph is printed to %1").arg(file));
}

void GraphRound::otherAxes()
{
    driver_.click("OptW_1");
    driver_.click("cmd_0");
    report_.check(driver_.find<ChartView>("chGraph").model().RowCount() >= 366, QStringLiteral("a year of days is drawn"));
    report_.screenshot(window_, QStringLiteral("graph-dates"));
    driver_.click("OptW_2");
    driver_.click("cmd_0");
    report_.screenshot(window_, QStringLiteral("graph-points"));
    driver_.click("opt_2");
    driver_.click("cmd_0");
    report_.screenshot(window_, QStringLiteral("graph-farm"));
}
