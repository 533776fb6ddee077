// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/SiblingProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

SiblingProgram monitoringProgram()
{
    return {QStringLiteral("FarmMonitoring"), QStringLiteral("farm-monitoring")};
}

SiblingProgram mainModuleProgram()
{
    return {QStringLiteral("MainModule"), QStringLiteral("farm-main-module")};
}

QString startSibling(const SiblingProgram &program, const QStringList &arguments)
{
    const QDir folder(QCoreApplication::applicationDirPath());
#ifdef Q_OS_WIN
    const QString ending = QStringLiteral(".exe");
#else
    const QString ending;
#endif
    for (const QString &name : {program.builtName, program.installedName}) {
        const QString path = folder.filePath(name + ending);
        if (QFileInfo(path).isExecutable()) {
            return QProcess::startDetached(path, arguments) ? QString() : QStringLiteral("%1 could not be started.").arg(path);
        }
    }
    return QStringLiteral("The program %1 is not in %2.").arg(program.builtName, QDir::toNativeSeparators(folder.path()));
}
