// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/TemplateReport.h"

#include "common/SessionContext.h"
#include "platform/basic/Formats.h"
#include "platform/basic/TextFiles.h"
#include "reports/modReporting.h"
#include "screens/ScreenHost.h"

namespace reports
{

excel::Application &sessionApplication(ScreenHost &host)
{
    std::optional<excel::Application> &application = host.excelApplication();
    if (!application) {
        application.emplace(&host.launcher());
    }
    return *application;
}

TemplateReport::TemplateReport(ScreenHost &host, const QString &name) : host_(host)
{
    const QString path = host.session().AppPath + QStringLiteral("/Templates/") + name;
    try {
        sessionApplication(host).Workbooks().Open(basic::findPath(path).value_or(path));
    } catch (const basic::RunTimeError &) {
        host_.excelApplication().reset();
        throw;
    }
}

TemplateReport::~TemplateReport()
{
    host_.excelApplication().reset();
}

excel::Application &TemplateReport::application()
{
    return sessionApplication(host_);
}

QString TemplateReport::save(const QString &prefix)
{
    const auto nameAt = [&prefix](const QDateTime &now) {
        return prefix + basic::longDate(now.date()) + now.toString(QStringLiteral("  HH-mm-ss")) + QStringLiteral(".xls");
    };
    const QString folder = reportsFolder(host_.session().AppPath, QStringLiteral("Pest Monitor Reports"));
    const QString path = saveByMoment(application(), folder, nameAt);
    application().setVisible(true);
    return path;
}

} // namespace reports
