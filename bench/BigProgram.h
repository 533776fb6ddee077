// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BigFarm.h"
#include "fakes/QueuedDialogs.h"
#include "shell/MDI_Monitoring.h"

#include <memory>

/// The program started on the big farm.
struct BigProgram {
    explicit BigProgram(int instructions);
    template <typename Control> Control &find(const char *name) { return *window->findChild<Control *>(QLatin1String(name)); }

    BigFarm farm;
    QueuedDialogs dialogs;
    std::unique_ptr<MDI_Monitoring> window;
};

/// On a farm of so many instructions, made on first use; the largest unless output.
BigProgram &programOf(int instructions);
BigProgram &program();
/// To be called before the application object ends; the farms are removed with it.
void closeProgram();
