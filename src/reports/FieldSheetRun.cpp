// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/FieldSheetRun.h"

#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/controls/Dialogs.h"
#include "reports/FieldSheets.h"
#include "screens/ScreenHost.h"

#include <QDir>

namespace reports
{

namespace
{

constexpr double Whole = 100.0;

FieldSheetData readHeading(ScreenHost &host, const FieldSheetOrder &order)
{
    return {.farm = host.session().CurrentFarm,
            .completion = order.completion,
            .person = order.person,
            .pests = pestsOfInstruction(host.objPestMON(), order.instruction),
            .layout = order.layout};
}

/// Error 5 when the instruction has more pests than a sheet has columns.
void requireColumns(const FieldSheetData &data)
{
    constexpr qsizetype maxPests = 253;
    if (data.pests.size() > maxPests) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument,
                                  QStringLiteral("The instruction has %1 pests; a field sheet has columns for %2.")
                                      .arg(data.pests.size())
                                      .arg(maxPests));
    }
}

/// Adds a workbook with a single sheet, not visible yet.
excel::Workbook startWorkbook(excel::Application &application)
{
    excel::Workbook workbook = application.Workbooks().Add();
    REPORT_DeleteSheets(workbook);
    REPORT_HideExcel(application, true);
    return workbook;
}

void saveWorkbook(ScreenHost &host, excel::Application &application, const QString &behindDate)
{
    const QString date = basic::longDate(basic::Clock::today());
    QString name = QStringLiteral("Count ") + date + behindDate;
    name.replace(u',', u'_');
    REPORT_HideExcel(application, false);
    const auto path = REPORT_SaveReport(host, application, QStringLiteral("Pest Monitor"), name);
    if (path) {
        host.showStatus(QStringLiteral("Field sheets saved as %1").arg(QDir::toNativeSeparators(*path)));
    } else {
        // Stays readable after the box is closed.
        host.showFailure(QStringLiteral("The field sheets \"%1\" were not saved. Fix the cause and print them again.").arg(name));
    }
}

void writeAllBlocks(ScreenHost &host, const FieldSheetOrder &order, const SheetProgress &progress)
{
    excel::Application application(&host.launcher());
    excel::Workbook workbook = startWorkbook(application);
    const excel::Worksheet sheet = workbook.Worksheets(1);
    const std::vector<clsPestMONNew::Key> keys = blocksOfInstruction(host.objPestMON(), order.instruction);
    std::vector<SheetBlock> blocks;
    for (const clsPestMONNew::Key key : keys) {
        blocks.push_back(readSheetBlock(host.objPestMON(), order.instruction, key));
        progress(Whole * static_cast<double>(blocks.size()) / static_cast<double>(keys.size()));
    }
    const FieldSheetData data = readHeading(host, order);
    requireColumns(data);
    Print_All_Sheet(sheet, data, blocks, order.kind());
    setUpAllSheet(application, sheet);
    saveWorkbook(host, application, QString());
}

} // namespace

void printBlockSheets(ScreenHost &host, const FieldSheetOrder &order, const SheetProgress &progress)
{
    clsPestMONNew &store = host.objPestMON();
    const std::vector<clsPestMONNew::Key> keys = blocksOfInstruction(store, order.instruction);
    if (keys.empty()) {
        return;
    }
    excel::Application application(&host.launcher());
    excel::Workbook workbook = startWorkbook(application);
    excel::Worksheet sheet = workbook.Worksheets(1);
    const FieldSheetData data = readHeading(host, order);
    requireColumns(data);
    QString lastName;
    int done = 0;
    for (const clsPestMONNew::Key key : keys) {
        const SheetBlock block = readSheetBlock(store, order.instruction, key);
        QString tested = block.name;
        const QString title = REPORT_SafeSheetName(workbook, tested);
        // A sheet whose name is refused has the default name; the heading shows the block's name.
        basic::runOrIgnore([&] { sheet.setName(title); });
        Print_Block_Sheet(sheet, data, block, order.kind());
        setUpBlockSheet(application, sheet);
        lastName = block.name;
        progress(Whole * ++done / static_cast<double>(keys.size()));
        REPORT_AddSheet(workbook);
        sheet = workbook.Worksheets(workbook.Sheets().Count());
    }
    workbook.Worksheets(1).Activate();
    saveWorkbook(host, application, lastName);
}

void Print_All_Blocks(ScreenHost &host, const FieldSheetOrder &order, const SheetProgress &progress)
{
    if (order.instruction == 0) {
        return;
    }
    try {
        writeAllBlocks(host, order, progress);
    } catch (const basic::RunTimeError &error) {
        host.dialogs().message(QStringLiteral("Error in Excel_Pmcount_Balnk_all ") + error.description());
    }
}

} // namespace reports
