// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Application.h"

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

class ScreenHost;

namespace reports
{

/// Text orientation, by number.
enum class OrientationCode : int { Level = 0, Upwards = 3, Downwards = 4 };

/// Content and format of a range of cells. Sizes and heights are points.
struct RangeFormat {
    QString value = {};
    double size = 8;
    bool wrap = false;
    bool merge = false;
    bool bold = false;
    /// 0 leaves the borders as they are.
    int borderStyle = 0;
    int borderWeight = excel::xlThin;
    int hAlign = excel::xlGeneral;
    /// Empty leaves the number format as it is.
    QString numberFormat = {};
    double rowHeight = 18;
    bool underline = false;
    int vAlign = excel::xlCenter;
    /// Index for REPORT_FontName, which corrects one beyond its list.
    int fontIndex = 1;
    OrientationCode orientationCode = OrientationCode::Level;
};

/// Which property REPORT_SetProperty sets, by number.
enum class RangeProperty : int {
    BorderStyle = 0,
    FontSize,
    HorizontalAlignment,
    MergeCells,
    WrapText,
    Bold,
    Underline,
    RowHeight,
    BorderWeight,
    VerticalAlignment,
    FontName,
};

/// One of ten font names, counted from 1. An index above ten is set to 1 in the caller's variable.
QString REPORT_FontName(int &index);

/// Appends a sheet; false on any error.
bool REPORT_AddSheet(const excel::Workbook &workbook);
/// Deletes all sheets but the first; false on any error.
bool REPORT_DeleteSheets(const excel::Workbook &workbook);

/// The formatting helpers report no errors: an error ends the call.
void REPORT_ShadeRange(const excel::Worksheet &sheet, const QString &c1, const QString &c2);
void REPORT_FormatRange(const excel::Worksheet &sheet, const QString &c1, const QString &c2, RangeFormat &format);
inline void REPORT_FormatRange(const excel::Worksheet &sheet, const QString &c1, const QString &c2, RangeFormat &&format)
{
    REPORT_FormatRange(sheet, c1, c2, format);
}
/// Border styles are 0, none, and 1, continuous; a selector above 10 does nothing.
void REPORT_SetProperty(const excel::Worksheet &sheet, const QString &c1, const QString &c2, int selector, const QVariant &value);
/// `titleColumns` as "A:A"; empty sets none.
void REPORT_PageSetup(const excel::Worksheet &sheet, const QString &titleRows, const QString &titleColumns,
                      const QString &leftHeader, const QString &rightHeader, int orientation, const QString &centerHeader);

/// A plain cell or range, whose errors are raised: of the format counts merge, wrap, value, size, bold, height, vertical
/// alignment and orientation, and the horizontal alignment where nothing is merged. Fonts and borders stay as they are.
void Write_Cell(const excel::Worksheet &sheet, const QString &c1, const QString &c2, const RangeFormat &format);

/// Cuts the caller's name to 30 characters; false when that is blank, holds one of \ / ? * [ ] or is the name of a sheet.
bool REPORT_SheetNameValid(const excel::Workbook &workbook, QString &name);
/// The whole name as given when it is valid, else "Sheet " and the number of sheets. The caller's name is cut either way.
QString REPORT_SafeSheetName(const excel::Workbook &workbook, QString &name);

void REPORT_HideExcel(excel::Application &application, bool hide);

/// Saves the active workbook below Reports, in `folder` unless that is blank, as "name-2026_11_22 14_05_09", and gives the
/// path back. An error, such as a name that is not allowed for files, is shown in a box; the workbook stays open.
std::optional<QString> REPORT_SaveReport(ScreenHost &host, excel::Application &application, const QString &folder,
                                         const QString &name);

/// Saves the active workbook in `folder`, an absolute path, under the name that `nameAt` makes of the current second, and returns
/// the path. Where a report of the same second has that name, the first free second after it gives the name.
/// Error 1004 as of SaveAs and checkedFileName.
QString saveByMoment(const excel::Application &application, const QString &folder,
                     const std::function<QString(const QDateTime &now)> &nameAt, std::optional<int> fileFormat = std::nullopt);

/// A line for every match of the pattern, case ignored, or "Failed".
void RegExp_Test(QString &result, const QString &pattern, const QString &text);
/// Number of a column counted from 1; 0 when it is none.
int Column_Index(const QString &name);

/// The folder below Reports, created with its parents; error 75 when that fails. An empty name means Reports itself.
QString reportsFolder(const QString &appPath, const QString &folder);
/// `name`, or error 1004 when it contains a character that one of the systems does not allow in file names.
QString checkedFileName(const QString &name);

} // namespace reports
