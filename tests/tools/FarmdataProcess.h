// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// One run of the tool, to its end; the lines of its texts end with a line feed on every system.
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
    const auto text = [](const QByteArray &bytes) { return QString::fromLocal8Bit(bytes).replace("\r\n", "\n"); };
    return {ended ? process.exitCode() : -1, text(process.readAllStandardOutput()), text(process.readAllStandardError())};
}
