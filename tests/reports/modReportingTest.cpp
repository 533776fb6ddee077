// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/modReporting.h"

#include "SheetReader.h"
#include "platform/basic/Clock.h"
#include "support/FakeScreenHost.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using namespace reports;

/// The helpers that write workbooks, and what they leave in their caller's variables.
class modReportingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { basic::Clock::stopAt({}); }

    void fontNames_data();
    void fontNames();
    void sheetNames_data();
    void sheetNames();
    void sheetsAreAddedAndDeleted();
    void formatStopsAtTheFirstFault();
    void properties_data();
    void properties();
    void pageKeepsWhatIsTaken();
    void matchesAreListed();
    void saved_data();
    void saved();
    void aRefusedNameIsReported_data();
    void aRefusedNameIsReported();
    void twoInOneSecondAreBothSaved();
    void hiddenUntilShown();

private:
    excel::Application application_;
    excel::Workbook workbook_;
    excel::Worksheet sheet_;
};

void modReportingTest::init()
{
    application_ = excel::Application();
    workbook_ = application_.Workbooks().Add();
    sheet_ = workbook_.Worksheets(1);
    basic::Clock::stopAt(QDateTime(QDate(2026, 5, 4), QTime(10, 7, 9)));
}

void modReportingTest::fontNames_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("left");
    QTest::newRow("first") << 1 << QStringLiteral("Arial") << 1;
    QTest::newRow("last") << 10 << QStringLiteral("Wingdings") << 10;
    QTest::newRow("beyond") << 11 << QStringLiteral("Arial") << 1;
}

void modReportingTest::fontNames()
{
    QFETCH(int, index);
    QTEST(REPORT_FontName(index), "name");
    QTEST(index, "left");
}

void modReportingTest::sheetNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("safe");
    QTest::addColumn<QString>("left");
    const QString forty(40, u'n');
    QTest::newRow("plain") << QStringLiteral("Blok A") << QStringLiteral("Blok A") << QStringLiteral("Blok A");
    QTest::newRow("forty letters") << forty << forty << forty.left(30);
    QTest::newRow("slash") << QStringLiteral("A/B") << QStringLiteral("Sheet 1") << QStringLiteral("A/B");
    QTest::newRow("bracket") << QStringLiteral("A[1]") << QStringLiteral("Sheet 1") << QStringLiteral("A[1]");
    QTest::newRow("slash past the test") << forty.left(30) + u'/' << forty.left(30) + u'/' << forty.left(30);
    QTest::newRow("blank") << QStringLiteral("  ") << QStringLiteral("Sheet 1") << QStringLiteral("  ");
    QTest::newRow("taken") << QStringLiteral("Sheet1") << QStringLiteral("Sheet 1") << QStringLiteral("Sheet1");
    QTest::newRow("taken in other case") << QStringLiteral("SHEET1") << QStringLiteral("SHEET1") << QStringLiteral("SHEET1");
    QTest::newRow("colon") << QStringLiteral("A:B") << QStringLiteral("A:B") << QStringLiteral("A:B");
}

void modReportingTest::sheetNames()
{
    QFETCH(QString, name);
    QTEST(REPORT_SafeSheetName(workbook_, name), "safe");
    QTEST(name, "left");
}

void modReportingTest::sheetsAreAddedAndDeleted()
{
    QVERIFY(REPORT_AddSheet(workbook_));
    QVERIFY(REPORT_AddSheet(workbook_));
    sheet_.setName(QStringLiteral("summary"));
    QVERIFY(REPORT_DeleteSheets(workbook_));
    QCOMPARE(workbook_.Sheets().Count(), 1);
    QCOMPARE(workbook_.Sheets(1).Name(), QStringLiteral("summary"));
    QVERIFY(!REPORT_AddSheet(excel::Workbook()));
    QVERIFY(!REPORT_DeleteSheets(excel::Workbook()));
}

void modReportingTest::formatStopsAtTheFirstFault()
{
    RangeFormat format{
        .value = QStringLiteral("text"), .size = 1000, .wrap = true, .bold = true, .rowHeight = 40, .fontIndex = 99};
    REPORT_FormatRange(sheet_, QStringLiteral("b2"), QStringLiteral("b2"), format);
    const excel::Range cell = sheet_.Range(QStringLiteral("B2"));
    QCOMPARE(cell.value(), QStringLiteral("text"));
    QVERIFY(cell.WrapText());
    QCOMPARE(format.fontIndex, 1);
    QVERIFY2(!cell.Font().Bold() && cell.RowHeight() < 40, "what follows the refused size stays unset");
}

void modReportingTest::properties_data()
{
    QTest::addColumn<int>("selector");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("no line") << 0 << QVariant(0) << QVariant(excel::xlNone);
    QTest::newRow("line") << 0 << QVariant(1) << QVariant(excel::xlContinuous);
    QTest::newRow("unknown line") << 0 << QVariant(7) << QVariant(excel::xlNone);
    QTest::newRow("size") << 1 << QVariant(12.0) << QVariant(12.0);
    QTest::newRow("across") << 2 << QVariant(excel::xlCenter) << QVariant(excel::xlCenter);
    QTest::newRow("merged") << 3 << QVariant(true) << QVariant(true);
    QTest::newRow("wrap") << 4 << QVariant(true) << QVariant(true);
    QTest::newRow("bold") << 5 << QVariant(true) << QVariant(true);
    QTest::newRow("underline") << 6 << QVariant(2) << QVariant(2);
    QTest::newRow("height") << 7 << QVariant(40.0) << QVariant(40.0);
    QTest::newRow("weight") << 8 << QVariant(excel::xlThick) << QVariant(excel::xlThick);
    QTest::newRow("down") << 9 << QVariant(excel::xlTop) << QVariant(excel::xlTop);
    QTest::newRow("font") << 10 << QVariant(QStringLiteral("Tahoma")) << QVariant(QStringLiteral("Tahoma"));
}

void modReportingTest::properties()
{
    QFETCH(int, selector);
    QFETCH(QVariant, value);
    const QString first = QStringLiteral("C3");
    const QString last = QStringLiteral("D4");
    REPORT_SetProperty(sheet_, first, last, selector, value);
    REPORT_SetProperty(sheet_, first, last, 11, value);
    const excel::Range range = sheet_.Range(first, last);
    const QVariant actual[] = {range.Borders().LineStyle(),
                               range.Font().Size(),
                               range.HorizontalAlignment(),
                               range.MergeCells(),
                               range.WrapText(),
                               range.Font().Bold(),
                               range.Font().Underline(),
                               range.RowHeight(),
                               range.Borders().Weight(),
                               range.VerticalAlignment(),
                               QVariant(range.Font().Name())};
    QTEST(actual[selector], "expected");
}

void modReportingTest::pageKeepsWhatIsTaken()
{
    REPORT_PageSetup(sheet_, QStringLiteral("no rows"), QStringLiteral("A:A"), QStringLiteral("left"), QStringLiteral("right"),
                     excel::xlLandscape, QString());
    const excel::PageSetup page = sheet_.PageSetup();
    QCOMPARE(page.PrintTitleRows(), QString());
    QCOMPARE(page.PrintTitleColumns(), QStringLiteral("$A:$A"));
    QCOMPARE(page.LeftHeader() + page.RightHeader(), QStringLiteral("leftright"));
    QCOMPARE(page.Orientation(), excel::xlLandscape);
}

void modReportingTest::matchesAreListed()
{
    QString result;
    RegExp_Test(result, QStringLiteral("[a-z]\\d"), QStringLiteral("A1, b22"));
    QCOMPARE(result,
             QStringLiteral("Match found at position 0. Match Value is 'A1'.\r\n"
                            "Match found at position 4. Match Value is 'b2'.\r\n"));
    RegExp_Test(result, QStringLiteral("x"), QStringLiteral("A1"));
    QCOMPARE(result, QStringLiteral("Failed"));
    QCOMPARE(Column_Index(QStringLiteral("p")), 16);
}

void modReportingTest::saved_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("path");
    QTest::newRow("in a folder") << QStringLiteral("Pest Monitor") << QStringLiteral("/Reports/Pest Monitor/");
    QTest::newRow("without one") << QStringLiteral("  ") << QStringLiteral("/Reports/");
}

void modReportingTest::saved()
{
    QFETCH(QString, folder);
    QFETCH(QString, path);
    TemporaryFarm farm;
    FakeScreenHost host(farm.session);
    const auto file = REPORT_SaveReport(host, application_, folder, QStringLiteral("Count"));
    QVERIFY(file);
    QCOMPARE(*file, farm.appPath() + path + QStringLiteral("Count-2026_05_04 10_07_09.xlsx"));
    NEEDS_READERS();
    QCOMPARE(ReadSheet(*file).name(), QStringLiteral("Sheet1"));
}

void modReportingTest::aRefusedNameIsReported_data()
{
    QTest::addColumn<QString>("name");
    for (const QChar character : QStringLiteral("/\\:*?\"<>|")) {
        QTest::addRow("%c", character.toLatin1()) << QStringLiteral("Blok A%1B").arg(character);
    }
    QTest::addRow("too long") << QString(300, u'n');
}

void modReportingTest::aRefusedNameIsReported()
{
    QFETCH(QString, name);
    TemporaryFarm farm;
    FakeScreenHost host(farm.session);
    host.dialogs().expectMessage();
    QVERIFY(!REPORT_SaveReport(host, application_, QStringLiteral("Pest Monitor"), name));
    const QString actual = host.dialogs().takeLastText();
    QVERIFY2(actual.startsWith(QLatin1String("Error in REPORT_SaveReport ")) && actual.contains(name), qPrintable(actual));
    QVERIFY(QDir(farm.appPath() + QStringLiteral("/Reports/Pest Monitor")).isEmpty());
    QCOMPARE(application_.Workbooks().Count(), 1);
}

void modReportingTest::twoInOneSecondAreBothSaved()
{
    TemporaryFarm farm;
    FakeScreenHost host(farm.session);
    // The clock stands still, so waiting for the next second would not end.
    QStringList names;
    for (int report = 0; report < 3; ++report) {
        names.append(REPORT_SaveReport(host, application_, QString(), QStringLiteral("Count")).value_or(QString()).right(24));
    }
    QCOMPARE(names,
             (QStringList{QStringLiteral("2026_05_04 10_07_09.xlsx"), QStringLiteral("2026_05_04 10_07_10.xlsx"),
                          QStringLiteral("2026_05_04 10_07_11.xlsx")}));
}

void modReportingTest::hiddenUntilShown()
{
    TemporaryFarm farm;
    FakeScreenHost host(farm.session);
    excel::Application application(&host.launcher());
    application.Workbooks().Add();
    REPORT_HideExcel(application, true);
    QVERIFY(!application.Visible() && !application.ScreenUpdating() && !application.DisplayAlerts());
    const auto file = REPORT_SaveReport(host, application, QString(), QStringLiteral("Count"));
    QVERIFY(host.launcher().opened.isEmpty());
    REPORT_HideExcel(application, false);
    QCOMPARE(host.launcher().opened, QStringList{*file});
}

QTEST_MAIN(modReportingTest)
#include "modReportingTest.moc"
