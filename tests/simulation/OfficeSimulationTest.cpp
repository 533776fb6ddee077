// SPDX-License-Identifier: GPL-3.0-or-later
#include "OfficeSimulation.h"
#include "OfficeModel.h"
#include "Timings.h"
#include "menu/MenuEntries.h"
#include "platform/basic/Clock.h"
#include "platform/basic/RunTimeError.h"
#include "screens/ChildScreen.h"
#include "shell/FarmApplication.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QTest>

/// Three years of a farm office in one process. FARM_SIMULATION_INSTRUCTIONS is the number of instructions a year; timings and
/// memory are checked in long runs only.
class OfficeSimulationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void threeYears();
    void cleanup() { basic::Clock::stopAt({}); }

private:
    static void fill(TemporaryFarm &farm, OfficeModel &model);
};

void OfficeSimulationTest::fill(TemporaryFarm &farm, OfficeModel &model)
{
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.addWorker(QStringLiteral("Anna"));
    const int variety = farm.addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    for (int n = 1; n <= 8; ++n) {
        const int points = 3 + n % 3;
        const int block = farm.addBlock({.name = QStringLiteral("Block %1").arg(n), .points = points});
        model.points[block] = points;
        farm.addPlanting({.name = QStringLiteral("Planting %1").arg(n), .block = block, .variety = variety});
    }
    for (int n = 1; n <= 10; ++n) {
        farm.addTarget(QStringLiteral("Pest %1").arg(n, 2, 10, QLatin1Char('0')));
    }
    farm.close();
    QDir(farm.appPath()).mkdir(QStringLiteral("Templates"));
    for (const QString &name : QDir(QStringLiteral(TEMPLATES_FOLDER)).entryList({QStringLiteral("*.xls")})) {
        QVERIFY(QFile::copy(QStringLiteral(TEMPLATES_FOLDER "/") + name, farm.appPath() + QStringLiteral("/Templates/") + name));
    }
}

void OfficeSimulationTest::threeYears()
{
    constexpr int Years = 3;
    constexpr int FirstYear = 2024;
    constexpr int FewInstructions = 7;
    constexpr int LongRun = 30;
    constexpr double MaxMegabytes = 8.0;
    bool isSet = false;
    const int wanted = qEnvironmentVariableIntValue("FARM_SIMULATION_INSTRUCTIONS", &isSet);
    const int perYear = isSet ? wanted : FewInstructions;

    TemporaryFarm farm;
    OfficeModel model;
    Timings timings;
    fill(farm, model);
    basic::Clock::stopAt(QDateTime(QDate(FirstYear, 1, 1), QTime(7, 0)));
    QueuedDialogs dialogs;
    RecordingLauncher launcher;
    MDI_Monitoring window(dialogs, menuEntries());
    window.setLauncher(launcher);
    QCOMPARE(window.load(farm.appPath()), MDI_Monitoring::Load::Done);
    window.resize(1366, 768);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    OfficeSimulation simulation(window, dialogs, launcher, model, timings);
    for (int year = 0; year < Years; ++year) {
        simulation.startYear(FirstYear + year);
        for (int n = 0; n < perYear; ++n) {
            simulation.work(year * perYear + n, QDate(FirstYear + year, 1, 2).addDays(n * 360 / perYear));
        }
        timings.endYear();
        const QStringList differences = model.differencesFrom(farm.filePath(store::DatabaseFile::Pest));
        QVERIFY2(differences.isEmpty(), qPrintable(differences.join(u'\n')));
        QVERIFY2(simulation.faults().isEmpty(), qPrintable(simulation.faults().join(u'\n')));
    }
    QVERIFY(dialogs.allAsExpected());
    for (const QString &line : timings.table()) {
        qInfo("%s", qPrintable(line));
    }
    if (perYear >= LongRun) {
        QCOMPARE(timings.whatGrew(MaxMegabytes), QStringList());
    }
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    OfficeSimulationTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "OfficeSimulationTest.moc"
