// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/MDI_Monitoring.h"
#include "fakes/QueuedDialogs.h"
#include "fakes/RecordingLauncher.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/ItemCombo.h"
#include "platform/controls/PictureButton.h"
#include "screens/ChildScreen.h"
#include "screens/ProgressPicture.h"
#include "shell/ExitLabel.h"
#include "shell/FarmApplication.h"
#include "shell/MenuPanel.h"
#include "support/TemporaryFarm.h"

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

using controls::PictureButton;

namespace
{

/// The calls to the screens of a test, in order.
QStringList journal;

class PlainScreen : public ChildScreen
{
public:
    PlainScreen(ScreenHost &screenHost, QWidget *parent) : ChildScreen(screenHost, parent)
    {
        journal += QStringLiteral("load at row %1").arg(session().ListRow);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(new QLineEdit(this));
        layout->addWidget(new controls::DatePicker(this));
    }
    ~PlainScreen() override { journal += QStringLiteral("end"); }
    void activateScreen() override { journal += QStringLiteral("activate") + Tag(); }
    QString screenTitle() const override { return QStringLiteral("Plain"); }

protected:
    void closeEvent(QCloseEvent *) override { journal += QStringLiteral("asked"); }
    void hideEvent(QHideEvent *) override { session().ListRow = 9; }
};

ChildScreen *plain(ScreenHost &host, QWidget *parent)
{
    return new PlainScreen(host, parent);
}

ChildScreen *broken(ScreenHost &, QWidget *)
{
    throw basic::RunTimeError(3061, QStringLiteral("Too few parameters."));
}

} // namespace

/// Menu, screens, farm choice and the ends of the program.
class MDI_MonitoringTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void captionsAndPicturesWithoutScreen();
    void screenOpensAndBringsTheMenuBack();
    void positionIsResetWhereSet_data();
    void positionIsResetWhereSet();
    void reportsFolderIsMadeOnTheWay();
    void farmChoiceClosesTheScreenUnasked();
    void processBringsTheMenuBack();
    void screenIsActivatedOnReturnFromElsewhere();
    void hintsOpenTheMainModule();
    void farmsAndBlocksFollowTheMainModule();
    void firstStepsLeadToTheMainModule();
    void unhandledErrorIsShown();
    void applicationHandlesEscapedErrors();
    void hoverBordersAreRemovedOnTheBackground();
    void exitIsBlueUnderThePointer();
    void endsAtOnce_data();
    void endsAtOnce();
    void everythingIsReachableByTab();
    void lettersWithAltAreNotTyped();
    void refusedDateIsReported();
    void longSentenceDoesNotWidenTheWindow();
    void messageDoesNotOutliveItsScreen();
    void workbookWithoutProgramIsReported();
    void progressPictureMovesNothing();

private:
    template <typename Widget> Widget &control(const char *name)
    {
        auto *found = window_->findChild<Widget *>(QLatin1String(name));
        Q_ASSERT(found != nullptr);
        return *found;
    }
    void open(const char *picture) { control<PictureButton>(picture).click(); }

    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<QueuedDialogs> dialogs_;
    std::unique_ptr<MDI_Monitoring> window_;
};

void MDI_MonitoringTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addFarm(QStringLiteral("Aloe Ridge"));
    farm_->close();
    dialogs_ = std::make_unique<QueuedDialogs>();
    std::vector<MenuEntry> entries{
        {QStringLiteral("imSpray"), ZeroPosition::AfterReportsFolder, true, {}, plain},
        {QStringLiteral("ImPM"), ZeroPosition::Never, false, {}, plain},
        {QStringLiteral("imLeave"), ZeroPosition::First, true, QStringLiteral(" Leaf"), plain},
        {QStringLiteral("imGG"), ZeroPosition::Never, false, {}, broken},
        {QStringLiteral("imFF"), ZeroPosition::Never, false, {}, {}},
    };
    window_ = std::make_unique<MDI_Monitoring>(*dialogs_, std::move(entries));
    static_cast<FarmApplication *>(qApp)->setErrorHandler(
        [this](const basic::RunTimeError &error) { window_->showError(error); });
    QCOMPARE(window_->load(farm_->appPath()), MDI_Monitoring::Load::Done);
    window_->resize(1366, 738);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    journal.clear();
}

void MDI_MonitoringTest::cleanup()
{
    QVERIFY(dialogs_->allAsExpected());
    window_.reset();
}

void MDI_MonitoringTest::captionsAndPicturesWithoutScreen()
{
    QCOMPARE(window_->windowTitle(), QStringLiteral("Torvane Data: Farm Monitoring. 2022-08-25"));
    const std::pair<const char *, const char *> captions[] = {
        {"imSpray", "Pest Monitoring"},
        {"ImPM", "Pest Monitor info"},
        {"imFF", "Existing field sheets"},
        {"imGG", "Pest Monitoring Graphs"},
        {"imLeave", "Leaf analysis"},
        {"imAsset", "Fruit Analysis"},
        {"imBas", "Soil Analysis: Basic"},
        {"imEx", "Soil Analysis: Extraction values"},
        {"imMic", "Soil Analysis: Micro elements"},
    };
    for (const auto &[name, caption] : captions) {
        const PictureButton &picture = control<PictureButton>(name);
        QCOMPARE(picture.text().remove(u'&'), QLatin1String(caption));
    }
    for (const char *name : {"imFF", "imMic"}) {
        QVERIFY(!control<PictureButton>(name).isEnabled());
        QCOMPARE(control<PictureButton>(name).toolTip(), QStringLiteral("Not yet available in this version"));
    }
    QTest::mouseClick(&control<QWidget>("imHyd"), Qt::LeftButton);
    QVERIFY(window_->menuIsOpen());
}

void MDI_MonitoringTest::screenOpensAndBringsTheMenuBack()
{
    open("imLeave");
    QVERIFY(!window_->menuIsOpen());
    QVERIFY(window_->CurrentForm()->isVisible());
    QCOMPARE(journal, (QStringList{QStringLiteral("load at row 0"), QStringLiteral("activate Leaf")}));
    window_->CurrentForm()->closeScreen();
    QVERIFY(window_->menuIsOpen());
    QVERIFY(window_->CurrentForm() == nullptr);
    QVERIFY(control<PictureButton>("imLeave").hasFocus());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(journal.last(), QStringLiteral("end"));
    QVERIFY(!journal.contains(QStringLiteral("asked")));
}

void MDI_MonitoringTest::positionIsResetWhereSet_data()
{
    QTest::addColumn<QByteArray>("picture");
    QTest::addColumn<int>("row");
    // The previous screen sets row 9 while it closes.
    QTest::newRow("after the folder") << QByteArray("imSpray") << 0;
    QTest::newRow("first, hence before the other closes") << QByteArray("imLeave") << 9;
    QTest::newRow("never") << QByteArray("ImPM") << 9;
}

void MDI_MonitoringTest::positionIsResetWhereSet()
{
    QFETCH(QByteArray, picture);
    QFETCH(int, row);
    open("ImPM");
    window_->session().ListRow = 5;
    open(picture.constData());
    QVERIFY(journal.contains(QStringLiteral("load at row %1").arg(row)));
    QVERIFY(window_->CurrentForm() != nullptr);
}

void MDI_MonitoringTest::reportsFolderIsMadeOnTheWay()
{
    const QString folder = farm_->appPath() + QStringLiteral("/Reports/Pest Monitor Reports");
    open("ImPM");
    QVERIFY(!QDir(folder).exists());
    open("imSpray");
    QVERIFY(QDir(folder).exists());
    open("imSpray");
    QVERIFY(window_->CurrentForm() != nullptr);
    QVERIFY(QDir(farm_->appPath() + QStringLiteral("/Reports")).removeRecursively());
    QFile inTheWay(farm_->appPath() + QStringLiteral("/Reports"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    open("imSpray");
    QVERIFY(window_->CurrentForm() != nullptr);
}

void MDI_MonitoringTest::farmChoiceClosesTheScreenUnasked()
{
    open("ImPM");
    control<controls::ItemCombo>("cmbFarm").setListIndex(1);
    QCOMPARE(window_->session().CurrentFarmID, 2);
    QCOMPARE(window_->session().CurrentFarm, QStringLiteral("Aloe Ridge"));
    QVERIFY(window_->menuIsOpen());
    QVERIFY(window_->CurrentForm() == nullptr);
    QVERIFY(!journal.contains(QStringLiteral("asked")));
    // No selection is an error that is not ignored; nothing changes.
    dialogs_->expectMessage();
    control<controls::ItemCombo>("cmbFarm").setListIndex(-1);
    QCOMPARE(window_->session().CurrentFarmID, 2);
}

void MDI_MonitoringTest::processBringsTheMenuBack()
{
    open("ImPM");
    control<QPushButton>("CommandButton1").click();
    QVERIFY(window_->menuIsOpen());
    QVERIFY(window_->CurrentForm() == nullptr);
    control<QPushButton>("CommandButton1").click();
    QVERIFY(window_->menuIsOpen());
}

void MDI_MonitoringTest::screenIsActivatedOnReturnFromElsewhere()
{
    const auto leaveAndReturn = [] {
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
        QCoreApplication::processEvents();
    };
    open("ImPM");
    QCOMPARE(journal.count(QStringLiteral("activate")), 1);
    leaveAndReturn();
    QCOMPARE(journal.count(QStringLiteral("activate")), 2);

    QDialog box(window_.get());
    box.setModal(true);
    box.show();
    leaveAndReturn();
    box.close();
    QCoreApplication::processEvents();
    QCOMPARE(journal.count(QStringLiteral("activate")), 2);

    // A screen closed before the return is not activated.
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    window_->CurrentForm()->closeScreen();
    QCoreApplication::processEvents();
    QCOMPARE(journal.count(QStringLiteral("activate")), 2);
}

void MDI_MonitoringTest::hintsOpenTheMainModule()
{
    QStringList pages;
    window_->setMainModuleStarter([&pages](const QString &page) {
        pages.append(page);
        return page == QLatin1String("planted-blocks") ? QStringLiteral("The program MainModule is not here.") : QString();
    });
    QTest::mouseClick(&control<QPushButton>("Label6Hint"), Qt::LeftButton);
    control<QPushButton>("Label7Hint").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(pages, QStringList({QStringLiteral("blocks"), QStringLiteral("planted-blocks")}));
    QCOMPARE(window_->statusText(), QStringLiteral("The program MainModule is not here."));
}

void MDI_MonitoringTest::farmsAndBlocksFollowTheMainModule()
{
    auto &farms = control<controls::ItemCombo>("cmbFarm");
    farms.setListIndex(farms.findText(QStringLiteral("Riverbend")));
    farm_->open();
    farm_->addFarm(QStringLiteral("Bend"));
    const int block = farm_->addBlock({QStringLiteral("Dam"), 1, 5, true});
    farm_->addPlanting({QStringLiteral("Dam upper"), block, true, 0});
    farm_->close();
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    QCoreApplication::processEvents();
    QVERIFY(farms.findText(QStringLiteral("Bend")) >= 0);
    QCOMPARE(farms.Text(), QStringLiteral("Riverbend"));
    QCOMPARE(window_->session().CurrentFarmID, 1);
    farm_->open();
    QCOMPARE(farm_->count(QStringLiteral("tblTempBlockPlant")), 1);
}

void MDI_MonitoringTest::firstStepsLeadToTheMainModule()
{
    QString page = QStringLiteral("none");
    window_->setMainModuleStarter([&page](const QString &asked) {
        page = asked;
        return QString();
    });
    QVERIFY(control<QLabel>("lblFirstSteps").isVisible());
    control<QPushButton>("cmdMainModule").click();
    QVERIFY(page.isEmpty());
    farm_->open();
    farm_->addBlock({QStringLiteral("Dam"), 1, 5, true});
    farm_->close();
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    QCoreApplication::processEvents();
    QVERIFY(!control<QLabel>("lblFirstSteps").isVisible());
}

void MDI_MonitoringTest::unhandledErrorIsShown()
{
    dialogs_->expectMessage();
    QTest::mouseClick(&control<PictureButton>("imGG"), Qt::LeftButton);
    QVERIFY(dialogs_->takeLastText().contains(QStringLiteral("3061")));
    QVERIFY(window_->CurrentForm() == nullptr);
    QVERIFY(window_->menuIsOpen());
    open("ImPM");
    QVERIFY(window_->CurrentForm() != nullptr);
}

void MDI_MonitoringTest::applicationHandlesEscapedErrors()
{
    class Thrower : public QObject
    {
    public:
        bool event(QEvent *) override { throw basic::RunTimeError(91, QStringLiteral("The file.")); }
    };
    Thrower thrower;
    dialogs_->expectMessage();
    QEvent event(QEvent::User);
    QVERIFY(QCoreApplication::sendEvent(&thrower, &event));
    QVERIFY(dialogs_->takeLastText().contains(QStringLiteral("91")));
}

void MDI_MonitoringTest::hoverBordersAreRemovedOnTheBackground()
{
    const MenuPanel &menu = control<MenuPanel>("picPro");
    PictureButton &first = control<PictureButton>("imSpray");
    PictureButton &second = control<PictureButton>("ImPM");
    QTest::mouseMove(&first);
    QCOMPARE(menu.HoverImage(), &first);
    QTest::mouseMove(&second);
    QVERIFY(first.hasHoverBorder());
    QVERIFY(second.hasHoverBorder());
    QTest::mouseMove(&control<QWidget>("Frame6"), QPoint(3, 3));
    QVERIFY(!second.hasHoverBorder());
    QVERIFY(!first.hasHoverBorder());
    QVERIFY(menu.HoverImage() == nullptr);
}

void MDI_MonitoringTest::exitIsBlueUnderThePointer()
{
    const ExitLabel &exit = control<ExitLabel>("cmdLExit");
    QTest::mouseMove(&control<ExitLabel>("cmdLExit"));
    QVERIFY(exit.isHovered());
    QCOMPARE(exit.inkColour(), QColor(0, 0, 0xFF));
    QTest::mouseMove(&control<QWidget>("Image4"));
    QVERIFY(!exit.isHovered());
}

void MDI_MonitoringTest::endsAtOnce_data()
{
    QTest::addColumn<QByteArray>("by");
    QTest::newRow("close button") << QByteArray("cmdClose");
    QTest::newRow("exit label") << QByteArray("cmdLExit");
    QTest::newRow("window") << QByteArray();
}

void MDI_MonitoringTest::endsAtOnce()
{
    QFETCH(QByteArray, by);
    open("ImPM");
    QSignalSpy ended(window_.get(), &MDI_Monitoring::ended);
    QTimer::singleShot(0, this,
                       [&] { by.isEmpty() ? static_cast<void>(window_->close()) : control<QAbstractButton>(by).click(); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(ended.size(), 1);
    QVERIFY(!journal.contains(QStringLiteral("asked")));
}

void MDI_MonitoringTest::everythingIsReachableByTab()
{
    QStringList reached;
    control<QWidget>("cmbFarm").setFocus();
    for (int step = 0; step < 16; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *focused = QApplication::focusWidget();
        const QString name = focused->objectName();
        reached += name.isEmpty() ? focused->parent()->objectName() : name;
    }
    for (const char *name : {"cmbFarm", "cmbYear", "CommandButton1", "cmdLExit", "cmdMainModule", "imSpray", "ImPM", "imGG",
                             "imLeave", "Label6Hint", "Label7Hint", "cmdClose"}) {
        QVERIFY2(reached.contains(QLatin1String(name)), name);
    }
    QTest::keyClick(window_.get(), Qt::Key_Escape);
    QVERIFY(window_->isVisible());
}

void MDI_MonitoringTest::lettersWithAltAreNotTyped()
{
    open("ImPM");
    const auto *field = window_->CurrentForm()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY2(field->hasFocus(), "a screen has the keys at once");
    QTest::keyClick(window_.get(), Qt::Key_Q, Qt::AltModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Q, Qt::AltModifier);
    QCOMPARE(field->text(), QString());
    // Some keyboard layouts have characters with Control and Alt.
    QTest::simulateEvent(QApplication::focusWidget(), true, Qt::Key_E, Qt::AltModifier | Qt::ControlModifier,
                         QStringLiteral("\u00e9"), false);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Q"));
    QCOMPARE(field->text(), QStringLiteral("\u00e9Q"));
}

void MDI_MonitoringTest::refusedDateIsReported()
{
    open("ImPM");
    auto *picker = window_->CurrentForm()->findChild<controls::DatePicker *>();
    picker->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(picker, QStringLiteral("31/02/2026"));
    window_->CurrentForm()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly)->setFocus();
    QVERIFY2(window_->statusText().contains(QLatin1String("31/02/2026")), qPrintable(window_->statusText()));
}

void MDI_MonitoringTest::longSentenceDoesNotWidenTheWindow()
{
    const int narrowest = window_->minimumSizeHint().width();
    const QString sentence(600, u'n');
    window_->showFailure(sentence);
    QCoreApplication::processEvents();
    QCOMPARE(window_->minimumSizeHint().width(), narrowest);
    QCOMPARE(window_->width(), 1366);
    QCOMPARE(window_->statusText(), sentence);
    QCOMPARE(control<QWidget>("statusText").toolTip(), sentence);
}

void MDI_MonitoringTest::messageDoesNotOutliveItsScreen()
{
    open("ImPM");
    window_->showStatus(QStringLiteral("Instruction saved"));
    open("imLeave");
    QCOMPARE(window_->statusText(), QString());
    window_->showFailure(QStringLiteral("Not saved"));
    window_->CurrentForm()->closeScreen();
    QCOMPARE(window_->statusText(), QString());
}

void MDI_MonitoringTest::workbookWithoutProgramIsReported()
{
    dialogs_->expectMessage();
    const QString path = QStringLiteral("/farm/Reports/Count.xlsx");
    window_->launcher().reportPath(path);
    QVERIFY(dialogs_->takeLastText().contains(QDir::toNativeSeparators(path)));
    QVERIFY(window_->statusText().contains(QDir::toNativeSeparators(path)));
    RecordingLauncher recording;
    window_->setLauncher(recording);
    QCOMPARE(&window_->launcher(), &recording);
}

void MDI_MonitoringTest::progressPictureMovesNothing()
{
    ProgressPicture &picture = window_->Picture4();
    QVERIFY(picture.isHidden());
    const QRect before = control<QWidget>("clientArea").geometry();
    picture.setCaption(QStringLiteral("10% of Pest monitor records"));
    picture.drawBar(10);
    picture.show();
    QCoreApplication::processEvents();
    QCOMPARE(control<QWidget>("clientArea").geometry(), before);
    const auto &label = control<QWidget>("LabelP");
    QCOMPARE(label.x(), picture.width() / 2 - label.width() / 2);
    const QImage drawn = picture.grab().toImage();
    const auto pixelAt = [&](int x) { return drawn.pixelColor(QPoint(x, 3) * drawn.devicePixelRatio()); };
    QCOMPARE(pixelAt(picture.width() * 9 / 100), QColor(0, 0, 255));
    QVERIFY(pixelAt(picture.width() * 11 / 100) != QColor(0, 0, 255));
    picture.drawBar(130);
    QCOMPARE(picture.barWidth(), picture.width());
    picture.Cls();
    QCOMPARE(picture.barWidth(), 0);
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    MDI_MonitoringTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "MDI_MonitoringTest.moc"
