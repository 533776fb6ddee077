// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/ExcelError.h"
#include "platform/excel/Launcher.h"
#include "platform/excel/Worksheet.h"

#include <optional>

/// An in-process spreadsheet engine with the object names of spreadsheet automation. A property `X` of the engine is
/// read by `X()` and set by `setX()`. Handles are cheap to copy; a workbook lives as long as one of them.
namespace excel
{
namespace model
{
struct Session;
}

/// The sheets of a workbook, counted from 1.
class Worksheets
{
public:
    explicit Worksheets(std::shared_ptr<model::Book> book);

    int Count() const;
    /// Adds a sheet after `after` with the first free name "Sheet1", "Sheet2" ... and makes it active.
    Worksheet Add(const Worksheet &after);
    /// Error 9 outside 1 to Count.
    Worksheet Item(int index) const;

private:
    std::shared_ptr<model::Book> book_;
};

/// Handle to a workbook; an empty one raises error 91.
class Workbook
{
public:
    Workbook() = default;
    Workbook(std::shared_ptr<model::Session> session, std::shared_ptr<model::Book> book);

    excel::Worksheets Worksheets() const;
    Worksheet Worksheets(int index) const;
    excel::Worksheets Sheets() const { return Worksheets(); }
    Worksheet Sheets(int index) const { return Worksheets(index); }
    Worksheet ActiveSheet() const;

    /// Writes a temporary file in the same folder and renames it; when that fails the old file stays as it was.
    /// `fileFormat` is xlOpenXMLWorkbook or xlExcel8; without it an opened workbook keeps its own format and a new one takes
    /// that of the ending. Error 1004, naming the file: a folder that is missing or refuses, a target that is a folder or
    /// read-only, an existing file while DisplayAlerts is on, a sheet beyond the limits of .xls.
    /// Hands the file over to the launcher when the application is visible.
    void SaveAs(const QString &fileName, std::optional<int> fileFormat = std::nullopt);
    /// The path it was opened from or last saved to; empty for a new workbook.
    QString FullName() const;

    bool isNothing() const { return !book_; }

private:
    model::Book &book() const;

    std::shared_ptr<model::Session> session_;
    std::shared_ptr<model::Book> book_;
};

/// The workbooks of a session.
class Workbooks
{
public:
    explicit Workbooks(std::shared_ptr<model::Session> session);

    /// Adds a workbook with one sheet "Sheet1" and makes it active.
    Workbook Add();
    /// Opens a .xls and makes it active. Content beyond cells and formats (images, notes, formulas,
    /// validations) is preserved. Error 1004, naming the file, when it is missing, damaged, protected by a password
    /// or of another format.
    Workbook Open(const QString &path);
    /// Hands a finished file over to the desktop's spreadsheet program, unread. Error 1004 when it is missing, 429 when no
    /// program takes it.
    void OpenStored(const QString &path);
    int Count() const;

private:
    std::shared_ptr<model::Session> session_;
};

/// A session of the engine. Each finished workbook is passed to the launcher once: when it is both saved by SaveAs and the
/// application visible, whichever comes last. It stays open for the user when the application ends.
class Application
{
public:
    /// `launcher` must outlive the session; without one no workbook is opened and OpenStored finds no program.
    explicit Application(Launcher *launcher = nullptr);

    excel::Workbooks Workbooks() const;
    /// Error 91 when none is open.
    Workbook ActiveWorkbook() const;
    Worksheet ActiveSheet() const;
    /// On the active sheet.
    excel::Range Range(const QString &first, const QString &last) const;
    excel::Range Range(const QString &cell) const;
    excel::Columns Columns(const QString &columns) const;
    double CentimetersToPoints(double centimetres) const;

    /// False by default.
    bool Visible() const;
    void setVisible(bool visible);
    /// Stored without effect; there is no screen to update.
    bool ScreenUpdating() const;
    void setScreenUpdating(bool updating);
    /// True by default. When false, SaveAs replaces an existing file.
    bool DisplayAlerts() const;
    void setDisplayAlerts(bool alerts);

private:
    std::shared_ptr<model::Session> session_;
};

} // namespace excel
