// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Launcher.h"

#include <QStringList>

/// Starts nothing and records its calls, for the scripted round and the tests.
class RecordingLauncher : public excel::Launcher
{
public:
    bool open(const QString &path) override
    {
        if (hasProgram) {
            opened.append(path);
        }
        return hasProgram;
    }
    void reportPath(const QString &path) override { reported.append(path); }

    /// False: behaves as a desktop without a spreadsheet program.
    bool hasProgram = true;
    QStringList opened;
    QStringList reported;
};
