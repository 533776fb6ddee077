// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <vector>

namespace excel
{
class Application;
}
class ScreenHost;

namespace reports
{

/// The content of the capture tab for the filled sheet.
struct FilledSheet {
    QString block = {};
    QDate completed = {};
    QString week = {};
    QString person = {};
    QString note = {};
    /// The shown columns of every grid row, headings included; an empty text is printed as a blank.
    std::vector<QStringList> rows = {};
};

/// Writes the sheet into the open template. Columns beyond "AE" have no cells.
void writeFilledSheet(const excel::Application &application, const FilledSheet &sheet);

/// Fills the template, saves it in Reports/Pest Monitor Reports and opens it.
void Print_Filled_Sheet(ScreenHost &host, const FilledSheet &sheet);

} // namespace reports
