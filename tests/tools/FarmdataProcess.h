// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// One run of the tool, to its end.
struct FarmdataRun {
    int status = -1;
    QString output;
    QString errors;
};

inline FarmdataRun farmdata(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(FARMDATA_PROGRAM), arguments);
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}
