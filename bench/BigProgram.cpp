// SPDX-License-Identifier: GPL-3.0-or-later
#include "BigProgram.h"

#include "pestmon/frmPestMon2.h"
#include "shell/ChildScreen.h"

BigProgram::BigProgram()
{
    const MenuEntry entry{
        QStringLiteral("imSpray"), ZeroPosition::AfterReportsFolder, true, {}, [](ScreenHost &host, QWidget *parent) {
            return new frmPestMon2(host, parent);
        }};
    window = std::make_unique<MDI_Monitoring>(dialogs, std::vector<MenuEntry>{entry});
    window->load(farm.folder());
    window->resize(1366, 768);
    window->show();
}

namespace
{

std::unique_ptr<BigProgram> &instance()
{
    static std::unique_ptr<BigProgram> held;
    return held;
}

} // namespace

BigProgram &program()
{
    if (!instance()) {
        instance() = std::make_unique<BigProgram>();
    }
    return *instance();
}

void closeProgram()
{
    instance().reset();
}
