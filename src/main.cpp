// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"
#include "menu/MenuEntries.h"
#include "platform/controls/Dialogs.h"
#include "shell/DesktopColours.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"
#include "shell/ProgramFolder.h"
#include "shell/SiblingProgram.h"
#include "shell/WindowRequest.h"

#include <QPointer>

namespace
{

constexpr int Failed = 1;

int run(FarmApplication &application)
{
    controls::MessageBoxes boxes;
    try {
        const ProgramFolders folders = ProgramFolders::ofThisProgram();
        // Before the folder is chosen: the databases of the running copy may have been moved meanwhile.
        const auto lock = tryProgramLock(folders.program);
        if (!lock) {
            boxes.message(MDI_Monitoring::alreadyOpenText(), {}, controls::BoxIcon::Critical);
            return Failed;
        }
        const QString folder = programFolder(folders);
        if (!holdsDatabases(folder)) {
            makeProgramFolder(folder, folders.templates);
            if (boxes.question(firstFarmText(folder), {}, controls::Answer::Yes) == controls::Answer::Yes) {
                if (const QString reason = startSibling(mainModuleProgram()); !reason.isEmpty()) {
                    boxes.message(reason, {}, controls::BoxIcon::Critical);
                }
            }
            return Failed;
        }
        MDI_Monitoring window(boxes, menuEntries());
        if (window.load(folder) != MDI_Monitoring::Load::Done) {
            return Failed;
        }
        window.makeTemplates(folders.templates);
        window.setMainModuleStarter([](const QString &page) {
            return startSibling(mainModuleProgram(), page.isEmpty() ? QStringList() : QStringList{page});
        });
        const WindowRequest requests(folder, WindowRequest::Program::Monitoring);
        QObject::connect(&requests, &WindowRequest::requested, &window, [&window] { bringToFront(window); });
        boxes.setParent(&window);
        application.setErrorHandler([shown = QPointer(&window)](const basic::RunTimeError &error) {
            if (shown) {
                shown->showError(error);
            }
        });
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
    const DesktopColours colours(application);
    return run(application);
}
