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

/// On a farm of so many instructions, made on first use; the largest unless told.
BigProgram &programOf(int instructions);
BigProgram &program();
/// To be called while the application still stands; the farms are taken away with it.
void closeProgram();
