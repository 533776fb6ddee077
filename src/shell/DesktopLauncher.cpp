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

constexpr int QueryTimeout = 3000;

/// The desktop's opener reports success even when there is no program, so the desktop is queried first if possible.
bool hasDefaultProgram(const QString &path)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (tool.isEmpty()) {
        return true;
    }
    const QString kind = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name();
    QProcess query;
    query.start(tool, {QStringLiteral("query"), QStringLiteral("default"), kind});
    const bool answered = query.waitForFinished(QueryTimeout) && query.exitStatus() == QProcess::NormalExit;
    return !answered || !query.readAllStandardOutput().trimmed().isEmpty();
}

} // namespace

bool DesktopLauncher::open(const QString &path)
{
    return hasDefaultProgram(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void DesktopLauncher::reportPath(const QString &path)
{
    const QString file = QDir::toNativeSeparators(path);
    host_.showStatus(QStringLiteral("Saved at %1; no program opens workbooks here").arg(file));
    host_.dialogs().message(
        QStringLiteral("The workbook is saved, but this computer has no program that opens it.\n\nIt is saved at "
                       "%1")
            .arg(file),
        QString(), controls::BoxIcon::Information);
}
