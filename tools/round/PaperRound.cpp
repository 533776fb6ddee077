// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaperRound.h"

#include "platform/controls/FileList.h"
#include "shell/MDI_Monitoring.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

namespace
{

constexpr int MinuteMilliseconds = 60'000;

bool runTool(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.start(tool, arguments);
    return process.waitForFinished(3 * MinuteMilliseconds) && process.exitCode() == 0;
}

/// A report's name bears the second, and a file of that second is never replaced.
void waitForANewName()
{
    constexpr int aSecond = 1100;
    QTest::qWait(aSecond);
}

} // namespace

PaperRound::PaperRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, Report &report)
    : window_(window), dialogs_(dialogs), launcher_(launcher), report_(report), driver_(window)
{
}

void PaperRound::expectWorkbook(const char *button, const QString &folder, const QString &begin, const QString &end)
{
    const qsizetype before = launcher_.opened.size();
    driver_.click(button);
    report_.check(launcher_.opened.size() == before + 1, QStringLiteral("one workbook is handed over by %1").arg(button));
    if (launcher_.opened.size() == before) {
        return;
    }
    const QFileInfo file(launcher_.opened.back());
    report_.check(file.isFile() && file.size() > 0, QStringLiteral("the file %1 is there").arg(file.filePath()));
    report_.compare(file.dir().dirName(), folder, QStringLiteral("folder of %1").arg(file.fileName()));
    report_.check(file.fileName().startsWith(begin) && file.fileName().endsWith(end),
                  QStringLiteral("the name %1").arg(file.fileName()));
    report_.step(QStringLiteral("Made %1").arg(file.fileName()));
}

void PaperRound::printFieldSheets()
{
    for (const char *button : {"cmdExcel", "cmdPALL"}) {
        dialogs_.queueAnswer(controls::Answer::Yes);
        expectWorkbook(button, QStringLiteral("Pest Monitor"), QStringLiteral("Count "), QStringLiteral(".xlsx"));
        report_.compare(dialogs_.takeLastText(), QStringLiteral("Print?"), QStringLiteral("question before printing"));
    }
}

void PaperRound::printFilledSheet()
{
    waitForANewName();
    expectWorkbook("cmdPP", QStringLiteral("Pest Monitor Reports"), QStringLiteral("Report_"), QStringLiteral(".xls"));
}

void PaperRound::printAnalyses()
{
    waitForANewName();
    expectWorkbook("cmdExcel", QStringLiteral("Pest Monitor Reports"), QStringLiteral("Analysis "), QStringLiteral(".xls"));
}

void PaperRound::runReports()
{
    driver_.click("ImPM");
    driver_.click("cmdSAllP");
    driver_.click("cmdSAll");
    report_.screenshot(window_, QStringLiteral("pest-monitor-info"));
    for (const char *button : {"cmdExcel", "cmdPALL"}) {
        waitForANewName();
        expectWorkbook(button, QStringLiteral("Pest Monitor Reports"), QStringLiteral("Report_"), QStringLiteral(".xls"));
    }
    driver_.click("cmdTCancel");
}

void PaperRound::openStored()
{
    driver_.click("imFF");
    auto &files = driver_.find<controls::FileList>("filePre");
    report_.check(files.ListCount() > 0, QStringLiteral("the field sheets are listed"));
    report_.screenshot(window_, QStringLiteral("existing-field-sheets"));
    if (files.ListCount() > 0) {
        const qsizetype before = launcher_.opened.size();
        QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, files.visualItemRect(files.item(0)).center());
        report_.check(launcher_.opened.size() == before + 1, QStringLiteral("a click opens a stored sheet"));
    }
    driver_.click("Command1");
}

void PaperRound::renderWorkbooks()
{
    const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    const QString painter = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
    if (office.isEmpty() || painter.isEmpty()) {
        report_.step(QStringLiteral("No office program is installed: the workbooks are not rendered"));
        return;
    }
    QStringList workbooks = launcher_.opened;
    workbooks.removeDuplicates();
    const QDir pages(report_.pictures() + QStringLiteral("/workbooks"));
    // A profile of its own, so that an office program that runs already is left alone.
    const QUrl profile = QUrl::fromLocalFile(QDir(report_.pictures()).filePath(QStringLiteral("../office-profile")));
    const QStringList convert{QStringLiteral("-env:UserInstallation=") + profile.toString(),
                              QStringLiteral("--headless"),
                              QStringLiteral("--convert-to"),
                              QStringLiteral("pdf"),
                              QStringLiteral("--outdir"),
                              pages.path()};
    report_.check(runTool(office, convert + workbooks), QStringLiteral("the office program reads the workbooks"));
    for (const QString &workbook : workbooks) {
        const QString name = QFileInfo(workbook).completeBaseName();
        const QString page = pages.filePath(name);
        report_.check(runTool(painter,
                              {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("70"), QStringLiteral("-l"),
                               QStringLiteral("3"), page + QStringLiteral(".pdf"), page}),
                      QStringLiteral("%1 has pages").arg(name));
    }
    report_.step(QStringLiteral("Images of the workbooks: %1").arg(QDir::toNativeSeparators(pages.path())));
}
