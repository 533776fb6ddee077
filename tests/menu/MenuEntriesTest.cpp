// SPDX-License-Identifier: GPL-3.0-or-later
#include "menu/MenuEntries.h"
#include "fakes/QueuedDialogs.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/PictureButton.h"
#include "platform/controls/Theme.h"
#include "screens/ChildScreen.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"
#include "support/TemporaryFarm.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

/// Every screen in the windows that offices have, from full HD at 200 % (960 pixels wide) upwards, less the title bar.
class MenuEntriesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void screensFitTheWindow_data();
    void screensFitTheWindow();

private:
    template <typename Widget> Widget &control(const QString &name) const
    {
        auto *found = window_->findChild<Widget *>(name);
        Q_ASSERT(found != nullptr);
        return *found;
    }
    void press(const char *button) { QTest::mouseClick(&control<QPushButton>(QLatin1String(button)), Qt::LeftButton); }
    /// What is cut short, outside the window or makes the page scroll; empty if all is well.
    QStringList faults() const;
    /// The pages behind the first view of a screen.
    QStringList faultsOfPages(const QString &picture);

    std::unique_ptr<TemporaryFarm> farm_;
    QueuedDialogs dialogs_;
    std::unique_ptr<MDI_Monitoring> window_;
};

void MenuEntriesTest::initTestCase()
{
    controls::Theme::apply(*qApp, false);
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Rietvlei Estate"));
    farm_->addWorker(QStringLiteral("Thandi"));
    std::vector<int> targets;
    for (int pest = 0; pest < 20; ++pest) {
        targets.push_back(farm_->addTarget(QStringLiteral("False codling moth %1").arg(pest)));
    }
    const int block = farm_->addBlock({.name = QStringLiteral("Fonteinkloof")});
    farm_->addInstruction({.issued = QDate::currentDate(), .blocks = {{block, 5}}, .targets = targets});
    farm_->close();
    window_ = std::make_unique<MDI_Monitoring>(dialogs_, menuEntries());
    QCOMPARE(window_->load(farm_->appPath()), MDI_Monitoring::Load::Done);
}

void MenuEntriesTest::screensFitTheWindow_data()
{
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QSize>("size");
    constexpr int titleBar = 24;
    for (const QSize size : {QSize(960, 540), QSize(1024, 640), QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080)}) {
        const QString name = QStringLiteral("%1 at %2x%3");
        for (const MenuEntry &entry : menuEntries()) {
            QTest::addRow("%s", qPrintable(name.arg(entry.picture).arg(size.width()).arg(size.height())))
                << entry.picture << size - QSize(0, titleBar);
        }
    }
}

void MenuEntriesTest::screensFitTheWindow()
{
    QFETCH(QString, picture);
    QFETCH(QSize, size);
    window_->resize(size);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QCOMPARE(faults().join(u'\n'), QString());
    control<controls::PictureButton>(picture).click();
    QCOMPARE(faults().join(u'\n'), QString());
    QCOMPARE(faultsOfPages(picture).join(u'\n'), QString());
    QCOMPARE(window_->size(), size);
    window_->CurrentForm()->closeScreen();
    QVERIFY(dialogs_.allAsExpected());
}

QStringList MenuEntriesTest::faultsOfPages(const QString &picture)
{
    QStringList found;
    if (picture == u"imSpray") {
        auto &list = control<controls::FlexGrid>(QStringLiteral("grdGS"));
        list.setCell(1, 2);
        press("cmdEdit");
        control<QLabel>(QStringLiteral("lblMethod_19")).setText(QStringLiteral("Select Pests To Monitor (20 Selected)"));
        found += faults();
        press("cmdTCancel");
        list.setCell(1, 2);
        press("cmdComp");
        found += faults();
        press("Command4");
    } else if (auto *add = window_->CurrentForm()->findChild<QPushButton *>(QStringLiteral("Command7"))) {
        QTest::mouseClick(add, Qt::LeftButton);
        found += faults();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    }
    return found;
}

QStringList MenuEntriesTest::faults() const
{
    // Twice: a layout may move what another one has posted.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QStringList found;
    for (const char *name : {"screenArea", "menuArea"}) {
        const auto &area = control<QScrollArea>(QLatin1String(name));
        if (area.isVisible() && (area.verticalScrollBar()->maximum() > 0 || area.horizontalScrollBar()->maximum() > 0)) {
            found.append(QLatin1String(name) + QStringLiteral(" scrolls"));
        }
    }
    for (const auto *button : window_->findChildren<QPushButton *>()) {
        const QRect at(button->mapTo(window_.get(), QPoint()), button->size());
        if (button->isVisible() && (!window_->rect().contains(at) || button->width() < button->minimumSizeHint().width())) {
            found.append(QStringLiteral("button %1 is cut").arg(button->objectName()));
        }
    }
    for (const auto *label : window_->findChildren<QLabel *>()) {
        const QString text = label->text().remove(u'&');
        if (label->isVisible() && !label->wordWrap() && label->width() < label->fontMetrics().horizontalAdvance(text)) {
            found.append(QStringLiteral("label \"%1\" is cut").arg(text));
        }
    }
    return found;
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    MenuEntriesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "MenuEntriesTest.moc"
