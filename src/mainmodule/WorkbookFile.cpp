// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/WorkbookFile.h"

#include "platform/basic/RunTimeError.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace mainmodule
{

namespace
{

/// Where people keep their workbooks; the last folder afterwards.
QString &folder()
{
    static QString last = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return last;
}

void rememberFolder(const QString &path)
{
    folder() = QFileInfo(path).absolutePath();
}

} // namespace

void saveWorkbook(ListHost &host, const QString &title, const QString &name, const QString &filter,
                  const std::function<void(const QString &path)> &write)
{
    const std::optional<QString> chosen =
        host.dialogs().chooseFile(controls::FilePurpose::Save, title, QDir(folder()).filePath(name), filter);
    if (!chosen) {
        return;
    }
    const QString path = QFileInfo(*chosen).suffix().isEmpty() ? *chosen + QStringLiteral(".xlsx") : *chosen;
    rememberFolder(path);
    try {
        const controls::BusyPointer busy;
        write(path);
        host.showStatus(QStringLiteral("Written to %1").arg(QDir::toNativeSeparators(path)));
    } catch (const basic::RunTimeError &error) {
        host.dialogs().message(error.description(), title, controls::BoxIcon::Exclamation);
    }
}

std::optional<ReadFile> openWorkbook(ListHost &host)
{
    const QString title = QStringLiteral("Open workbook");
    const std::optional<QString> path = host.dialogs().chooseFile(controls::FilePurpose::Open, title, folder(), ReadableFilter);
    if (!path) {
        return std::nullopt;
    }
    rememberFolder(*path);
    try {
        const controls::BusyPointer busy;
        return ReadFile{*path, sheets::readWorkbook(*path)};
    } catch (const basic::RunTimeError &error) {
        host.dialogs().message(error.description(), title, controls::BoxIcon::Exclamation);
        return std::nullopt;
    }
}

} // namespace mainmodule
