// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Application.h"

#include <QString>

class ScreenHost;

/// One report that fills a template with the session's spreadsheet application, which is made on first use and let go when the
/// report ends, however it ends.
class TemplateReport
{
public:
    /// Opens `name` in the folder Templates, found without regard to case. Error 1004, naming the file, when it cannot be read.
    TemplateReport(ScreenHost &host, const QString &name);
    ~TemplateReport();
    TemplateReport(const TemplateReport &) = delete;
    TemplateReport &operator=(const TemplateReport &) = delete;

    excel::Application &application();
    /// Saves in Reports/Pest Monitor Reports as `prefix`, the long date, the time and ".xls", shows the workbook and returns its
    /// path.
    QString save(const QString &prefix);

private:
    ScreenHost &host_;
};

/// The session's spreadsheet application, made when there is none.
excel::Application &sessionApplication(ScreenHost &host);
