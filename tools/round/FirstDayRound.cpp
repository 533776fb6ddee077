// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirstDayRound.h"

#include "mainmodule/MainModuleWindow.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "shell/MDI_Monitoring.h"
#include "store/lists/ListBooks.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace
{

constexpr int Blocks = 30;
/// Rows of the list of pages.
enum PageRow { StartRow, FarmsRow, BlocksRow, PlantingsRow, CropsRow, WorkersRow, PestsRow, SeasonsRow };
constexpr int BlockMark = 4;
constexpr int PestMark = 3;

/// Runs as soon as the dialog that the next click opens is shown.
template <typename Body> void inNextDialog(Body &&body)
{
    QTimer::singleShot(0, qApp, [body] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            body(*dialog);
        }
    });
}

} // namespace

void FirstDayRound::click(UiDriver &driver, const char *name)
{
    ++actions_;
    driver.click(name);
}

void FirstDayRound::clickPage(UiDriver &driver, int page)
{
    ++actions_;
    auto &list = driver.find<QListWidget>("lstPages");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(page)).center());
}

void FirstDayRound::key(UiDriver &driver, Qt::Key key)
{
    ++actions_;
    driver.key(key);
}

void FirstDayRound::type(UiDriver &driver, const QString &text)
{
    ++actions_;
    driver.type(text);
}

void FirstDayRound::pasteBlocks()
{
    QStringList rows{QStringLiteral("Block\tPoints")};
    for (int i = 1; i <= Blocks; ++i) {
        rows.append(QStringLiteral("Block %1\t%2").arg(i).arg(4 + i % 5));
    }
    QGuiApplication::clipboard()->setText(rows.join(u'\n'));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
}

void FirstDayRound::goOnToStarters(UiDriver &driver, const QList<int> &rows, const QString &picture)
{
    inNextDialog([&](QWidget &dialog) {
        UiDriver inside(dialog);
        if (rows.isEmpty()) {
            click(inside, "cmdTickAll");
        }
        for (const int row : rows) {
            ++actions_;
            inside.clickCell("grdStarter", row, 0);
        }
        report_.screenshot(dialog, picture);
        click(inside, "cmdAddTicked");
    });
    click(driver, "cmdNext");
    // A display without window manager does not return to the window by itself.
    QWidget *window = driver.find<QWidget>("grdList").window();
    window->activateWindow();
    report_.check(QTest::qWaitForWindowActive(window), QStringLiteral("the window is active again"));
}

void FirstDayRound::enterLists(mainmodule::MainModuleWindow &window)
{
    UiDriver driver(window);
    report_.screenshot(window, QStringLiteral("main-module-empty"));
    report_.step(QStringLiteral("Begin a new office and name the farm"));
    key(driver, Qt::Key_Return);
    report_.screenshot(window, QStringLiteral("main-module-start"));
    key(driver, Qt::Key_Return);
    type(driver, QStringLiteral("Riverbend"));
    key(driver, Qt::Key_Return);
    report_.compare(driver.find<controls::ItemCombo>("cmbFarm").Text(), QStringLiteral("Riverbend"), QStringLiteral("farm"));
    report_.screenshot(window, QStringLiteral("main-module-farms"));

    report_.step(QStringLiteral("Paste %1 blocks").arg(Blocks));
    click(driver, "cmdNext");
    pasteBlocks();
    report_.check(window.farmLists().records(lists::List::Blocks).size() == Blocks, QStringLiteral("all blocks are stored"));
    report_.screenshot(window, QStringLiteral("main-module-blocks"));

    report_.step(QStringLiteral("Tick crops and pests, type the workers"));
    goOnToStarters(driver, {1, 2}, QStringLiteral("main-module-common-crops"));
    report_.screenshot(window, QStringLiteral("main-module-crops"));
    click(driver, "cmdNext");
    for (const char *name : {"Thandi", "Pieter"}) {
        type(driver, QLatin1String(name));
        key(driver, Qt::Key_Return);
    }
    report_.screenshot(window, QStringLiteral("main-module-workers"));
    goOnToStarters(driver, {}, QStringLiteral("main-module-common-pests"));
    report_.screenshot(window, QStringLiteral("main-module-pests"));
    report_.check(!window.farmLists().records(lists::List::Pests).empty(), QStringLiteral("pests are stored"));
    click(driver, "cmdMonitoring");
}

void FirstDayRound::printFieldSheet(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher)
{
    report_.step(QStringLiteral("Issue the first instruction and print its sheet"));
    UiDriver driver(window);
    click(driver, "imSpray");
    click(driver, "cmdAdd");
    ++actions_;
    report_.check(driver.choose("cmbPMethod", QStringLiteral("Count")), QStringLiteral("the method can be chosen"));
    ++actions_;
    report_.check(driver.choose("cmbPerson", QStringLiteral("Thandi")), QStringLiteral("the person can be chosen"));
    for (int row = 1; row <= 3; ++row) {
        actions_ += 2;
        driver.clickCell("grdBlockIn", row, BlockMark);
        driver.clickCell("grdPestIn", row, PestMark);
    }
    dialogs.expectMessage();
    click(driver, "cmdTSave");
    // The box after Save, and the question before printing.
    actions_ += 2;
    report_.check(dialogs.takeLastText().startsWith(QLatin1String("The monitoring instruction was saved")),
                  QStringLiteral("the instruction is saved"));
    report_.screenshot(window, QStringLiteral("first-instruction"));
    dialogs.queueAnswer(controls::Answer::Yes);
    click(driver, "cmdPALL");
    report_.check(launcher.opened.size() == 1, QStringLiteral("the field sheet is saved and opened"));
    report_.step(QStringLiteral("%1 actions besides the paste").arg(actions_));
    constexpr int MostActions = 40;
    report_.check(actions_ < MostActions, QStringLiteral("a first day takes fewer than %1 actions").arg(MostActions));
}

void FirstDayRound::showOtherPages(mainmodule::MainModuleWindow &window, const QString &folder, QueuedDialogs &dialogs)
{
    UiDriver driver(window);
    clickPage(driver, StartRow);
    report_.screenshot(window, QStringLiteral("main-module-start-done"));
    clickPage(driver, PlantingsRow);
    QGuiApplication::clipboard()->setText(
        QStringLiteral("Block\tPlanted block\tCrop type\tVariety\nBlock 1\tBlock 1 upper\tOrange\t"
                       "Valencia\nBlock 2\tBlock 2 Delta\tOrange\tDelta\n"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    report_.check(window.farmLists().records(lists::List::Plantings).size() == 2, QStringLiteral("planted blocks are stored"));
    report_.screenshot(window, QStringLiteral("main-module-planted-blocks"));
    clickPage(driver, SeasonsRow);
    click(driver, "cmdAdd");
    type(driver, QStringLiteral("2026/2027"));
    key(driver, Qt::Key_Return);
    report_.screenshot(window, QStringLiteral("main-module-seasons"));

    report_.step(QStringLiteral("Open a .csv with two faults"));
    clickPage(driver, BlocksRow);
    const QString path = QDir(folder).filePath(QStringLiteral("Blocks.csv"));
    QFile file(path);
    const QByteArray text = "Block key;Block;Points\n1;Block 1;12\n;Dam;8\n;Weir;none\n99;Hill;5\n";
    report_.check(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), QStringLiteral("the file is written"));
    file.close();
    dialogs.queueFile(path);
    inNextDialog([this](QWidget &dialog) {
        report_.compare(UiDriver(dialog).find<QLabel>("screenTitle").text(), QStringLiteral("1 new, 1 changed, 2 refused"),
                        QStringLiteral("what would change"));
        report_.screenshot(dialog, QStringLiteral("main-module-import"));
        UiDriver(dialog).click("cmdWrite");
    });
    click(driver, "cmdOpen");
    report_.screenshot(window, QStringLiteral("main-module-faults"));
    QTest::keyClick(&window, Qt::Key_F1);
    if (QWidget *keys = QApplication::activeModalWidget()) {
        report_.screenshot(*keys, QStringLiteral("main-module-keys"));
        keys->close();
    }
}
