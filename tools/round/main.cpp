// SPDX-License-Identifier: GPL-3.0-or-later
#include "MonitoringRound.h"

#include "pestmon/frmPestMon2.h"
#include "platform/basic/RunTimeError.h"
#include "platform/controls/Look.h"
#include "reports/frmRepPestInfo.h"
#include "reports/frmRepPestMon.h"
#include "shell/ChildScreen.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"

#include <QDir>
#include <QTest>
#include <QTextStream>

#include <cstdlib>
#include <functional>

namespace
{

constexpr QSize WindowSize(1366, 768);

template <typename Screen> std::function<ChildScreen *(ScreenHost &, QWidget *)> screen()
{
    return [](ScreenHost &host, QWidget *parent) { return new Screen(host, parent); };
}

/// One run of the program on the farm's folder, from its start to its end.
void runProgram(const QString &folder, Report &report, const std::function<void(MonitoringRound &)> &play)
{
    controls::QueuedDialogs dialogs;
    RecordingLauncher launcher;
    MDI_Monitoring window(dialogs,
                          {{QStringLiteral("imSpray"), ZeroPosition::AfterReportsFolder, true, {}, screen<frmPestMon2>()},
                           {QStringLiteral("ImPM"), ZeroPosition::Never, false, {}, screen<frmRepPestInfo>()},
                           {QStringLiteral("imFF"), ZeroPosition::Never, false, {}, screen<frmRepPestMon>()}});
    window.setLauncher(launcher);
    report.check(window.load(folder) == MDI_Monitoring::Load::Done, QStringLiteral("the program starts"));
    window.resize(WindowSize);
    window.show();
    window.activateWindow();
    report.check(QTest::qWaitForWindowActive(&window), QStringLiteral("the window shows"));
    MonitoringRound round(window, dialogs, launcher, report);
    play(round);
    report.check(dialogs.allAsExpected(), QStringLiteral("no box came that was not expected, and none stayed away"));
}

bool playOn(const QString &folder)
{
    Report report(QDir(folder).filePath(QStringLiteral("pictures")));
    runProgram(folder, report, [](MonitoringRound &round) {
        round.openScreen();
        round.playCounts();
        round.playAnswers();
        round.playReports();
    });
    runProgram(folder, report, [](MonitoringRound &round) { round.reopen(MonitoringRound::countNotes()); });
    return report.finish();
}

} // namespace

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    const QStringList arguments = FarmApplication::arguments();
    if (arguments.size() != 2 || arguments[1].startsWith(QLatin1Char('-'))) {
        QTextStream(stderr)
            << "Usage: round FOLDER\n\nPlays a monitoring round through the real screens on the farm whose Databases folder "
               "lies in FOLDER, and changes that farm.\n";
        return EXIT_FAILURE;
    }
    controls::Look::apply(application, false);
    try {
        return playOn(QDir(arguments[1]).absolutePath()) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const basic::RunTimeError &error) {
        QTextStream(stderr) << "The round ended early: " << error.description() << Qt::endl;
        return EXIT_FAILURE;
    }
}
