// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnalysisRound.h"

#include "analysis/AnalysisKinds.h"
#include "platform/basic/Formats.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "shell/MDI_Monitoring.h"
#include "store/Schema.h"

#include <QApplication>
#include <QHash>
#include <QPushButton>
#include <QTest>

#include <algorithm>

namespace
{

using controls::FlexGrid;
using controls::ItemCombo;

constexpr int FirstAdded = 11;
constexpr int FirstChanged = 41;

QString tableOf(const AnalysisKind &kind)
{
    static const QHash<QStringView, QString> tables{{u"Leaf", QStringLiteral("tblLeaveAnalysis")},
                                                    {u"Fruit", QStringLiteral("tblFruitAnalysis")},
                                                    {u"Basic", QStringLiteral("tblSoilBasic")},
                                                    {u"Ex", QStringLiteral("tblSoilExtraction")},
                                                    {u"Micro", QStringLiteral("tblSoilMicro")}};
    return tables.value(kind.mode);
}

QString numberFor(int first, std::size_t box)
{
    return basic::doubleText(static_cast<double>(first) + static_cast<double>(box) + 0.25);
}

} // namespace

AnalysisRound::AnalysisRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, Report &report)
    : window_(window), dialogs_(dialogs), report_(report), driver_(window), paper_(window, dialogs, launcher, report)
{
}

void AnalysisRound::play()
{
    for (const auto &[picture, mode] : {std::pair("imLeave", u"Leaf"), std::pair("imAsset", u"Fruit"),
                                        std::pair("imBas", u"Basic"), std::pair("imEx", u"Ex"), std::pair("imMic", u"Micro")}) {
        playKind(picture, *analysisKind(mode));
    }
}

void AnalysisRound::playKind(const char *picture, const AnalysisKind &kind)
{
    driver_.click(picture);
    report_.step(QStringLiteral("%1: %2 listed").arg(kind.name).arg(driver_.find<FlexGrid>("grdLeave").Rows() - 2));
    report_.screenshot(window_, QStringLiteral("%1-list").arg(kind.mode.toString().toLower()));
    add(kind, FirstAdded);
    change(kind, FirstChanged);
    filter(kind);
    paper_.printAnalyses();
    driver_.click("cmdResetFilter");
    remove(kind);
    driver_.click("cmdClose");
}

QString AnalysisRound::newestKey() const
{
    const auto &grid = driver_.find<FlexGrid>("grdLeave");
    int newest = 0;
    for (int row = 1; row < grid.Rows(); ++row) {
        newest = std::max(newest, grid.TextMatrix(row, AnalysisKeyCol).toInt());
    }
    return QString::number(newest);
}

int AnalysisRound::rowOf(const QString &key) const
{
    return std::max(1, driver_.findRow("grdLeave", AnalysisKeyCol, key));
}

void AnalysisRound::typeBoxes(const AnalysisKind &kind, int first)
{
    for (std::size_t box = 0; box < kind.values.size(); ++box) {
        driver_.type(numberFor(first, box));
        driver_.key(Qt::Key_Return);
        // Enter queues a Tab.
        QCoreApplication::processEvents();
    }
}

void AnalysisRound::add(const AnalysisKind &kind, int first)
{
    const int before = driver_.find<FlexGrid>("grdLeave").Rows();
    driver_.click("Command7");
    report_.check(driver_.find<QWidget>("dtpAna").hasFocus(), QStringLiteral("the panel begins with the date"));
    driver_.key(Qt::Key_Tab);
    if (kind.secondEntry != AnalysisSecondEntry::None) {
        kind.secondEntry == AnalysisSecondEntry::Depth ? driver_.type(QStringLiteral("30")) : driver_.key(Qt::Key_Down);
        driver_.key(Qt::Key_Tab);
    }
    // The first active planting.
    driver_.key(Qt::Key_Down);
    driver_.key(Qt::Key_Tab);
    if (!kind.seasons.empty()) {
        driver_.key(Qt::Key_Down);
        driver_.key(Qt::Key_Tab);
    }
    typeBoxes(kind, first);
    report_.check(driver_.find<QWidget>("Command3").hasFocus(), QStringLiteral("Enter leads from box to box to Save"));
    report_.screenshot(window_, QStringLiteral("%1-panel").arg(kind.mode.toString().toLower()));
    driver_.key(Qt::Key_Return);
    report_.check(driver_.find<FlexGrid>("grdLeave").Rows() == before + 1, QStringLiteral("one analysis more is listed"));
    key_ = newestKey();
    compareWithFile(kind, rowOf(key_), first);
}

void AnalysisRound::change(const AnalysisKind &kind, int first)
{
    driver_.doubleClickCell("grdLeave", rowOf(key_), BlockCol);
    report_.check(!driver_.find<ItemCombo>("cboBlock").Text().isEmpty(), QStringLiteral("an analysis opens by double click"));
    driver_.find<QWidget>("txtN").setFocus();
    QCoreApplication::processEvents();
    typeBoxes(kind, first);
    // Esc asks, since something was typed.
    dialogs_.queueAnswer(controls::Answer::Yes);
    driver_.key(Qt::Key_Escape);
    report_.compare(dialogs_.takeLastText(), QStringLiteral("Do you want to save the changes?"),
                    QStringLiteral("question on Esc"));
    compareWithFile(kind, rowOf(key_), first);
}

void AnalysisRound::filter(const AnalysisKind &kind)
{
    auto &grid = driver_.find<FlexGrid>("grdLeave");
    const QString group = grid.TextMatrix(rowOf(key_), GroupCol);
    auto &groups = driver_.find<ItemCombo>("cboGroup");
    for (int i = 0; i < groups.ListCount(); ++i) {
        if (QString::number(groups.ItemData(i)) == group) {
            report_.check(driver_.choose("cboGroup", groups.List(i)), QStringLiteral("the crop group can be chosen"));
        }
    }
    int shown = 0;
    for (int row = 1; row < grid.Rows() - 1; ++row) {
        const bool ofGroup = group.isEmpty() || grid.TextMatrix(row, GroupCol) == group;
        report_.check((grid.RowHeight(row) != 0) == ofGroup, QStringLiteral("row %1 shows when its group is chosen").arg(row));
        shown += ofGroup ? 1 : 0;
    }
    report_.step(
        QStringLiteral("%1: %2 of %3 in the group %4").arg(kind.name).arg(shown).arg(grid.Rows() - 2).arg(groups.Text()));
    report_.screenshot(window_, QStringLiteral("%1-filtered").arg(kind.mode.toString().toLower()));
}

void AnalysisRound::remove(const AnalysisKind &kind)
{
    const int before = driver_.find<FlexGrid>("grdLeave").Rows();
    driver_.clickCell("grdLeave", rowOf(key_), BlockCol);
    if (kind.remove) {
        dialogs_.expectMessage();
    }
    driver_.click("cmdLeaveDEl");
    if (kind.remove) {
        report_.compare(dialogs_.takeLastText(), QStringLiteral("The analysis was deleted"), QStringLiteral("message on Delete"));
    }
    report_.check(driver_.find<FlexGrid>("grdLeave").Rows() == before - (kind.remove ? 1 : 0),
                  QStringLiteral("Delete removes the analysis from the list, except trace elements"));
}

void AnalysisRound::compareWithFile(const AnalysisKind &kind, int row, int first)
{
    // Through a second connection, so that nothing cached is read.
    const auto file = dao::Workspace::OpenDatabase(window_.session().PestDBFile, false, true, store::connectText());
    const dao::Recordset found =
        file->OpenRecordset(QStringLiteral("Select * from %1 where %2 = %3").arg(tableOf(kind), kind.keyField, key_));
    report_.check(!found.Eof(), QStringLiteral("%1 %2 is in the file").arg(kind.name, key_));
    if (found.Eof()) {
        return;
    }
    const auto &grid = driver_.find<FlexGrid>("grdLeave");
    report_.compare(found.text("BlockPID"), grid.TextMatrix(row, PlantingCol), QStringLiteral("planting in the file"));
    for (std::size_t box = 0; box < kind.values.size(); ++box) {
        const QString typed = numberFor(first, box);
        report_.compare(found.text(kind.values[box].field), typed, QStringLiteral("%1 in the file").arg(kind.values[box].field));
        report_.compare(grid.TextMatrix(row, FirstValueCol + static_cast<int>(box)), typed,
                        QStringLiteral("%1 in the list").arg(kind.values[box].header));
    }
}
