// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnalysisRound.h"
#include "FirstDayRound.h"
#include "GraphRound.h"
#include "MonitoringRound.h"

#include "mainmodule/MainModuleWindow.h"
#include "menu/MenuEntries.h"
#include "platform/basic/RunTimeError.h"
#include "platform/controls/Theme.h"
#include "screens/ChildScreen.h"
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

/// The parts of the round on one window.
struct Rounds {
    MonitoringRound monitoring;
    AnalysisRound analyses;
    GraphRound graphs;
    PaperRound papers;
};

/// One run of the program on the farm's folder, from its start to its end.
void runProgram(const QString &folder, Report &report, const std::function<void(Rounds &)> &play)
{
    QueuedDialogs dialogs;
    RecordingLauncher launcher;
    MDI_Monitoring window(dialogs, menuEntries());
    window.setLauncher(launcher);
    report.check(window.load(folder) == MDI_Monitoring::Load::Done, QStringLiteral("the program starts"));
    window.resize(WindowSize);
    window.show();
    window.activateWindow();
    report.check(QTest::qWaitForWindowActive(&window), QStringLiteral("the window shows"));
    Rounds rounds{{window, dialogs, launcher, report},
                  {window, dialogs, launcher, report},
                  {window, dialogs, report},
                  {window, dialogs, launcher, report}};
    play(rounds);
    report.check(dialogs.allAsExpected(), QStringLiteral("exactly the expected boxes were shown"));
}

bool playOn(const QString &folder)
{
    Report report(QDir(folder).filePath(QStringLiteral("pictures")));
    runProgram(folder, report, [](Rounds &rounds) {
        rounds.monitoring.openScreen();
        rounds.monitoring.playCounts();
        rounds.monitoring.playAnswers();
        rounds.monitoring.playReports();
        rounds.analyses.play();
        rounds.graphs.play();
        rounds.papers.renderWorkbooks();
    });
    runProgram(folder, report, [](Rounds &rounds) { rounds.monitoring.reopen(MonitoringRound::countNotes()); });
    return report.finish();
}

/// A window of the Main Module on the office's folder.
void runMainModule(const QString &folder, Report &report,
                   const std::function<void(mainmodule::MainModuleWindow &, QueuedDialogs &)> &play)
{
    QueuedDialogs dialogs;
    mainmodule::MainModuleWindow window(dialogs);
    window.load(folder);
    window.resize(WindowSize);
    window.show();
    window.activateWindow();
    report.check(QTest::qWaitForWindowActive(&window), QStringLiteral("the window shows"));
    play(window, dialogs);
    report.check(dialogs.allAsExpected(), QStringLiteral("exactly the expected boxes were shown"));
}

bool playFirstDay(const QString &folder)
{
    Report report(QDir(folder).filePath(QStringLiteral("pictures")));
    FirstDayRound round(report);
    runMainModule(folder, report, [&](mainmodule::MainModuleWindow &window, QueuedDialogs &) { round.enterLists(window); });
    QueuedDialogs dialogs;
    RecordingLauncher launcher;
    {
        MDI_Monitoring window(dialogs, menuEntries());
        window.setLauncher(launcher);
        report.check(window.load(folder) == MDI_Monitoring::Load::Done, QStringLiteral("the monitoring starts"));
        window.resize(WindowSize);
        window.show();
        window.activateWindow();
        report.check(QTest::qWaitForWindowActive(&window), QStringLiteral("the window shows"));
        round.printFieldSheet(window, dialogs, launcher);
    }
    runMainModule(folder, report, [&](mainmodule::MainModuleWindow &window, QueuedDialogs &boxes) {
        round.showOtherPages(window, folder, boxes);
    });
    return report.finish();
}

} // namespace

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    const QStringList arguments = FarmApplication::arguments();
    const QStringList options = arguments.mid(2);
    const bool dark = options.contains(QLatin1String("dark"));
    const bool firstDay = options.contains(QLatin1String("first-day"));
    if (arguments.size() < 2 || options.size() != (dark ? 1 : 0) + (firstDay ? 1 : 0)
        || arguments[1].startsWith(QLatin1Char('-'))) {
        QTextStream(stderr)
            << "Usage: round FOLDER [first-day] [dark]\n\nPlays a monitoring round through the real screens, light or dark, on "
               "the "
               "farm whose Databases folder is in FOLDER, and changes that farm. first-day plays the first day of a new office "
               "in an empty FOLDER.\n";
        return EXIT_FAILURE;
    }
    controls::Theme::apply(application, dark);
    try {
        const QString folder = QDir(arguments[1]).absolutePath();
        return (firstDay ? playFirstDay(folder) : playOn(folder)) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const basic::RunTimeError &error) {
        QTextStream(stderr) << "The round ended early: " << error.description() << Qt::endl;
        return EXIT_FAILURE;
    }
}
