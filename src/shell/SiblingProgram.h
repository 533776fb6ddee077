// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Another program of the suite, in the folder of this one: built under one name, installed under another.
struct SiblingProgram {
    QString builtName;
    QString installedName;
};

SiblingProgram monitoringProgram();
SiblingProgram mainModuleProgram();

/// Starts it and leaves it running. Returns why it could not be started, else an empty text.
QString startSibling(const SiblingProgram &program, const QStringList &arguments = {});
