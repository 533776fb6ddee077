// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/ItemCombo.h"
#include "platform/basic/RunTimeError.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using namespace controls;

/// Which setters are silent, and typing, choice and wheel.
class ItemComboTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void onlyTheIndexSetterRaisesClick();
    void textsOutsideTheListArePreserved();
    void typingResetsTheChoice();
    void indexOutOfRangeIsAnError();
    void typingCompletes();
    void choiceByKeys();
    void tabTakesTheEntryOfTheOpenList();
    void onlyAChoiceInTheOpenListIsOneFromTheList();
    void clickOpensOnRelease();
    void wheelChangesNothing();
};

void ItemComboTest::onlyTheIndexSetterRaisesClick()
{
    ItemCombo combo;
    QSignalSpy clicks(&combo, &ItemCombo::Click);
    QSignalSpy changes(&combo, &ItemCombo::Change);
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.AddItem(QStringLiteral("Thabo"), 5);
    QCOMPARE(combo.ListIndex(), -1);
    QCOMPARE(combo.Text(), QString());
    combo.setText(QStringLiteral("Thabo"));
    QCOMPARE(combo.ListIndex(), 1);
    QCOMPARE(clicks.size(), 0);
    combo.setListIndex(1);
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(combo.ItemData(combo.ListIndex()), 5);
    combo.setListIndex(-1);
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(combo.Text(), QString());
    combo.setListIndex(0);
    combo.Clear();
    QCOMPARE(combo.ListIndex(), -1);
    QCOMPARE(combo.ListCount(), 0);
    QCOMPARE(clicks.size(), 3);
    QCOMPARE(changes.size(), 0);
}

void ItemComboTest::textsOutsideTheListArePreserved()
{
    ItemCombo combo;
    combo.setText(QStringLiteral("Pieter, who left"));
    combo.AddItem(QStringLiteral("Anna"), 3);
    QCOMPARE(combo.Text(), QStringLiteral("Pieter, who left"));
    QCOMPARE(combo.ListIndex(), -1);
    // Leaving the field must not choose an entry that differs in case only.
    combo.setText(QStringLiteral("ANNA"));
    QSignalSpy clicks(&combo, &ItemCombo::Click);
    combo.show();
    QVERIFY(QTest::qWaitForWindowActive(&combo));
    QVERIFY(combo.hasFocus());
    combo.lineEdit()->clearFocus();
    QCOMPARE(combo.Text(), QStringLiteral("ANNA"));
    QCOMPARE(combo.ListIndex(), -1);
    QCOMPARE(clicks.size(), 0);
}

void ItemComboTest::typingResetsTheChoice()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.setListIndex(0);
    QSignalSpy changes(&combo, &ItemCombo::Change);
    // A text set by the program shows its beginning.
    QCOMPARE(combo.lineEdit()->cursorPosition(), 0);
    combo.lineEdit()->end(false);
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("b"));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(combo.Text(), QStringLiteral("Annab"));
    QCOMPARE(combo.ListIndex(), -1);
    // Typed back to an entry, the text is that entry again, before editing ends.
    QTest::keyClick(combo.lineEdit(), Qt::Key_Backspace);
    QCOMPARE(combo.ListIndex(), 0);
    QTest::keyClick(&combo, Qt::Key_Home, Qt::ControlModifier);
    combo.setTypingAllowed(false);
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("c"));
    QCOMPARE(changes.size(), 2);
}

void ItemComboTest::indexOutOfRangeIsAnError()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, combo.setListIndex(1));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, combo.ItemData(-1));
}

void ItemComboTest::typingCompletes()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.AddItem(QStringLiteral("Thabo"), 5);
    QSignalSpy changes(&combo, &ItemCombo::Change);
    QTest::keyClicks(&combo, QStringLiteral("th"));
    QCOMPARE(combo.Text(), QStringLiteral("Thabo"));
    QCOMPARE(combo.lineEdit()->selectedText(), QStringLiteral("abo"));
    QCOMPARE(combo.ListIndex(), 1);
    QCOMPARE(changes.size(), 2);
    // What was completed can be deleted, and other names can be typed.
    QTest::keyClick(&combo, Qt::Key_Backspace);
    QCOMPARE(combo.Text(), QStringLiteral("Th"));
    QCOMPARE(combo.ListIndex(), -1);
    QTest::keyClicks(&combo, QStringLiteral("emba"));
    QCOMPARE(combo.Text(), QStringLiteral("Themba"));
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, QStringLiteral("A"));
    QCOMPARE(combo.Text(), QStringLiteral("Anna"));
}

void ItemComboTest::choiceByKeys()
{
    ItemCombo combo;
    for (const char *entry : {"Aphids", "Bollworm", "Bugs", "Mites"}) {
        combo.AddItem(QLatin1String(entry));
    }
    combo.setTypingAllowed(false);
    combo.show();
    QVERIFY(QTest::qWaitForWindowActive(&combo));
    QSignalSpy clicks(&combo, &ItemCombo::Click);
    QTest::keyClick(&combo, Qt::Key_End);
    QCOMPARE(combo.Text(), QStringLiteral("Mites"));
    QTest::keyClick(&combo, Qt::Key_Home);
    QCOMPARE(combo.Text(), QStringLiteral("Aphids"));
    QCOMPARE(clicks.size(), 2);
    QTest::keyClick(&combo, Qt::Key_B);
    QVERIFY(combo.view()->isVisible());
    QCOMPARE(combo.view()->currentIndex().row(), 1);
    QTest::keyClick(combo.view(), Qt::Key_U);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QCOMPARE(combo.Text(), QStringLiteral("Bugs"));
    QTest::keyClick(&combo, Qt::Key_Space);
    QVERIFY(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    QCOMPARE(clicks.size(), 3);
}

void ItemComboTest::tabTakesTheEntryOfTheOpenList()
{
    QWidget window;
    auto *before = new QLineEdit(&window);
    auto *combo = new ItemCombo(&window);
    auto *after = new QLineEdit(&window);
    combo->setTypingAllowed(false);
    combo->AddItem(QStringLiteral("Count"), 1);
    combo->AddItem(QStringLiteral("Yes/No"), 2);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    combo->setFocus();
    const QSignalSpy clicks(combo, &ItemCombo::Click);
    QTest::keyClick(combo, Qt::Key_Y);
    QTRY_VERIFY(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Tab);
    QTRY_VERIFY(!combo->view()->isVisible());
    QCOMPARE(combo->ListIndex(), 1);
    QCOMPARE(clicks.size(), 1);
    QTRY_VERIFY(after->hasFocus());
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_C);
    QTRY_VERIFY(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(combo->ListIndex(), 0);
    QTRY_VERIFY(before->hasFocus());
}

void ItemComboTest::onlyAChoiceInTheOpenListIsOneFromTheList()
{
    ItemCombo combo;
    combo.setTypingAllowed(false);
    combo.AddItem(QStringLiteral("Dam"), 1);
    combo.AddItem(QStringLiteral("Hill"), 2);
    combo.show();
    QVERIFY(QTest::qWaitForWindowActive(&combo));
    const QSignalSpy chosen(&combo, &ItemCombo::ChosenFromList);
    QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(combo.ListIndex(), 0);
    // A sign that no entry begins with opens no list.
    QTest::keyClick(&combo, Qt::Key_7);
    QVERIFY(!combo.view()->isVisible());
    QTest::keyClick(&combo, Qt::Key_Space);
    QTRY_VERIFY(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    QTRY_VERIFY(!combo.view()->isVisible());
    QTest::keyClick(&combo, Qt::Key_End);
    QCOMPARE(combo.ListIndex(), 1);
    QVERIFY(chosen.isEmpty());
    QTest::keyClick(&combo, Qt::Key_D);
    QTRY_VERIFY(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QCOMPARE(combo.ListIndex(), 0);
    QCOMPARE(chosen.size(), 1);
}

void ItemComboTest::clickOpensOnRelease()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.setTypingAllowed(false);
    combo.show();
    QVERIFY(QTest::qWaitForWindowActive(&combo));
    QTest::mousePress(combo.lineEdit(), Qt::LeftButton);
    QVERIFY(!combo.view()->isVisible());
    QTest::mouseRelease(combo.lineEdit(), Qt::LeftButton);
    QVERIFY(combo.view()->isVisible());
    combo.hidePopup();
    combo.setEnabled(false);
    QTest::mouseClick(combo.lineEdit(), Qt::LeftButton);
    QVERIFY(!combo.view()->isVisible());
}

void ItemComboTest::wheelChangesNothing()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.AddItem(QStringLiteral("Thabo"), 5);
    combo.setListIndex(0);
    combo.show();
    QWheelEvent notch(QPointF(5, 5), combo.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&combo, &notch);
    QVERIFY(!notch.isAccepted());
    QCOMPARE(combo.ListIndex(), 0);
}

QTEST_MAIN(ItemComboTest)
#include "ItemComboTest.moc"
