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

/// What stands in the capture tab, as it is to be put on paper.
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

/// Fills the template, saves it in Reports/Pest Monitor Reports and hands it over.
void Print_Filled_Sheet(ScreenHost &host, const FilledSheet &sheet);
