// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Range.h"

namespace excel
{
class Worksheets;

/// Whole columns, given as "A:O", "a:a" or "C".
class Columns
{
public:
    Columns(std::shared_ptr<model::Book> book, model::Sheet *sheet, int first, int last);

    /// Widths from the widest text of each column, by the program's font table: the same on every machine. Merged and
    /// wrapped cells do not count; a column without text stays as wide as it is.
    void AutoFit();
    /// Characters of the standard font, 0 to 255.
    void setColumnWidth(double characters);
    double ColumnWidth() const;
    /// "$A:$O".
    QString Address() const;

private:
    std::shared_ptr<model::Book> book_;
    model::Sheet *sheet_;
    int first_;
    int last_;
};

/// Print settings of a sheet. The default paper is A4; margins are points.
class PageSetup
{
public:
    PageSetup(std::shared_ptr<model::Book> book, model::Sheet *sheet);

    /// "$1:$7"; empty removes the title rows.
    void setPrintTitleRows(const QString &rows);
    QString PrintTitleRows() const;
    /// "$A:$A" or "A:A"; empty removes the title columns.
    void setPrintTitleColumns(const QString &columns);
    QString PrintTitleColumns() const;

    /// Texts with the codes &D date, &T time, &P page, &N pages; 249 characters in all three together.
    void setLeftHeader(const QString &text);
    QString LeftHeader() const;
    void setCenterHeader(const QString &text);
    QString CenterHeader() const;
    void setRightHeader(const QString &text);
    QString RightHeader() const;
    void setLeftFooter(const QString &text);
    QString LeftFooter() const;
    void setCenterFooter(const QString &text);
    QString CenterFooter() const;
    void setRightFooter(const QString &text);
    QString RightFooter() const;

    /// xlPortrait or xlLandscape.
    void setOrientation(int orientation);
    int Orientation() const;
    /// The number of the paper kind; xlPaperA4.
    void setPaperSize(int paper);
    int PaperSize() const;

    void setLeftMargin(double points);
    double LeftMargin() const;
    void setRightMargin(double points);
    double RightMargin() const;
    void setTopMargin(double points);
    double TopMargin() const;
    void setBottomMargin(double points);
    double BottomMargin() const;

    /// Shrinks the print to this number of pages across, with any number down; 0 prints at full size.
    void setFitToPagesWide(int pages);
    int FitToPagesWide() const;

private:
    model::Sheet &sheet() const;

    std::shared_ptr<model::Book> book_;
    model::Sheet *sheet_;
};

/// Handle to a sheet. An empty handle raises error 91, one whose sheet was deleted 1004.
class Worksheet
{
public:
    Worksheet() = default;
    Worksheet(std::shared_ptr<model::Book> book, model::Sheet *sheet);

    QString Name() const;
    /// Error 1004, and the name stays, for a name that is empty, has over 31 characters, one of : \ / ? * [ ], an apostrophe at
    /// either end, or equals that of another sheet regardless of case.
    void setName(const QString &name);
    /// Makes it the active sheet.
    void Activate();
    /// Without confirmation. Error 1004 for the only sheet of a workbook.
    void Delete();

    /// First and last cell, "A9" or "a9"; a single cell is given once or twice. Error 1004 for a cell outside the sheet.
    excel::Range Range(const QString &first, const QString &last) const;
    excel::Range Range(const QString &cell) const;
    /// The cell of a row and a column, both from 1; faster in loops than by name.
    excel::Range Cells(int row, int column) const;
    excel::Columns Columns(const QString &columns) const;
    excel::PageSetup PageSetup() const;
    /// Begins a printed page with a row, from 2; to be called with ascending rows.
    void addPageBreak(int row);

    bool isNothing() const { return sheet_ == nullptr; }

private:
    friend class excel::Worksheets;
    model::Sheet &sheet() const;

    std::shared_ptr<model::Book> book_;
    model::Sheet *sheet_ = nullptr;
};

} // namespace excel
