// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/QueuedDialogs.h"
#include "menu/MenuEntries.h"
#include "platform/controls/Theme.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"

#include <QTimer>

/// The program on the folder of its one argument, ended once its window has been painted.
int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    controls::Theme::apply(application, false);
    QueuedDialogs dialogs;
    MDI_Monitoring window(dialogs, menuEntries());
    if (window.load(FarmApplication::arguments().value(1)) != MDI_Monitoring::Load::Done) {
        return 1;
    }
    window.resize(1366, 768);
    window.show();
    window.repaint();
    QTimer::singleShot(0, &application, &QApplication::quit);
    return FarmApplication::exec();
}
