// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/MainModuleWindow.h"
#include "fakes/QueuedDialogs.h"
#include "mainmodule/FaultPanel.h"
#include "mainmodule/ImportDialog.h"
#include "mainmodule/ListPage.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/Workspace.h"
#include "screens/Shortcuts.h"
#include "shell/FarmApplication.h"
#include "support/TemporaryFarm.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

using controls::FlexGrid;
using mainmodule::MainModuleWindow;
using store::DatabaseFile;

/// The lists in their window, driven by keys; another program may write the same files.
class MainModuleWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Without an event loop of the program, the quit of a closed last window would end every later dialog at once.
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup();
    void typedLinesAreStored();
    void refusedTextStaysOpen();
    void incompleteLineWaits();
    void pasteAndUndo();
    void refusedPasteIsReviewed();
    void filterAndSort();
    void yesAndNoByTheSpaceBar();
    void rowInUseIsMadeInactive();
    void otherProgramsChangeIsShownNotOverwritten();
    void otherProgramsRowsShowOnReturn();
    void fileThatCannotBeWrittenIsOnlyShown();
    void handOffFilesFollowTheChoice();
    void newOfficeBeginsWithEmptyDatabases();
    void closingAsksForIncompleteLines();
    void keysPageHasTheLettersOfEveryPage_data();
    void keysPageHasTheLettersOfEveryPage();

private:
    void show(const QString &page);
    template <typename Widget> Widget &control(const char *name) const
    {
        QWidget *page = window_->findChild<QStackedWidget *>(QStringLiteral("pages"))->currentWidget();
        auto *found = page->findChild<Widget *>(QLatin1String(name));
        found = found ? found : window_->findChild<Widget *>(QLatin1String(name));
        Q_ASSERT(found != nullptr);
        return *found;
    }
    FlexGrid &grid() const { return control<FlexGrid>("grdList"); }
    static void keys(std::initializer_list<Qt::Key> pressed);
    /// Each character goes to whatever has the focus by then.
    static void type(const QString &text)
    {
        for (const QChar c : text) {
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        }
    }
    static void pasteText(const QString &text);
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QStringList shown(int column) const;
    /// What is stored, read by the window's own handle: a Jet file has one writer at a time.
    QStringList rows(const QString &sql) const
    {
        QStringList found;
        for (dao::Recordset read = window_->session().dbMain->OpenRecordset(sql); !read.Eof(); read.MoveNext()) {
            QStringList texts;
            for (int field = 0; field < read.fieldCount(); ++field) {
                texts.append(read.text(field));
            }
            found.append(texts.join(u'|'));
        }
        return found;
    }
    QStringList blocks() const { return rows(QStringLiteral("Select Block, NoofMpoints from tblBlock order by BlockID")); }
    static bool isOnJet() { return TemporaryFarm::kind() == dao::FileKind::Jet; }
    static void leaveAndReturn()
    {
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    }

    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<QueuedDialogs> dialogs_;
    std::unique_ptr<MainModuleWindow> window_;
};

void MainModuleWindowTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addFarm(QStringLiteral("Ridge"));
    farm_->addBlock({QStringLiteral("Dam"), 1, 8, true});
    farm_->addBlock({QStringLiteral("Hill"), 1, 5, true});
    dialogs_ = std::make_unique<QueuedDialogs>();
    window_ = std::make_unique<MainModuleWindow>(*dialogs_);
}

void MainModuleWindowTest::cleanup()
{
    QVERIFY(dialogs_->allAsExpected());
    window_.reset();
    farm_.reset();
}

void MainModuleWindowTest::show(const QString &page)
{
    if (isOnJet()) {
        farm_->close();
    }
    window_->load(farm_->appPath(), page);
    window_->resize(1366, 738);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void MainModuleWindowTest::keys(std::initializer_list<Qt::Key> pressed)
{
    for (const Qt::Key key : pressed) {
        press(key);
    }
}

void MainModuleWindowTest::pasteText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
}

QStringList MainModuleWindowTest::shown(int column) const
{
    QStringList texts;
    for (int row = 1; row < grid().Rows(); ++row) {
        texts.append(grid().TextMatrix(row, column));
    }
    return texts;
}

void MainModuleWindowTest::typedLinesAreStored()
{
    show(QStringLiteral("blocks"));
    press(Qt::Key_Insert);
    type(QStringLiteral("Weir"));
    press(Qt::Key_Tab);
    QCOMPARE(blocks().last(), QStringLiteral("Weir|5"));
    type(QStringLiteral("12"));
    press(Qt::Key_Return);
    QCOMPARE(blocks(), QStringList({"Dam|8", "Hill|5", "Weir|12"}));
    // Esc restores, and the cell above is reached by the keys.
    press(Qt::Key_Up);
    type(QStringLiteral("99"));
    press(Qt::Key_Escape);
    QCOMPARE(shown(2), QStringList({"8", "5", "12", ""}));
}

void MainModuleWindowTest::refusedTextStaysOpen()
{
    show(QStringLiteral("blocks"));
    grid().setCell(1, 2);
    type(QStringLiteral("501"));
    press(Qt::Key_Return);
    QVERIFY(window_->statusText().contains(QLatin1String("from 1 to 500")));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("txtG1"));
    // Another page waits for it too.
    window_->showPage(QStringLiteral("workers"));
    QCOMPARE(window_->pageName(), QStringLiteral("blocks"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    QCOMPARE(blocks().front(), QStringLiteral("Dam|50"));
    // The refusal goes with the text that is dropped.
    grid().setCell(1, 2);
    type(QStringLiteral("900"));
    press(Qt::Key_Return);
    QVERIFY(window_->statusText().contains(QLatin1String("from 1 to 500")));
    press(Qt::Key_Escape);
    QVERIFY2(window_->statusText().isEmpty(), qPrintable(window_->statusText()));
}

void MainModuleWindowTest::incompleteLineWaits()
{
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Late Valencia"));
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    show(QStringLiteral("planted-blocks"));
    press(Qt::Key_Insert);
    type(QStringLiteral("dam"));
    press(Qt::Key_Tab);
    QVERIFY2(window_->statusText().contains(QLatin1String("Planted block, Variety")), qPrintable(window_->statusText()));
    type(QStringLiteral("Dam upper"));
    keys({Qt::Key_Tab});
    QCOMPARE(rows(QStringLiteral("Select BlockPID from tblBlockPlant")).size(), 0);
    // A variety that begins with the letters goes before one that contains them.
    type(QStringLiteral("Val"));
    press(Qt::Key_Tab);
    QCOMPARE(rows(QStringLiteral("Select PBlock, BlockID, CrVaID from tblBlockPlant")), QStringList("Dam upper|1|2"));
    QCOMPARE(grid().TextMatrix(1, 4), QStringLiteral("Orange"));
}

void MainModuleWindowTest::pasteAndUndo()
{
    show(QStringLiteral("blocks"));
    press(Qt::Key_Insert);
    QString rows = QStringLiteral("Block name\tMonitoring points\n");
    for (int i = 1; i <= 30; ++i) {
        rows += QStringLiteral("Block %1\t%2\n").arg(i).arg(i);
    }
    pasteText(rows);
    QCOMPARE(blocks().size(), 32);
    QVERIFY2(window_->statusText().contains(QLatin1String("30 new")), qPrintable(window_->statusText()));
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(blocks(), QStringList({"Dam|8", "Hill|5"}));
    press(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(blocks().size(), 32);
    QCOMPARE(grid().Rows(), 34);
}

void MainModuleWindowTest::refusedPasteIsReviewed()
{
    show(QStringLiteral("blocks"));
    press(Qt::Key_Insert);
    for (const bool writes : {false, true}) {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        QString title;
        QTimer::singleShot(0, this, [&] {
            auto *dialog = qobject_cast<mainmodule::ImportDialog *>(QApplication::activeModalWidget());
            title = dialog->findChild<QLabel *>(QStringLiteral("screenTitle"))->text();
            dialog->findChild<QPushButton *>(writes ? QStringLiteral("cmdWrite") : QStringLiteral("cmdCancel"))->click();
        });
        pasteText(QStringLiteral("Weir\t7\nLow\t0\n"));
        QCOMPARE(title, QStringLiteral("1 new, 0 changed, 1 refused"));
        QCOMPARE(blocks().size(), writes ? 3 : 2);
    }
    // What was refused remains in view.
    QVERIFY(control<mainmodule::FaultPanel>("faultPanel").isVisible());
    const auto &faults = control<FlexGrid>("grdFaults");
    QCOMPARE(faults.TextMatrix(1, 3), QStringLiteral("0"));
    control<QPushButton>("cmdCopyFaults").click();
    QVERIFY(QGuiApplication::clipboard()->text().contains(QLatin1String("from 1 to 500")));
}

void MainModuleWindowTest::filterAndSort()
{
    show(QStringLiteral("blocks"));
    press(Qt::Key_F, Qt::ControlModifier);
    type(QStringLiteral("hi"));
    QCOMPARE(shown(1), QStringList({"Hill", ""}));
    control<QLineEdit>("txtFilter").clear();
    grid().setFocus();
    grid().setCell(1, 2);
    press(Qt::Key_F3);
    QCOMPARE(shown(1), QStringList({"Hill", "Dam", ""}));
    press(Qt::Key_F3);
    QCOMPARE(shown(1), QStringList({"Dam", "Hill", ""}));
    // A line stays in its row while it is typed into, until it is sorted again.
    grid().setCell(1, 2);
    type(QStringLiteral("1"));
    press(Qt::Key_Return);
    QCOMPARE(shown(1), QStringList({"Dam", "Hill", ""}));
}

void MainModuleWindowTest::yesAndNoByTheSpaceBar()
{
    show(QStringLiteral("blocks"));
    grid().setCell(1, 3);
    press(Qt::Key_Space);
    QCOMPARE(rows(QStringLiteral("Select Block from tblBlock where active = False")), QStringList("Dam"));
    control<QCheckBox>("chkActive").setChecked(true);
    QCOMPARE(shown(1), QStringList({"Hill", ""}));
}

void MainModuleWindowTest::rowInUseIsMadeInactive()
{
    const int pest = farm_->addTarget(QStringLiteral("Red scale"));
    farm_->addInstruction({.blocks = {{1, 2}}, .targets = {pest}});
    show(QStringLiteral("blocks"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(blocks(), QStringList("Dam|8"));
    QCOMPARE(shown(3), QStringList({"No", ""}));
    QVERIFY(control<FlexGrid>("grdFaults").TextMatrix(1, 4).contains(QLatin1String("1 instruction")));
    QCOMPARE(control<QLabel>("lblFaults").text(), QStringLiteral("1 note"));
    press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!control<mainmodule::FaultPanel>("faultPanel").isVisible());
    QCOMPARE(blocks(), QStringList({"Dam|8", "Hill|5"}));
    QCOMPARE(shown(3), QStringList({"Yes", "Yes", ""}));
}

void MainModuleWindowTest::otherProgramsChangeIsShownNotOverwritten()
{
    show(QStringLiteral("blocks"));
    grid().setCell(1, 1);
    type(QStringLiteral("Weir"));
    if (isOnJet()) {
        // A program that has the file open for writing keeps this one from it, which is said; nothing is lost.
        farm_->open();
        press(Qt::Key_Return);
        QVERIFY2(window_->statusText().contains(QLatin1String("has the file open")), qPrintable(window_->statusText()));
        farm_->close();
        press(Qt::Key_Return);
        QCOMPARE(blocks().front(), QStringLiteral("Weir|8"));
        return;
    }
    farm_->session.dbMain->Execute(QStringLiteral("UPDATE tblBlock SET Block = 'Lower dam' where BlockID = 1"));
    press(Qt::Key_Return);
    QCOMPARE(blocks().front(), QStringLiteral("Lower dam|8"));
    QCOMPARE(shown(1), QStringList({"Lower dam", "Hill", ""}));
    QVERIFY2(control<FlexGrid>("grdFaults").TextMatrix(1, 4).contains(QLatin1String("Another program")),
             qPrintable(control<FlexGrid>("grdFaults").TextMatrix(1, 4)));
}

void MainModuleWindowTest::otherProgramsRowsShowOnReturn()
{
    if (isOnJet()) {
        QSKIP("The file has one writer at a time.");
    }
    show(QStringLiteral("blocks"));
    farm_->addBlock({QStringLiteral("Vlei"), 1, 3, true});
    leaveAndReturn();
    QCOMPARE(shown(1), QStringList({"Dam", "Hill", "Vlei", ""}));
    // Not under what is being typed.
    grid().setCell(1, 1);
    type(QStringLiteral("W"));
    farm_->addBlock({QStringLiteral("Low"), 1, 3, true});
    leaveAndReturn();
    QCOMPARE(grid().Rows(), 5);
    press(Qt::Key_Escape);
}

void MainModuleWindowTest::fileThatCannotBeWrittenIsOnlyShown()
{
    show(QStringLiteral("blocks"));
    window_->session().dbMain.set(nullptr);
    window_->session().dbMain.set(
        dao::Workspace::OpenDatabase(farm_->filePath(DatabaseFile::Main), false, true, store::connectText()));
    leaveAndReturn();
    window_->showPage(QStringLiteral("blocks"));
    const auto &obstacle = control<QLabel>("lblObstacle");
    QVERIFY(obstacle.isVisible() && obstacle.text().startsWith(QLatin1String("ZN4.mdb cannot be written")));
    grid().setCell(1, 1);
    type(QStringLiteral("Weir"));
    press(Qt::Key_Return);
    QVERIFY2(window_->statusText().startsWith(QLatin1String("Not saved: ")), qPrintable(window_->statusText()));
    QCOMPARE(blocks().front(), QStringLiteral("Dam|8"));
    press(Qt::Key_Escape);
    QCOMPARE(shown(1).front(), QStringLiteral("Dam"));
}

void MainModuleWindowTest::handOffFilesFollowTheChoice()
{
    farm_->add(u"tblYear", {{u"FYear", QStringLiteral("2026/2027")}});
    farm_->add(u"tblYear", {{u"FYear", QStringLiteral("2027/2028")}});
    int starts = 0;
    window_->setMonitoringStarter([&] {
        ++starts;
        return QString();
    });
    show(QStringLiteral("start"));
    auto &farms = control<controls::ItemCombo>("cmbFarm");
    farms.setListIndex(farms.findText(QStringLiteral("Ridge")));
    control<QPushButton>("cmdMonitoring").click();
    QCOMPARE(starts, 1);
    const auto line = [this](const char *name) {
        QFile file(farm_->appPath() + u'/' + QLatin1String(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QStringLiteral("none");
    };
    QCOMPARE(line("Findfarm.txt"), QStringLiteral("Ridge"));
    QCOMPARE(line("FindfarmID.txt"), QStringLiteral("2"));
    QCOMPARE(line("Findyear.txt"), QStringLiteral("2027/2028"));
    QCOMPARE(line("FindyearID.txt"), QStringLiteral("2027"));
}

void MainModuleWindowTest::newOfficeBeginsWithEmptyDatabases()
{
    const QTemporaryDir folder;
    window_->load(folder.path());
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    window_->showPage(QStringLiteral("blocks"));
    QCOMPARE(window_->pageName(), QStringLiteral("start"));
    press(Qt::Key_Return);
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("Databases/PestMon.mdb"))));
    // The next step has the focus.
    press(Qt::Key_Return);
    type(QStringLiteral("Riverbend"));
    press(Qt::Key_Return);
    QCOMPARE(control<controls::ItemCombo>("cmbFarm").Text(), QStringLiteral("Riverbend"));
    // The way on from one list to the next, without the start page; none to the list that is shown.
    auto &next = control<QPushButton>("cmdNext");
    QVERIFY(next.isVisible());
    press(Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(window_->pageName(), QStringLiteral("blocks"));
    QVERIFY(!next.isVisible());
    type(QStringLiteral("Dam"));
    press(Qt::Key_Return);
    QTRY_VERIFY(next.isVisible());
    QCOMPARE(next.text(), QStringLiteral("&Go on: crops"));
    // After the last list the monitoring's own button is the way on.
    auto &monitoring = control<QPushButton>("cmdMonitoring");
    QCOMPARE(monitoring.property("role").toString(), QString());
    const std::pair<const char *, const char *> lists[] = {
        {"crops", "Citrus\tOrange\tDelta\n"}, {"workers", "Thandi\n"}, {"pests", "Red scale\tP\tOrange\n"}};
    for (const auto &[page, rows] : lists) {
        window_->showPage(QString::fromLatin1(page));
        press(Qt::Key_Insert);
        pasteText(QString::fromLatin1(rows));
    }
    QTRY_COMPARE(monitoring.property("role").toString(), QStringLiteral("first"));
}

void MainModuleWindowTest::closingAsksForIncompleteLines()
{
    show(QStringLiteral("pests"));
    press(Qt::Key_Insert);
    type(QStringLiteral("Red scale"));
    dialogs_->queueAnswer(controls::Answer::No);
    QVERIFY(!window_->close());
    QVERIFY(dialogs_->takeLastText().startsWith(QLatin1String("One line is not complete")));
    QCOMPARE(shown(0), QStringList({"Red scale", ""}));
    dialogs_->queueAnswer(controls::Answer::Yes);
    QVERIFY(window_->close());
}

void MainModuleWindowTest::keysPageHasTheLettersOfEveryPage_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("owner");
    QTest::newRow("start") << "start"
                           << "StartPage";
    QTest::newRow("blocks") << "blocks"
                            << "ListPage";
    QTest::newRow("pests") << "pests"
                           << "ListPage";
}

/// Letters differ among those that work at once, and F1 lists them; a tip names each.
void MainModuleWindowTest::keysPageHasTheLettersOfEveryPage()
{
    QFETCH(QString, page);
    QFETCH(QString, owner);
    show(page);
    QStringList listed;
    for (const KeyGroup &group : keyGroups()) {
        if (group.owner == owner || group.owner == QLatin1String("MainModuleWindow")) {
            for (const KeyLine &line : group.lines) {
                listed += line.keys.split(QStringLiteral(", "));
            }
        }
    }
    QStringList letters;
    for (const QAbstractButton *button : window_->findChildren<QAbstractButton *>()) {
        const QString key = button->shortcut().toString(QKeySequence::NativeText);
        if (button->isVisible() && key.startsWith(QLatin1String("Alt+"))) {
            letters.append(key);
            QVERIFY2(button->toolTip().contains(key), qPrintable(button->objectName()));
        }
    }
    for (const QLabel *label : window_->findChildren<QLabel *>()) {
        if (label->isVisible() && label->buddy()) {
            letters.append(QKeySequence::mnemonic(label->text()).toString());
        }
    }
    QCOMPARE(letters.size(), QSet<QString>(letters.begin(), letters.end()).size());
    for (const QString &letter : letters) {
        QVERIFY2(listed.contains(letter), qPrintable(letter));
    }
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    MainModuleWindowTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "MainModuleWindowTest.moc"
