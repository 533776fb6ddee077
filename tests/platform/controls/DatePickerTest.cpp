// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DatePicker.h"
#include "platform/controls/CalendarPopup.h"

#include <QApplication>
#include <QDialog>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

using controls::CalendarPopup;
using controls::DatePicker;

/// What is typed, stepped and chosen, when it counts, and what a refused date prevents.
class DatePickerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void settersAreSilent();
    void typedTextIsAcceptedOrRefused_data();
    void typedTextIsAcceptedOrRefused();
    void otherDigitsAreShownPlain();
    void arrowsStepThePartAtTheCursor_data();
    void arrowsStepThePartAtTheCursor();
    void clickSelectsAPart();
    void escapeRestoresTheDate();
    void isAcceptedBeforeAShortcut_data();
    void isAcceptedBeforeAShortcut();
    void refusedDateStartsNothing_data();
    void refusedDateStartsNothing();
    void keysOpenTheCalendar_data();
    void keysOpenTheCalendar();
    void calendarChooses();
    void wheelChangesNothing();
};

void DatePickerTest::settersAreSilent()
{
    DatePicker picker;
    QSignalSpy changes(&picker, &DatePicker::Change);
    picker.setValue(QDate(2026, 5, 4));
    picker.setValue(QDate());
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
    QCOMPARE(picker.text(), QStringLiteral("2026/05/04"));
    QCOMPARE(changes.size(), 0);
}

void DatePickerTest::typedTextIsAcceptedOrRefused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    const auto row = [](const char *name, const QString &typed, QDate date) { QTest::newRow(name) << typed << date; };
    const QDate refused;
    row("eight digits", "20251231", {2025, 12, 31});
    row("with slashes", "2025/12/31", {2025, 12, 31});
    row("with dashes", "2025-12-31", {2025, 12, 31});
    row("one digit each", "2025/5/9", {2025, 5, 9});
    row("day first", "31/12/2025", {2025, 12, 31});
    row("day first with points", "1.9.2025", {2025, 9, 1});
    row("digits of another script", QStringLiteral("\u0662\u0660\u0662\u0665\u0661\u0662\u0663\u0661"), {2025, 12, 31});
    row("a short year", "5/9/26", refused);
    row("eight digits day first", "05112026", refused);
    row("no such day", "2026/02/30", refused);
    row("half a date", "2026/0", refused);
}

void DatePickerTest::typedTextIsAcceptedOrRefused()
{
    QFETCH(QString, typed);
    QFETCH(QDate, date);
    const QDate former(2026, 11, 23);
    DatePicker picker;
    picker.setValue(former);
    QSignalSpy changes(&picker, &DatePicker::Change);
    QSignalSpy refusals(&picker, &DatePicker::refused);
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.clearFocus();
    picker.setFocus(Qt::TabFocusReason);
    for (const QChar character : typed) {
        QTest::sendKeyEvent(QTest::Click, &picker, Qt::Key_unknown, QString(character), {});
    }
    QCOMPARE(changes.size() + refusals.size(), 0);
    QTest::keyClick(&picker, Qt::Key_Return);
    QCOMPARE(picker.Value(), date.isValid() ? date : former);
    QCOMPARE(picker.text(), picker.Value().toString(QStringLiteral("yyyy/MM/dd")));
    QCOMPARE(changes.size(), date.isValid() ? 1 : 0);
    QCOMPARE(refusals.size(), date.isValid() ? 0 : 1);
}

void DatePickerTest::otherDigitsAreShownPlain()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    QLocale::setDefault(before);
    QCOMPARE(picker.text(), QStringLiteral("2026/05/04"));
}

void DatePickerTest::arrowsStepThePartAtTheCursor_data()
{
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QDate>("date");
    QTest::newRow("all selected: the day") << -1 << QDate(2026, 6, 1);
    QTest::newRow("year") << 4 << QDate(2027, 5, 31);
    QTest::newRow("month, clamped to its last day") << 5 << QDate(2026, 6, 30);
    QTest::newRow("day") << 10 << QDate(2026, 6, 1);
}

void DatePickerTest::arrowsStepThePartAtTheCursor()
{
    QFETCH(int, cursor);
    QFETCH(QDate, date);
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 31));
    QSignalSpy changes(&picker, &DatePicker::Change);
    cursor < 0 ? picker.selectAll() : picker.setCursorPosition(cursor);
    QTest::keyClick(&picker, Qt::Key_Up);
    QCOMPARE(picker.Value(), date);
    QCOMPARE(changes.size(), 1);
    const QString selected = picker.selectedText();
    QTest::keyClick(&picker, Qt::Key_Up);
    QTest::keyClick(&picker, Qt::Key_Down);
    QCOMPARE(picker.Value(), date);
    QCOMPARE(picker.selectedText(), selected);
}

void DatePickerTest::clickSelectsAPart()
{
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    picker.resize(160, 32);
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    picker.setCursorPosition(6);
    QTest::mouseClick(&picker, Qt::LeftButton, {}, picker.inputMethodQuery(Qt::ImCursorRectangle).toRect().center());
    QCOMPARE(picker.selectedText(), QStringLiteral("05"));
    QTest::keyClicks(&picker, "12");
    QVERIFY(picker.acceptText());
    QCOMPARE(picker.Value(), QDate(2026, 12, 4));
}

void DatePickerTest::escapeRestoresTheDate()
{
    QDialog window;
    DatePicker picker(&window);
    picker.setValue(QDate(2026, 5, 4));
    window.show();
    picker.selectAll();
    QTest::keyClicks(&picker, "31");
    QTest::keyClick(&picker, Qt::Key_Escape);
    QCOMPARE(picker.text(), QStringLiteral("2026/05/04"));
    QVERIFY(window.isVisible());
    QTest::keyClick(&picker, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
}

void DatePickerTest::isAcceptedBeforeAShortcut_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<int>("year");
    QTest::newRow("access key of a button") << int(Qt::Key_V) << Qt::KeyboardModifiers(Qt::AltModifier) << 2025;
    QTest::newRow("Insert") << int(Qt::Key_Insert) << Qt::KeyboardModifiers() << 2025;
    QTest::newRow("Alt alone") << int(Qt::Key_Alt) << Qt::KeyboardModifiers(Qt::AltModifier) << 2026;
}

void DatePickerTest::isAcceptedBeforeAShortcut()
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
    picker.selectAll();
    QTest::keyClicks(&picker, QStringLiteral("20250504"));
    QTest::keyClick(&picker, static_cast<Qt::Key>(key), held);
    QTRY_VERIFY(!button.isDown());
    QTRY_COMPARE(seen, QDate(year, 5, 4));
    QCOMPARE(picker.Value(), seen);
    QVERIFY(picker.hasFocus());
}

void DatePickerTest::refusedDateStartsNothing_data()
{
    QTest::addColumn<bool>("byClick");
    QTest::newRow("key") << false;
    QTest::newRow("click") << true;
}

void DatePickerTest::refusedDateStartsNothing()
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
    const auto typeInvalidDate = [&] {
        picker.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&picker, QStringLiteral("31/02/2026"));
    };
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    button.setFocus();
    typeInvalidDate();
    save();
    QCOMPARE(refusals.size(), 1);
    QVERIFY(!button.isDown());
    QCOMPARE(saves.size(), 0);
    save();
    QTRY_COMPARE(saves.size(), 1);
    // Left by Tab first, the press is a separate action.
    button.setFocus(Qt::TabFocusReason);
    typeInvalidDate();
    button.setFocus(Qt::TabFocusReason);
    save();
    QCOMPARE(refusals.size(), 2);
    QTRY_COMPARE(saves.size(), 2);
}

void DatePickerTest::keysOpenTheCalendar_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("F4") << int(Qt::Key_F4) << Qt::KeyboardModifiers();
}

void DatePickerTest::keysOpenTheCalendar()
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
    auto *calendar = picker.findChild<CalendarPopup *>();
    QVERIFY(calendar);
    QCOMPARE(QApplication::activePopupWidget(), calendar);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!calendar->isVisible());
    QVERIFY2(window.isVisible(), "Esc closes only the calendar");
    QVERIFY(picker.hasFocus());
    QCOMPARE(changes.size() + left.size(), 0);
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
}

void DatePickerTest::calendarChooses()
{
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    QSignalSpy changes(&picker, &DatePicker::Change);
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    QTest::keyClick(&picker, Qt::Key_F4);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!picker.findChild<CalendarPopup *>()->isVisible());
    QCOMPARE(picker.Value(), QDate(2026, 5, 5));
    QCOMPARE(changes.size(), 1);
    picker.setReadOnly(true);
    QTest::keyClick(&picker, Qt::Key_F4);
    QVERIFY(!picker.findChild<CalendarPopup *>()->isVisible());
}

void DatePickerTest::wheelChangesNothing()
{
    DatePicker picker;
    picker.setValue(QDate(2026, 5, 4));
    picker.show();
    QWheelEvent notch(QPointF(5, 5), picker.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&picker, &notch);
    QVERIFY(!notch.isAccepted());
    QCOMPARE(picker.Value(), QDate(2026, 5, 4));
}

QTEST_MAIN(DatePickerTest)
#include "DatePickerTest.moc"
