// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"
#include "mainmodule/MainModuleWindow.h"
#include "platform/controls/Dialogs.h"
#include "shell/DesktopColours.h"
#include "shell/FarmApplication.h"
#include "shell/ProgramFolder.h"
#include "shell/SiblingProgram.h"
#include "shell/WindowRequest.h"

#include <QPointer>

namespace
{

constexpr int Failed = 1;

/// The monitoring runs once; its lock shows whether it is open, and then its window is asked for.
QString startMonitoring(const QString &program, const QString &folder)
{
    if (!tryProgramLock(program)) {
        WindowRequest::leave(folder, WindowRequest::Program::Monitoring);
        return QStringLiteral("Pest monitoring is open already; it shows changed blocks when its window is entered.");
    }
    return startSibling(monitoringProgram());
}

int run(FarmApplication &application)
{
    controls::MessageBoxes boxes;
    const QString page = FarmApplication::arguments().value(1);
    try {
        const ProgramFolders folders = ProgramFolders::ofThisProgram();
        const QString folder = programFolder(folders);
        makeProgramFolder(folder, folders.templates);
        const auto lock = tryProgramLock(FarmApplication::applicationFilePath());
        if (!lock) {
            WindowRequest::leave(folder, WindowRequest::Program::MainModule, page);
            return 0;
        }
        mainmodule::MainModuleWindow window(boxes);
        boxes.setParent(&window);
        window.setMonitoringStarter([&] { return startMonitoring(folders.program, folder); });
        application.setErrorHandler([shown = QPointer(&window)](const basic::RunTimeError &error) {
            if (shown) {
                shown->showError(error);
            }
        });
        window.load(folder, page);
        window.showMaximized();
        return FarmApplication::exec();
    } catch (const basic::RunTimeError &error) {
        boxes.message(errorText(error), {}, controls::BoxIcon::Critical);
        return Failed;
    }
}

} // namespace

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    FarmApplication::setApplicationName(QStringLiteral("Main Module"));
    FarmApplication::setDesktopFileName(QStringLiteral("farm-main-module"));
    const DesktopColours colours(application);
    return run(application);
}
