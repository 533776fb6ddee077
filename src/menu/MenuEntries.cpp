// SPDX-License-Identifier: GPL-3.0-or-later
#include "menu/MenuEntries.h"

#include "analysis/frmMonLeave.h"
#include "graphs/frmPestMGraph.h"
#include "pestmon/frmPestMon2.h"
#include "reports/frmRepPestInfo.h"
#include "reports/frmRepPestMon.h"

namespace
{

template <typename Screen> std::function<ChildScreen *(ScreenHost &, QWidget *)> screen()
{
    return [](ScreenHost &host, QWidget *parent) { return new Screen(host, parent); };
}

MenuEntry analyses(const char *picture, const char *mode)
{
    return {QLatin1String(picture), ZeroPosition::First, true, QLatin1String(mode), screen<frmMonLeave>()};
}

} // namespace

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
