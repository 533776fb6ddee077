// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/LongWork.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

/// Typing and clicking of an impatient user.
class LongWorkTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { window_.reset(); }
    void inputOfTheWorkIsDropped();
    void inputStillUnderWayIsDropped();
    void windowRepaintsMeanwhile();
    void ownBoxTakesInput();

private:
    void typeAndClick();

    std::unique_ptr<QWidget> window_;
    QLineEdit *field_ = nullptr;
    QPushButton *button_ = nullptr;
};

void LongWorkTest::init()
{
    window_ = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(window_.get());
    field_ = new QLineEdit;
    button_ = new QPushButton;
    layout->addWidget(field_);
    layout->addWidget(button_);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    field_->setFocus();
}

/// As from a real keyboard and mouse.
void LongWorkTest::typeAndClick()
{
    QWindow *window = window_->windowHandle();
    QTest::keyClick(window, Qt::Key_7);
    QTest::mouseClick(window, Qt::LeftButton, {}, button_->mapTo(window_.get(), button_->rect().center()));
}

void LongWorkTest::inputOfTheWorkIsDropped()
{
    QSignalSpy clicked(button_, &QPushButton::clicked);
    {
        const LongWork work;
        typeAndClick();
        LongWork::letRepaint();
        typeAndClick();
    }
    QCoreApplication::processEvents();
    QCOMPARE(field_->text(), QString());
    QCOMPARE(clicked.size(), 0);
    // The same input counts again as soon as the screen is free.
    typeAndClick();
    QTRY_COMPARE(clicked.size(), 1);
    QCOMPARE(field_->text(), QStringLiteral("7"));
}

void LongWorkTest::inputStillUnderWayIsDropped()
{
    {
        const LongWork work;
        QCoreApplication::postEvent(field_, new QKeyEvent(QEvent::KeyPress, Qt::Key_7, {}, QStringLiteral("7")));
    }
    QCoreApplication::processEvents();
    QCOMPARE(field_->text(), QString());
}

void LongWorkTest::windowRepaintsMeanwhile()
{
    const LongWork work;
    typeAndClick();
    bool painted = false;
    struct Watch : QObject {
        explicit Watch(bool &paintedFlag) : painted(paintedFlag) {}
        bool eventFilter(QObject *, QEvent *event) override
        {
            painted = painted || event->type() == QEvent::Paint;
            return false;
        }
        bool &painted;
    } watch(painted);
    button_->installEventFilter(&watch);
    button_->update();
    LongWork::letRepaint();
    QVERIFY(painted);
}

void LongWorkTest::ownBoxTakesInput()
{
    const LongWork work;
    QMessageBox box(QMessageBox::Warning, QString(), QStringLiteral("Not saved"), QMessageBox::Ok, window_.get());
    QTimer::singleShot(0, &box, [&box] { QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton); });
    QTimer::singleShot(5000, &box, &QDialog::reject);
    QCOMPARE(box.exec(), int(QMessageBox::Ok));
    QCOMPARE(box.clickedButton(), box.button(QMessageBox::Ok));
}

QTEST_MAIN(LongWorkTest)
#include "LongWorkTest.moc"
