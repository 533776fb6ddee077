// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/ModFertPM.h"

#include "platform/controls/RedrawPause.h"
#include "screens/DayCells.h"

#include <QHash>

#include <vector>

namespace
{

constexpr int HeaderHeight = 450;

void writeHeader(controls::FlexGrid &grid, int col, QStringView text, int width, bool bold = true)
{
    grid.setColWidth(col, width);
    grid.setTextMatrix(0, col, text.toString());
    grid.setCellFontBold(0, col, bold);
}

void layOutColumns(controls::FlexGrid &grid, const AnalysisKind &kind)
{
    for (const auto &[col, column] : {std::pair(PartOrDepthCol, kind.partOrDepth), std::pair(SeasonCol, kind.season)}) {
        writeHeader(grid, col, column.header, column.width);
        grid.setColAlignment(col, column.alignment);
    }
    for (std::size_t i = 0; i < AnalysisBoxes; ++i) {
        const bool used = i < kind.values.size();
        const int col = FirstValueCol + static_cast<int>(i);
        writeHeader(grid, col, used ? kind.values[i].header : QStringView(), used ? kind.valueWidth : 0);
        grid.setColAlignment(col, controls::CellAlignment::Right);
    }
}

void layOut(controls::FlexGrid &grid, const AnalysisKind *kind)
{
    grid.Clear();
    grid.setCols(AnalysisColumnCount);
    grid.setRows(2);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setRowHeight(0, HeaderHeight);
    grid.setRowHeight(1, controls::FlexGrid::DefaultRowHeight);
    grid.setCell(0, 0);
    writeHeader(grid, AnalysisKeyCol, u"LeaveAnalysisID", 0);
    writeHeader(grid, PlantingCol, u"BlockPID", 0);
    writeHeader(grid, BlockCol, u"Block", 2000);
    writeHeader(grid, CultivarCol, u"Cultivar", 1500);
    writeHeader(grid, DateCol, u"Date", 1100);
    grid.setColAlignment(BlockCol, controls::CellAlignment::Left);
    grid.setColAlignment(CultivarCol, controls::CellAlignment::Left);
    if (kind) {
        layOutColumns(grid, *kind);
    }
    writeHeader(grid, GroupCol, u"crGrID", 0, false);
    writeHeader(grid, TypeCol, u"crTyID", 0, false);
    writeHeader(grid, VarietyCol, u"crVaID", 0, false);
}

/// The columns that a planting adds to its analyses.
struct PlantedCrop {
    QString variety;
    QString group;
    QString type;
    QString varietyKey;
};

QHash<std::int32_t, PlantedCrop> plantedCrops(dao::Recordset rows)
{
    QHash<std::int32_t, PlantedCrop> crops;
    if (rows.Eof()) {
        return crops;
    }
    crops.reserve(rows.RecordCount());
    const int planting = rows.fieldIndex("BlockPID");
    const int variety = rows.fieldIndex("Variety");
    const int group = rows.fieldIndex("CrGrIDD");
    const int type = rows.fieldIndex("CrTyIDD");
    const int varietyKey = rows.fieldIndex("CrVaIDD");
    for (; !rows.Eof(); rows.MoveNext()) {
        crops.insert(rows.longValue(planting), {rows.text(variety), rows.text(group), rows.text(type), rows.text(varietyKey)});
    }
    return crops;
}

/// The grid columns of a kind with the fields whose text they show.
std::vector<std::pair<int, int>> textFields(const AnalysisKind &kind, const dao::Recordset &rows)
{
    std::vector<std::pair<int, int>> fields{{AnalysisKeyCol, rows.fieldIndex(kind.keyField)},
                                            {PlantingCol, rows.fieldIndex("BlockPID")},
                                            {BlockCol, rows.fieldIndex("tPBlock")}};
    const auto add = [&](int col, QStringView field) {
        if (!field.isEmpty()) {
            fields.emplace_back(col, rows.fieldIndex(field));
        }
    };
    add(PartOrDepthCol, kind.partOrDepth.field);
    add(SeasonCol, kind.season.field);
    for (std::size_t i = 0; i < kind.values.size(); ++i) {
        add(FirstValueCol + static_cast<int>(i), kind.values[i].field);
    }
    return fields;
}

void fillRows(controls::FlexGrid &grid, const AnalysisKind &kind, dao::Recordset rows,
              const QHash<std::int32_t, PlantedCrop> &crops)
{
    const auto fields = textFields(kind, rows);
    const int plantingField = rows.fieldIndex("BlockPID");
    const int dateField = rows.fieldIndex(kind.dateField);
    DayCells days(grid);
    int row = 1;
    for (; !rows.Eof(); rows.MoveNext(), ++row) {
        for (const auto &[col, field] : fields) {
            grid.setTextMatrix(row, col, rows.text(field));
        }
        if (const auto date = rows.date(dateField)) {
            days.set(row, DateCol, *date);
        }
        if (const auto crop = crops.find(rows.longValue(plantingField)); crop != crops.end()) {
            grid.setTextMatrix(row, CultivarCol, crop->variety);
            grid.setTextMatrix(row, GroupCol, crop->group);
            grid.setTextMatrix(row, TypeCol, crop->type);
            grid.setTextMatrix(row, VarietyCol, crop->varietyKey);
        }
    }
    grid.setRow(row);
}

} // namespace

void Fill_LeaveGrid(controls::FlexGrid &grid, const AnalysisKind *kind, QDate from, QDate to, clsPestMONNew &objPestMON)
{
    const controls::RedrawPause pause(grid);
    layOut(grid, kind);
    if (!kind) {
        return;
    }
    constexpr clsPestMONNew::Key allBlocks = 0;
    dao::Recordset rows = (objPestMON.*kind->list)(basic::SerialDate::fromDate(from), basic::SerialDate::fromDate(to), allBlocks);
    if (rows.Eof()) {
        return;
    }
    const auto crops = plantedCrops(objPestMON.Get_BlocksPlant_Variety_for_All());
    grid.setRows(rows.RecordCount() + 2);
    fillRows(grid, *kind, std::move(rows), crops);
}
