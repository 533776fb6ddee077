// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Dialogs.h"
#include "fakes/QueuedDialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

using namespace controls;

/// Keys of the boxes, and the queue that replaces them in tests.
class DialogsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aQuestionEndsByItsAnswersOnly();
    void boxesHaveOurIconAndSpaceForTheTitle();
    void unexpectedBoxesAreCounted();
};

void DialogsTest::aQuestionEndsByItsAnswersOnly()
{
    MessageBoxes boxes;
    for (const Answer preselected : {Answer::Yes, Answer::No}) {
        bool stayed = false;
        QTimer::singleShot(0, this, [&stayed] {
            QWidget *box = QApplication::activeModalWidget();
            QTest::keyClick(box, Qt::Key_Escape);
            box->close();
            stayed = box->isVisible();
            QTest::keyClick(box, Qt::Key_Return);
        });
        QCOMPARE(boxes.question(QStringLiteral("Save?"), {}, preselected), preselected);
        QVERIFY(stayed);
    }
    // A message has no answer, so Esc closes it.
    QTimer::singleShot(0, this, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    boxes.message(QStringLiteral("Saved"), {}, BoxIcon::None);
}

void DialogsTest::boxesHaveOurIconAndSpaceForTheTitle()
{
    MessageBoxes boxes;
    const QString longTitle = QStringLiteral("A title that is longer than the sentence of its box is shown completely");
    for (const QString &title : {QStringLiteral("Short"), longTitle}) {
        QTimer::singleShot(0, this, [&title] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            const int wanted = std::max(320, box->fontMetrics().horizontalAdvance(title));
            const bool wide = box->width() >= wanted;
            const bool hasIcon = !box->iconPixmap().isNull();
            box->accept();
            QVERIFY(wide);
            QVERIFY(hasIcon);
        });
        boxes.message(QStringLiteral("Saved"), title, BoxIcon::Exclamation);
    }
}

void DialogsTest::unexpectedBoxesAreCounted()
{
    QueuedDialogs dialogs;
    QVERIFY(dialogs.allAsExpected());
    dialogs.queueAnswer(Answer::Yes);
    QVERIFY(!dialogs.allAsExpected());
    QCOMPARE(dialogs.question(QStringLiteral("Print?"), {}, Answer::No), Answer::Yes);
    dialogs.expectMessage();
    dialogs.message(QStringLiteral("Saved"), {}, BoxIcon::None);
    QVERIFY(dialogs.allAsExpected());
    QCOMPARE(dialogs.takeLastText(), QStringLiteral("Saved"));
    QCOMPARE(dialogs.question(QStringLiteral("Again?"), {}, Answer::No), Answer::No);
    QVERIFY(!dialogs.allAsExpected());
}

QTEST_MAIN(DialogsTest)
#include "DialogsTest.moc"
