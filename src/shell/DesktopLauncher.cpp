// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/DesktopLauncher.h"

#include "platform/controls/Dialogs.h"
#include "screens/ScreenHost.h"

#include <QDesktopServices>
#include <QDir>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace
{

constexpr int AnswerMilliseconds = 3000;

/// The desktop's opener starts well even when it then finds no program, so the desktop is asked first where it can be.
bool desktopKnowsAProgram(const QString &path)
{
    const QString asker = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (asker.isEmpty()) {
        return true;
    }
    const QString kind = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name();
    QProcess query;
    query.start(asker, {QStringLiteral("query"), QStringLiteral("default"), kind});
    const bool answered = query.waitForFinished(AnswerMilliseconds) && query.exitStatus() == QProcess::NormalExit;
    return !answered || !query.readAllStandardOutput().trimmed().isEmpty();
}

} // namespace

bool DesktopLauncher::open(const QString &path)
{
    return desktopKnowsAProgram(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void DesktopLauncher::tellWhere(const QString &path)
{
    const QString place = QDir::toNativeSeparators(path);
    host_.showFailure(QStringLiteral("No program opens workbooks here; it lies at %1").arg(place));
    host_.dialogs().message(QStringLiteral("The workbook is saved, but this computer has no program that opens it.\n\nIt lies at "
                                           "%1")
                                .arg(place),
                            QString(), controls::BoxIcon::Information);
}
