// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/modReporting.h"

#include "common/SessionContext.h"
#include "common/modGeneral.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/TextFiles.h"
#include "platform/controls/Dialogs.h"
#include "screens/ScreenHost.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>

using basic::runOrIgnore;

namespace reports
{

namespace
{

/// The length to which sheet names are cut before the test, one less than the engine accepts.
constexpr qsizetype TestedNameLength = 30;
constexpr double GreyTint = -0.149998474074526;

int degrees(OrientationCode code)
{
    constexpr int quarterTurn = 90;
    return code == OrientationCode::Upwards ? quarterTurn : code == OrientationCode::Downwards ? -quarterTurn : 0;
}

void setBorderStyle(const excel::Range &range, const QVariant &value)
{
    const int style = value.toInt();
    if (style == 0 || style == 1) {
        range.Borders().setLineStyle(style == 0 ? excel::xlNone : excel::xlContinuous);
    }
}

using Setter = void (*)(excel::Range &, const QVariant &);
/// By RangeProperty.
constexpr std::array<Setter, 11> Setters{
    [](excel::Range &range, const QVariant &value) { setBorderStyle(range, value); },
    [](excel::Range &range, const QVariant &value) { range.Font().setSize(value.toDouble()); },
    [](excel::Range &range, const QVariant &value) { range.setHorizontalAlignment(value.toInt()); },
    [](excel::Range &range, const QVariant &value) { range.setMergeCells(value.toBool()); },
    [](excel::Range &range, const QVariant &value) { range.setWrapText(value.toBool()); },
    [](excel::Range &range, const QVariant &value) { range.Font().setBold(value.toBool()); },
    [](excel::Range &range, const QVariant &value) { range.Font().setUnderline(value.toInt()); },
    [](excel::Range &range, const QVariant &value) { range.setRowHeight(value.toDouble()); },
    [](excel::Range &range, const QVariant &value) { range.Borders().setWeight(value.toInt()); },
    [](excel::Range &range, const QVariant &value) { range.setVerticalAlignment(value.toInt()); },
    [](excel::Range &range, const QVariant &value) { range.Font().setName(value.toString()); },
};

} // namespace

QString REPORT_FontName(int &index)
{
    const std::array<const char *, 10> names{"Arial",  "Calibri",  "Courier New", "Times New Roman", "Microsoft Sans Serif",
                                             "Tahoma", "Terminal", "Verdana",     "System",          "Wingdings"};
    if (index > static_cast<int>(names.size())) {
        index = 1;
    }
    if (index < 1) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("There is no font %1.").arg(index));
    }
    return QLatin1String(names[static_cast<std::size_t>(index - 1)]);
}

bool REPORT_AddSheet(const excel::Workbook &workbook)
{
    return runOrIgnore([&] { workbook.Worksheets().Add(workbook.Worksheets(workbook.Sheets().Count())); });
}

bool REPORT_DeleteSheets(const excel::Workbook &workbook)
{
    return runOrIgnore([&] {
        for (int index = workbook.Sheets().Count(); index > 1; --index) {
            workbook.Sheets(index).Delete();
        }
    });
}

void REPORT_ShadeRange(const excel::Worksheet &sheet, const QString &c1, const QString &c2)
{
    runOrIgnore([&] {
        excel::Interior interior = sheet.Range(c1, c2).Interior();
        interior.setPattern(excel::xlSolid);
        interior.setPatternColorIndex(excel::xlAutomatic);
        interior.setThemeColor(1);
        interior.setTintAndShade(GreyTint);
        interior.setPatternTintAndShade(0);
    });
}

void REPORT_FormatRange(const excel::Worksheet &sheet, const QString &c1, const QString &c2, RangeFormat &format)
{
    runOrIgnore([&] {
        excel::Range range = sheet.Range(c1, c2);
        range.setMergeCells(format.merge);
        range.setWrapText(format.wrap);
        range.setValue(format.value);
        range.Font().setName(REPORT_FontName(format.fontIndex));
        range.Font().setSize(format.size);
        range.Font().setBold(format.bold);
        range.setHorizontalAlignment(format.hAlign);
        range.setVerticalAlignment(format.vAlign);
        if (format.borderStyle != 0) {
            range.Borders().setLineStyle(format.borderStyle);
            range.Borders().setWeight(format.borderWeight);
        }
        if (!format.numberFormat.isEmpty()) {
            range.setNumberFormat(format.numberFormat);
        }
        range.setRowHeight(format.rowHeight);
        range.Font().setUnderline(format.underline ? excel::xlUnderlineStyleSingle : excel::xlNone);
        range.setOrientation(degrees(format.orientationCode));
    });
}

void Write_Cell(const excel::Worksheet &sheet, const QString &c1, const QString &c2, const RangeFormat &format)
{
    excel::Range range = sheet.Range(c1, c2);
    range.setMergeCells(format.merge);
    range.setWrapText(format.wrap);
    range.setValue(format.value);
    range.Font().setSize(format.size);
    range.Font().setBold(format.bold);
    if (!format.merge) {
        range.setHorizontalAlignment(format.hAlign);
    }
    range.setRowHeight(format.rowHeight);
    range.setVerticalAlignment(format.vAlign);
    range.setOrientation(degrees(format.orientationCode));
}

void REPORT_SetProperty(const excel::Worksheet &sheet, const QString &c1, const QString &c2, int selector, const QVariant &value)
{
    if (selector < 0 || selector >= static_cast<int>(Setters.size())) {
        return;
    }
    runOrIgnore([&] {
        excel::Range range = sheet.Range(c1, c2);
        Setters[static_cast<std::size_t>(selector)](range, value);
    });
}

void REPORT_PageSetup(const excel::Worksheet &sheet, const QString &titleRows, const QString &titleColumns,
                      const QString &leftHeader, const QString &rightHeader, int orientation, const QString &centerHeader)
{
    excel::PageSetup page = sheet.PageSetup();
    // Each by itself: a refused property does not prevent the others.
    runOrIgnore([&] { page.setPrintTitleRows(titleRows); });
    if (!titleColumns.isEmpty()) {
        runOrIgnore([&] { page.setPrintTitleColumns(sheet.Columns(titleColumns).Address()); });
    }
    runOrIgnore([&] { page.setLeftHeader(leftHeader); });
    runOrIgnore([&] { page.setCenterHeader(centerHeader); });
    runOrIgnore([&] { page.setRightHeader(rightHeader); });
    runOrIgnore([&] { page.setOrientation(orientation); });
}

bool REPORT_SheetNameValid(const excel::Workbook &workbook, QString &name)
{
    name = name.left(TestedNameLength);
    if (Test_RegExp(QStringLiteral("[\\\\/\\?\\*\\[\\]]"), name) != QLatin1String("Failed") || name.trimmed().isEmpty()) {
        return false;
    }
    for (int index = 1; index <= workbook.Sheets().Count(); ++index) {
        if (workbook.Sheets(index).Name() == name) {
            return false;
        }
    }
    return true;
}

QString REPORT_SafeSheetName(const excel::Workbook &workbook, QString &name)
{
    const QString whole = name;
    return REPORT_SheetNameValid(workbook, name) ? whole : QStringLiteral("Sheet %1").arg(workbook.Sheets().Count());
}

void REPORT_HideExcel(excel::Application &application, bool hide)
{
    application.setVisible(!hide);
    application.setScreenUpdating(!hide);
    application.setDisplayAlerts(!hide);
}

QString reportsFolder(const QString &appPath, const QString &folder)
{
    const QString folderPath =
        appPath + QStringLiteral("/Reports") + (folder.trimmed().isEmpty() ? QString() : QStringLiteral("/") + folder);
    const QString path = basic::pathForWriting(folderPath);
    if (!basic::makeFolder(path)) {
        throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                                  QStringLiteral("The folder %1 cannot be created.").arg(path));
    }
    return path;
}

QString checkedFileName(const QString &name)
{
    for (const QChar character : QStringView(u"/\\:*?\"<>|")) {
        if (name.contains(character)) {
            throw excel::ExcelError(QStringLiteral("No file can be named \"%1\": the character %2 is not allowed in a file name.")
                                        .arg(name, character));
        }
    }
    // Windows takes these for devices, whatever follows the first full stop.
    static const QRegularExpression device(QStringLiteral("^ *(CON|PRN|AUX|NUL|COM[0-9]|LPT[0-9]) *(\\.|$)"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (device.match(name).hasMatch() || std::any_of(name.begin(), name.end(), [](QChar letter) { return letter < u' '; })) {
        throw excel::ExcelError(QStringLiteral("No file can be named \"%1\": not every system allows that name.").arg(name));
    }
    return name;
}

QString saveByMoment(const excel::Application &application, const QString &folder,
                     const std::function<QString(const QDateTime &now)> &nameAt, std::optional<int> fileFormat)
{
    // The number of reports in a row that can be named ahead of the clock.
    constexpr int maxSeconds = 60;
    const QDateTime now = basic::Clock::now();
    const auto pathAfter = [&](int seconds) { return folder + u'/' + checkedFileName(nameAt(now.addSecs(seconds))); };
    QString path = pathAfter(0);
    for (int seconds = 1; QFileInfo::exists(path) && seconds <= maxSeconds; ++seconds) {
        path = pathAfter(seconds);
    }
    application.ActiveWorkbook().SaveAs(path, fileFormat);
    return path;
}

std::optional<QString> REPORT_SaveReport(ScreenHost &host, excel::Application &application, const QString &folder,
                                         const QString &name)
{
    try {
        checkedFileName(name);
        const auto nameAt = [&name](const QDateTime &now) {
            return QStringLiteral("%1-%2.xlsx").arg(name, now.toString(QStringLiteral("yyyy_MM_dd HH_mm_ss")));
        };
        return saveByMoment(application, reportsFolder(host.session().AppPath, folder), nameAt, excel::xlOpenXMLWorkbook);
    } catch (const basic::RunTimeError &error) {
        host.dialogs().message(QStringLiteral("Error in REPORT_SaveReport ") + error.description());
        return {};
    }
}

void RegExp_Test(QString &result, const QString &pattern, const QString &text)
{
    result = Test_RegExp(pattern, text);
}

int Column_Index(const QString &name)
{
    return Column_Number(name);
}

} // namespace reports
