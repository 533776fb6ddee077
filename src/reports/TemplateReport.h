// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Application.h"

#include <QString>

class ScreenHost;

namespace reports
{

/// A report that fills a template with the session's spreadsheet application, which is created on first use and released when
/// the report ends, with an error or not.
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

/// The session's spreadsheet application, created when there is none.
excel::Application &sessionApplication(ScreenHost &host);

} // namespace reports
