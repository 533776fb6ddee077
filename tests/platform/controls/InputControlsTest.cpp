// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/QueuedDialogs.h"
#include "platform/basic/RunTimeError.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/ItemCombo.h"
#include "platform/controls/PictureButton.h"
#include "platform/controls/Theme.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace controls;

/// Which setters are silent and which raise their event, and what wheel, keys and boxes do.
class InputControlsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void comboSettersAreSilentButTheIndex();
    void comboKeepsTextsOutsideItsList();
    void comboTypingLosesTheChoice();
    void comboRefusesIndexesItHasNot();
    void wheelChangesNothing();
    void dateIsSilentFromCode();
    void dateTypedIsOneChange();
    void dateTypedIsTakenBeforeAKeyActs_data();
    void dateTypedIsTakenBeforeAKeyActs();
    void dateTypedIsUnderstoodOrRefused_data();
    void dateTypedIsUnderstoodOrRefused();
    void refusedDateStartsNothing_data();
    void refusedDateStartsNothing();
    void keysOpenTheCalendar_data();
    void keysOpenTheCalendar();
    void aQuestionEndsByItsAnswersAlone();
    void unexpectedBoxesAreCounted();
    void everyColourAndIconIsThere();
    void enterPressesAPicture();
};

void InputControlsTest::comboSettersAreSilentButTheIndex()
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

void InputControlsTest::comboKeepsTextsOutsideItsList()
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

void InputControlsTest::comboTypingLosesTheChoice()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.setListIndex(0);
    QSignalSpy changes(&combo, &ItemCombo::Change);
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("b"));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(combo.Text(), QStringLiteral("Annab"));
    QCOMPARE(combo.ListIndex(), -1);
    // Typed again as it was, the text is the entry once more, and before editing ends.
    QTest::keyClick(combo.lineEdit(), Qt::Key_Backspace);
    QCOMPARE(combo.ListIndex(), 0);
    QTest::keyClick(&combo, Qt::Key_Home, Qt::ControlModifier);
    combo.setTypingAllowed(false);
    QTest::keyClicks(combo.lineEdit(), QStringLiteral("c"));
    QCOMPARE(changes.size(), 2);
}

void InputControlsTest::comboRefusesIndexesItHasNot()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, combo.setListIndex(1));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, combo.ItemData(-1));
}

void InputControlsTest::wheelChangesNothing()
{
    ItemCombo combo;
    combo.AddItem(QStringLiteral("Anna"), 3);
    combo.AddItem(QStringLiteral("Thabo"), 5);
    combo.setListIndex(0);
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    for (QWidget *widget : {static_cast<QWidget *>(&combo), static_cast<QWidget *>(&picker)}) {
        widget->show();
        QWheelEvent notch(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &notch);
        QVERIFY(!notch.isAccepted());
    }
    QCOMPARE(combo.ListIndex(), 0);
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
}

void InputControlsTest::dateIsSilentFromCode()
{
    DatePicker picker;
    QSignalSpy changes(&picker, &DatePicker::Change);
    picker.setValue(QDate(2026, 5, 4));
    picker.setValue(QDate());
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
    QCOMPARE(picker.text(), QStringLiteral("2026/05/04"));
    QCOMPARE(changes.size(), 0);
    QTest::keyClick(&picker, Qt::Key_Up);
    QCOMPARE(changes.size(), 1);
}

void InputControlsTest::dateTypedIsOneChange()
{
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    QSignalSpy changes(&picker, &DatePicker::Change);
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.setFocus();
    picker.setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClicks(&picker, QStringLiteral("2025"));
    QCOMPARE(changes.size(), 0);
    QTest::keyClick(&picker, Qt::Key_Return);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(picker.Value(), QDate(2025, 5, 4));
}

void InputControlsTest::dateTypedIsTakenBeforeAKeyActs_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<int>("year");
    QTest::newRow("a button's letter") << int(Qt::Key_V) << Qt::KeyboardModifiers(Qt::AltModifier) << 2025;
    QTest::newRow("a screen's Insert") << int(Qt::Key_Insert) << Qt::KeyboardModifiers() << 2025;
    QTest::newRow("Alt alone") << int(Qt::Key_Alt) << Qt::KeyboardModifiers(Qt::AltModifier) << 2026;
}

void InputControlsTest::dateTypedIsTakenBeforeAKeyActs()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, held);
    QFETCH(int, year);
    QWidget window;
    DatePicker picker(&window);
    QPushButton button(QStringLiteral("Sa&ve"), &window);
    const QShortcut insert(Qt::Key_Insert, &window);
    picker.setValue(QDate(2026, 5, 4));
    QDate seen = picker.Value();
    connect(&button, &QPushButton::clicked, this, [&] { seen = picker.Value(); });
    connect(&insert, &QShortcut::activated, this, [&] { seen = picker.Value(); });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    picker.setFocus();
    picker.setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClicks(&picker, QStringLiteral("2025"));
    QTest::keyClick(&picker, static_cast<Qt::Key>(key), held);
    QTRY_VERIFY(!button.isDown());
    QTRY_COMPARE(seen, QDate(year, 5, 4));
    QCOMPARE(picker.Value(), seen);
    QVERIFY(picker.hasFocus());
}

void InputControlsTest::dateTypedIsUnderstoodOrRefused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("overAll");
    QTest::addColumn<QDate>("date");
    const auto row = [](const char *name, const char *typed, QDate date, bool overAll = false) {
        QTest::newRow(name) << QString::fromLatin1(typed) << overAll << date;
    };
    const QDate refused;
    row("over year, month and day", "20251231", {2025, 12, 31});
    row("with strokes", "2025/12/31", {2025, 12, 31});
    row("with dashes", "2025-12-31", {2025, 12, 31});
    row("one digit each", "2025/5/9", {2025, 5, 9});
    row("a year alone", "2025", {2025, 11, 23});
    row("day first", "31/12/2025", {2025, 12, 31});
    row("day first with points", "1.9.2025", {2025, 9, 1});
    row("over all", "2025/05/09", {2025, 5, 9}, true);
    row("eight digits over all", "20250509", {2025, 5, 9}, true);
    row("day first over all", "9-5-2025", {2025, 5, 9}, true);
    row("a short year", "5/9/26", refused);
    row("eight digits day first", "05112026", refused);
    row("no such day", "2026/02/30", refused);
    row("day first, no such day", "31/02/2026", refused);
    row("half a date", "2026/0", refused, true);
}

void InputControlsTest::dateTypedIsUnderstoodOrRefused()
{
    QFETCH(QString, typed);
    QFETCH(bool, overAll);
    QFETCH(QDate, date);
    const QDate former(2026, 11, 23);
    DatePicker picker;
    picker.setValue(former);
    QSignalSpy changes(&picker, &DatePicker::Change);
    QSignalSpy refusals(&picker, &DatePicker::refused);
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.setFocus(Qt::TabFocusReason);
    if (overAll) {
        QTest::keyClick(&picker, Qt::Key_A, Qt::ControlModifier);
    }
    QTest::keyClicks(&picker, typed);
    QCOMPARE(changes.size() + refusals.size(), 0);
    QTest::keyClick(&picker, Qt::Key_Return);
    QCOMPARE(picker.Value(), date.isValid() ? date : former);
    QCOMPARE(picker.text(), picker.Value().toString(QStringLiteral("yyyy/MM/dd")));
    QCOMPARE(changes.size(), date.isValid() ? 1 : 0);
    QCOMPARE(refusals.size(), date.isValid() ? 0 : 1);
    // Arrows turn one part again.
    picker.setSelectedSection(QDateTimeEdit::YearSection);
    QTest::keyClick(&picker, Qt::Key_Down);
    QCOMPARE(picker.Value().year(), (date.isValid() ? date : former).year() - 1);
}

void InputControlsTest::refusedDateStartsNothing_data()
{
    QTest::addColumn<bool>("byClick");
    QTest::newRow("key") << false;
    QTest::newRow("click") << true;
}

void InputControlsTest::refusedDateStartsNothing()
{
    QFETCH(bool, byClick);
    QWidget window;
    DatePicker picker(&window);
    QPushButton button(QStringLiteral("Sa&ve"), &window);
    button.move(0, picker.sizeHint().height());
    QSignalSpy saves(&button, &QPushButton::clicked);
    QSignalSpy refusals(&picker, &DatePicker::refused);
    const auto save = [&] {
        if (byClick) {
            QTest::mouseClick(&button, Qt::LeftButton);
        } else {
            QTest::keyClick(&picker, Qt::Key_V, Qt::AltModifier);
        }
    };
    const auto typeNoDate = [&] {
        picker.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&picker, QStringLiteral("31/02/2026"));
    };
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    typeNoDate();
    save();
    QCOMPARE(refusals.size(), 1);
    QVERIFY(!button.isDown());
    QCOMPARE(saves.size(), 0);
    save();
    QTRY_COMPARE(saves.size(), 1);
    // Left by Tab before, a press is another matter.
    typeNoDate();
    button.setFocus(Qt::TabFocusReason);
    save();
    QCOMPARE(refusals.size(), 2);
    QTRY_COMPARE(saves.size(), 2);
}

void InputControlsTest::keysOpenTheCalendar_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("F4") << int(Qt::Key_F4) << Qt::KeyboardModifiers();
}

void InputControlsTest::keysOpenTheCalendar()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, held);
    QDialog window;
    DatePicker picker(&window);
    picker.setValue(QDate(2026, 5, 4));
    QSignalSpy changes(&picker, &DatePicker::Change);
    QSignalSpy left(&picker, &DatePicker::LostFocus);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    picker.setFocus();
    QTest::keyClick(&picker, static_cast<Qt::Key>(key), held);
    QWidget *popup = QApplication::activePopupWidget();
    QVERIFY(popup != nullptr);
    QVERIFY(popup->isAncestorOf(picker.calendarWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
    QVERIFY2(window.isVisible(), "Esc reached no farther than the calendar");
    QVERIFY(picker.hasFocus());
    QCOMPARE(changes.size() + left.size(), 0);
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
}

void InputControlsTest::aQuestionEndsByItsAnswersAlone()
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
    // With nothing to choose there is nothing to lose.
    QTimer::singleShot(0, this, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    boxes.message(QStringLiteral("Saved"), {}, BoxIcon::None);
}

void InputControlsTest::unexpectedBoxesAreCounted()
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

void InputControlsTest::everyColourAndIconIsThere()
{
    Theme::apply(*qApp, true);
    QVERIFY2(!qApp->styleSheet().contains(u'@'), "every name of the style sheet is filled in");
    for (const char *name : {"window", "base", "header", "line", "border", "text", "muted", "disabled", "accent", "ahover",
                             "apress", "soft", "onacc", "danger"}) {
        QVERIFY2(Theme::colour(QLatin1String(name)).isValid(), name);
    }
    const QIcon icon = Theme::icon(QStringLiteral("add"));
    const QImage dark = icon.pixmap(QSize(24, 24)).toImage();
    Theme::apply(*qApp, false);
    QVERIFY(icon.pixmap(QSize(24, 24)).toImage() != dark);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Theme::icon(QStringLiteral("no such icon")));
    for (const char *path : {"light/tick", "dark/tick", "dark/chevron-down", "light/calendar-disabled"}) {
        QVERIFY2(QFile::exists(QStringLiteral(":/farm/tinted/%1.svg").arg(QLatin1String(path))), path);
    }
}

void InputControlsTest::enterPressesAPicture()
{
    PictureButton picture;
    QSignalSpy clicks(&picture, &PictureButton::clicked);
    picture.show();
    QTest::keyClick(&picture, Qt::Key_Return);
    QTest::keyClick(&picture, Qt::Key_Space);
    QCOMPARE(clicks.size(), 2);
    picture.setUnavailable(QStringLiteral("Later"));
    QTest::mouseClick(&picture, Qt::LeftButton);
    QCOMPARE(clicks.size(), 2);
}

QTEST_MAIN(InputControlsTest)
#include "InputControlsTest.moc"
