// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmMonLeave.h"
#include "graphs/frmPestMGraph.h"
#include "pestmon/frmPestMon2.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/Look.h"
#include "reports/frmRepPestInfo.h"
#include "reports/frmRepPestMon.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"

#include <sys/stat.h>

#include <functional>

namespace
{

constexpr int Failed = 1;

template <typename Screen> std::function<ChildScreen *(ScreenHost &, QWidget *)> screen()
{
    return [](ScreenHost &host, QWidget *parent) { return new Screen(host, parent); };
}

MenuEntry analyses(const char *picture, const char *mode)
{
    return {QLatin1String(picture), ZeroPosition::First, true, QLatin1String(mode), screen<frmMonLeave>()};
}

/// What each picture opens. A picture that is not told here shows as not yet available.
std::vector<MenuEntry> menuEntries()
{
    return {
        {QStringLiteral("imSpray"), ZeroPosition::AfterReportsFolder, true, {}, screen<frmPestMon2>()},
        {QStringLiteral("ImPM"), ZeroPosition::Never, false, {}, screen<frmRepPestInfo>()},
        {QStringLiteral("imFF"), ZeroPosition::Never, false, {}, screen<frmRepPestMon>()},
        {QStringLiteral("imGG"), ZeroPosition::Never, true, {}, screen<frmPestMGraph>()},
        analyses("imLeave", "Leaf"),
        analyses("imAsset", "Fruit"),
        analyses("imBas", "Basic"),
        analyses("imEx", "Ex"),
        analyses("imMic", "Micro"),
    };
}

int run(FarmApplication &application)
{
    controls::MessageBoxes boxes;
    try {
        MDI_Monitoring window(boxes, menuEntries());
        if (window.load(QCoreApplication::applicationDirPath()) != MDI_Monitoring::Load::Done) {
            return Failed;
        }
        boxes.setParent(&window);
        application.setErrorHandler([&window](const basic::RunTimeError &error) { window.showError(error); });
        window.showMaximized();
        return FarmApplication::exec();
    } catch (const basic::RunTimeError &error) {
        boxes.message(errorText(error), {}, controls::BoxIcon::Critical);
        return Failed;
    }
}

} // namespace

int main(int argc, char **argv)
{
    // What the program makes is for its user alone; whoever shares a farm's files gives the rights himself.
    ::umask(S_IRWXG | S_IRWXO);
    FarmApplication application(argc, argv);
    controls::Look::apply(application);
    return run(application);
}
