// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisBrowser.h"

#include "analysis/LeaveFilter.h"
#include "analysis/ModFertPM.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/RedrawPause.h"
#include "screens/ListFillers.h"
#include "screens/Period.h"
#include "screens/ScreenHost.h"
#include "ui_frmMonLeave.h"

#include <algorithm>

using controls::FlexGrid;
using controls::ItemCombo;

namespace
{

constexpr std::array<int, LeaveCriteria> CriterionColumns{GroupCol, TypeCol, VarietyCol, PlantingCol};

std::vector<LeaveRowKeys> rowKeys(const FlexGrid &grid)
{
    std::vector<LeaveRowKeys> rows(static_cast<std::size_t>(grid.Rows() - 1));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t criterion = 0; criterion < LeaveCriteria; ++criterion) {
            rows[i][criterion] = basic::Val(grid.TextMatrix(static_cast<int>(i) + 1, CriterionColumns[criterion]));
        }
    }
    return rows;
}

/// Yellow marks the selected row, pale yellow a previously selected one.
QString describe(const FlexGrid &grid, int row, int col)
{
    const QString block = grid.TextMatrix(row, BlockCol);
    if (block.isEmpty()) {
        return {};
    }
    QStringList parts{block, grid.TextMatrix(row, DateCol)};
    if (col != BlockCol && col != DateCol) {
        parts += {grid.TextMatrix(0, col), grid.TextMatrix(row, col)};
    }
    const auto colour = grid.CellBackColor(row, col);
    if (colour == controls::cellColour::Yellow) {
        parts += QStringLiteral("chosen");
    } else if (colour == controls::cellColour::PaleYellow) {
        parts += QStringLiteral("seen before");
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace

AnalysisBrowser::AnalysisBrowser(ScreenHost &host, Ui::frmMonLeave &ui) : host_(host), session_(host.session()), ui_(ui)
{
    ui_.grdLeave->setKeyClicks(FlexGrid::KeyClick::None);
    ui_.grdLeave->setTicks(false);
    ui_.grdLeave->setCellDescriber([&grid = *ui_.grdLeave](int row, int col) { return describe(grid, row, col); });
    // All: the values are narrow for three digits and two decimals, and a small screen needs what the others can spare.
    QList<int> shared;
    for (int col = BlockCol; col <= LastValueCol; ++col) {
        shared.append(col);
    }
    ui_.grdLeave->setStretchColumns(shared);
    ui_.grdLeave->setFrozenCols(CultivarCol);
    for (const Filter &filter : filters()) {
        filter.combo->setTypingAllowed(false);
    }
}

std::array<AnalysisBrowser::Filter, 4> AnalysisBrowser::filters() const
{
    return {{{ui_.cboGroup, &session_.FilterCrGrID},
             {ui_.cboType, &session_.FilterCrTyID},
             {ui_.cboVariety, &session_.FilterCrVaID},
             {ui_.cmbBlock, &session_.CurrentPlantBlockID}}};
}

void AnalysisBrowser::load()
{
    const controls::BusyPointer busy;
    readPeriodStart(host_);
    showPeriod(host_, *ui_.dtpDateFrom, *ui_.dtpDateTo);
    session_.FilterCrGrID = 0;
    session_.FilterCrTyID = 0;
    session_.FilterCrVaID = 0;
    // These belong to a group and a type that are no longer chosen.
    ui_.cboType->Clear();
    ui_.cboVariety->Clear();
    refillBlocks();
    Fill_Block_Combo_Temp(*ui_.cboBlock, session_);
    Fill_CrGroup_Combo(*ui_.cboGroup, host_.objPestMON());
}

void AnalysisBrowser::fill()
{
    const controls::BusyPointer busy;
    Fill_LeaveGrid(*ui_.grdLeave, kind_, ui_.dtpDateFrom->Value(), ui_.dtpDateTo->Value(), host_.objPestMON());
    ui_.grdLeave->setSelectedRow(-1);
    showEmptyText();
}

void AnalysisBrowser::showEmptyText()
{
    const FlexGrid &grid = *ui_.grdLeave;
    bool anyShown = false;
    for (int row = 1; row < grid.Rows() - 1 && !anyShown; ++row) {
        anyShown = grid.RowHeight(row) != 0;
    }
    QString text;
    if (grid.Rows() > 2 && !anyShown) {
        text = QStringLiteral("No analysis matches the filter. Press Reset Filter to list all.");
    } else if (!anyShown) {
        text = session_.ShowActive
            ? QStringLiteral("There are no analyses of active blocks in this period. Change the period, or press Add.")
            : QStringLiteral("There are no analyses of inactive blocks in this period. Change the period, or choose Active.");
    }
    ui_.grdLeave->setEmptyText(text);
}

void AnalysisBrowser::Apply_LeaveFilter()
{
    const controls::BusyPointer busy;
    LeaveFilter chosen{};
    const auto lists = filters();
    for (std::size_t i = 0; i < lists.size(); ++i) {
        const int index = lists[i].combo->ListIndex();
        *lists[i].value = index < 0 ? 0 : lists[i].combo->ItemData(index);
        chosen[i] = *lists[i].value;
    }
    FlexGrid &grid = *ui_.grdLeave;
    const FilteredRows rows = filterRows(rowKeys(grid), chosen, grid.Row());
    {
        const controls::RedrawPause pause(grid);
        for (int row = 1; row < grid.Rows(); ++row) {
            grid.setRowHeight(row, rows.shown[static_cast<std::size_t>(row) - 1] ? FlexGrid::DefaultRowHeight : 0);
        }
        grid.setRow(rows.currentRow);
    }
    showEmptyText();
    selectRow();
}

void AnalysisBrowser::selectFirst()
{
    session_.ListRow = 1;
    session_.ListCol = 1;
    goTo(session_.ListRow, session_.ListCol);
}

void AnalysisBrowser::reposition()
{
    if (session_.ListRow == 0 || session_.ListRow > ui_.grdLeave->Rows() - 1) {
        session_.ListRow = 1;
    }
    if (session_.ListCol > ui_.grdLeave->Cols() - 1) {
        session_.ListCol = 1;
    }
    goTo(session_.ListRow, session_.ListCol);
}

void AnalysisBrowser::goTo(int row, int col)
{
    ui_.grdLeave->setTopRow(row);
    ui_.grdLeave->setCell(row, col);
    selectRow();
}

void AnalysisBrowser::paintRow(int row, int colour)
{
    for (int col = 1; col < ui_.grdLeave->Cols(); ++col) {
        ui_.grdLeave->setCellBackColor(row, col, colour);
    }
}

void AnalysisBrowser::selectRow()
{
    basic::runOrIgnore([this] {
        FlexGrid &grid = *ui_.grdLeave;
        const int row = grid.Row();
        if (session_.ListRow > 0 && session_.ListRow < grid.Rows() - 1) {
            paintRow(session_.ListRow, controls::cellColour::PaleYellow);
        }
        const QString key = grid.TextMatrix(row, AnalysisKeyCol);
        const bool hasRecord = row > 0 && !key.trimmed().isEmpty();
        if (hasRecord) {
            paintRow(row, controls::cellColour::Yellow);
        }
        grid.setSelectedRow(hasRecord ? row : -1);
        session_.ListRow = row;
        session_.ListCol = grid.Col();
        grid.setCol(AnalysisKeyCol);
        if (row > 0 && !key.isEmpty()) {
            session_.CurrentAnalysis.ID = basic::toLong32(basic::Val(key));
        }
    });
}

void AnalysisBrowser::movedByKey(int row)
{
    // Filling the grid leaves ListRow unchanged but selects no row; an empty row is never selected.
    const bool hasRecord = !ui_.grdLeave->TextMatrix(row, AnalysisKeyCol).isEmpty();
    if (row != (hasRecord ? ui_.grdLeave->selectedRow() : session_.ListRow)) {
        selectRow();
    }
}

void AnalysisBrowser::refillBlocks()
{
    Fill_BlockPlant_Combo(*ui_.cmbBlock, host_.objPestMON(), session_);
}

void AnalysisBrowser::cropChosen(CropLevel level)
{
    const Filter filter = filters()[static_cast<std::size_t>(level)];
    const int index = filter.combo->ListIndex();
    const bool chosen = index >= 0;
    *filter.value = chosen ? filter.combo->ItemData(index) : 0;
    if (chosen && level == CropLevel::Group) {
        Fill_CrType_Combo(*ui_.cboType, host_.objPestMON(), *filter.value);
    } else if (chosen && level == CropLevel::Type) {
        Fill_CrVariety_Combo(*ui_.cboVariety, host_.objPestMON(), *filter.value);
    }
    if (chosen || level == CropLevel::Variety) {
        refillBlocks();
    }
    Apply_LeaveFilter();
}

void AnalysisBrowser::resetFilter()
{
    for (const Filter &filter : filters()) {
        filter.combo->setListIndex(-1);
    }
    refillBlocks();
    Apply_LeaveFilter();
}

void AnalysisBrowser::showActive(bool active)
{
    session_.ShowActive = active ? -1 : 0;
    fill();
    const auto lists = filters();
    for (const Filter &filter : lists) {
        if (filter.combo->ListIndex() < 0) {
            *filter.value = 0;
        }
    }
    if (std::any_of(lists.begin(), lists.end(), [](const Filter &filter) { return *filter.value > 0; })) {
        Apply_LeaveFilter();
    }
}

void AnalysisBrowser::periodChanged()
{
    fill();
    Apply_LeaveFilter();
}

void AnalysisBrowser::storePeriodStart()
{
    ::storePeriodStart(session_, *ui_.dtpDateFrom);
}
