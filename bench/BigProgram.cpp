// SPDX-License-Identifier: GPL-3.0-or-later
#include "BigProgram.h"

#include "menu/MenuEntries.h"

BigProgram::BigProgram()
{
    window = std::make_unique<MDI_Monitoring>(dialogs, menuEntries());
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
