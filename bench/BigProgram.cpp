// SPDX-License-Identifier: GPL-3.0-or-later
#include "BigProgram.h"

#include "menu/MenuEntries.h"

#include <QCoreApplication>
#include <QDir>

#include <map>

BigProgram::BigProgram(int instructions) : farm(instructions)
{
    window = std::make_unique<MDI_Monitoring>(dialogs, menuEntries());
    window->load(farm.folder());
    window->resize(1366, 768);
    window->show();
    // The copy of the day takes turns with the writes that are measured.
    constexpr int pollMilliseconds = 100;
    while (QDir(farm.folder() + QStringLiteral("/Databases/Backups")).entryList({QStringLiteral("PestMon*.mdb")}).isEmpty()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, pollMilliseconds);
    }
}

namespace
{

std::map<int, BigProgram> &instances()
{
    static std::map<int, BigProgram> held;
    return held;
}

} // namespace

BigProgram &programOf(int instructions)
{
    return instances().try_emplace(instructions, instructions).first->second;
}

BigProgram &program()
{
    return programOf(BigFarm::Instructions);
}

void closeProgram()
{
    instances().clear();
}
