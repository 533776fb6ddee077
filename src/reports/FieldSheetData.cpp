// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/FieldSheetData.h"

namespace reports
{

QString sheetTitle(SheetKind kind)
{
    return kind == SheetKind::Absent ? QStringLiteral("Pest Monitoring: Absent") : QStringLiteral("Pest Monitoring: Count");
}

std::vector<QString> pestsOfInstruction(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction)
{
    std::vector<QString> names;
    for (dao::Recordset rows = objPestMON.Get_Pests_For_Transaction(instruction); !rows.Eof(); rows.MoveNext()) {
        names.push_back(objPestMON.ChemTarget_Is(rows.longValue("CCTargetID")));
    }
    return names;
}

std::vector<clsPestMONNew::Key> blocksOfInstruction(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction)
{
    std::vector<clsPestMONNew::Key> keys;
    for (dao::Recordset rows = objPestMON.New_Get_Blocks_For_Transaction(instruction); !rows.Eof(); rows.MoveNext()) {
        keys.push_back(rows.longValue("BlockID"));
    }
    return keys;
}

SheetBlock readSheetBlock(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction, clsPestMONNew::Key block)
{
    SheetBlock sheet;
    const dao::Recordset found = objPestMON.Get_Block_byID(block);
    sheet.name = found.Eof() ? QString() : found.text("Block");
    for (dao::Recordset rows = objPestMON.Get_BlocksPlant_Variety_for_Block(block); !rows.Eof(); rows.MoveNext()) {
        sheet.varieties.append(rows.text("Variety"));
    }
    dao::Recordset points = objPestMON.Get_NN_PestData_Points_Transaction(instruction, block);
    for (; !points.Eof(); points.MoveNext()) {
        sheet.points.push_back(points.longValue("PMBPunt"));
    }
    return sheet;
}

} // namespace reports
