// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/clsPestMONNew.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <vector>

namespace reports
{

/// Cells of a pest on a field sheet: three ("Cnt", "In", "Out"), one, or two ("In", "Out").
enum class SheetLayout { CountInOut = 1, Single = 2, InOut = 3 };

/// Scouts count, or note where a pest is absent.
enum class SheetKind { Count, Absent };

struct SheetBlock {
    QString name = {};
    QStringList varieties = {};
    /// Numbers of its monitoring points, ascending.
    std::vector<int> points = {};
};

/// The heading of all sheets of an instruction.
struct FieldSheetData {
    QString farm = {};
    QDate completion = {};
    QString person = {};
    /// Names in the order of their columns.
    std::vector<QString> pests = {};
    SheetLayout layout = SheetLayout::Single;
};

/// "Pest Monitoring: Count" or "Pest Monitoring: Absent".
QString sheetTitle(SheetKind kind);

/// Names of the instruction's pests in the order of their keys.
std::vector<QString> pestsOfInstruction(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);
std::vector<clsPestMONNew::Key> blocksOfInstruction(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);
SheetBlock readSheetBlock(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction, clsPestMONNew::Key block);

} // namespace reports
