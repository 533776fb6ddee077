// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/FieldSheets.h"

#include "SheetReader.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "reports/FieldSheetRun.h"
#include "reports/FilledSheet.h"
#include "support/FakeScreenHost.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace reports;

/// The scouts' sheets as independent readers see them.
class FieldSheetsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { basic::Clock::stopAt({}); }

    void blockSheetIsAForm();
    void blockWithoutPoints();
    void sixteenPests();
    void farmSheetIsAForm();
    void groupedLayouts_data();
    void groupedLayouts();

    void aSheetPerBlock();
    void refusedSheetNamesKeepTheDefault();
    void lastBlockWithASlashIsReportedAndNotOpened();
    void withoutBlocksOrInstructionNothingHappens();
    void farmSheetIsSaved();

    void filledSheet();
    void columnsFitTheirHeadings();
    void tooManyPestsAreRefused();
    void missingTemplateIsNamed();

private:
    FieldSheetData data(int pests) const;
    /// Writes by `write`, saves and reads.
    template <typename Write> ReadSheet written(Write write)
    {
        excel::Application application;
        excel::Workbook workbook = application.Workbooks().Add();
        write(application, workbook.Worksheets(1));
        const QString path = folder_.filePath(QStringLiteral("%1.xlsx").arg(++file_));
        workbook.SaveAs(path);
        return ReadSheet(path);
    }
    ReadSheet blockSheet(const FieldSheetData &sheetData, const SheetBlock &block)
    {
        return written([&](const excel::Application &application, const excel::Worksheet &sheet) {
            Print_Block_Sheet(sheet, sheetData, block, SheetKind::Count);
            setUpBlockSheet(application, sheet);
        });
    }
    ReadSheet farmSheet(const FieldSheetData &sheetData, const std::vector<SheetBlock> &blocks)
    {
        return written([&](const excel::Application &application, const excel::Worksheet &sheet) {
            Print_All_Sheet(sheet, sheetData, blocks, SheetKind::Absent);
            setUpAllSheet(application, sheet);
        });
    }
    FieldSheetOrder order(int instruction) const
    {
        return {.instruction = instruction,
                .method = QStringLiteral("Count"),
                .completion = QDate(2026, 5, 9),
                .person = QStringLiteral("Anna")};
    }
    /// Prints with the blocks of these names and two pests.
    QStringList print(const QStringList &blocks);

    QTemporaryDir folder_;
    int file_ = 0;
    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<FakeScreenHost> host_;
    int steps_ = 0;
};

void FieldSheetsTest::init()
{
    basic::Clock::stopAt(QDateTime(QDate(2026, 5, 4), QTime(10, 7, 9)));
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->session.CurrentFarm = QStringLiteral("=Rivier's Oord");
    host_ = std::make_unique<FakeScreenHost>(farm_->session);
    steps_ = 0;
}

FieldSheetData FieldSheetsTest::data(int pests) const
{
    FieldSheetData sheet{
        .farm = QStringLiteral("=Rivier's Oord"), .completion = QDate(2026, 5, 9), .person = QStringLiteral("Anna")};
    for (int pest = 1; pest <= pests; ++pest) {
        sheet.pests.push_back(QStringLiteral("Pest %1").arg(pest));
    }
    return sheet;
}

void FieldSheetsTest::blockSheetIsAForm()
{
    NEEDS_READERS();
    const ReadSheet sheet = blockSheet(
        data(2),
        {.name = QStringLiteral("Blok A"), .varieties = {QStringLiteral("Gala"), QStringLiteral("Fuji")}, .points = {1, 2, 3}});
    QCOMPARE(sheet.fault(), QString());
    const std::pair<const char *, const char *> cells[] = {
        {"A1", "text [Pest Monitoring: Count] Arial 15 bold center center 0 -/-/-/- D9D9D9 General"},
        {"D4", "text [Gala, Fuji] Arial 12 bold general top wrap 0 -/-/-/- - General"},
        {"D5", "text [09/05/2026] Arial 10 bold general center 0 -/-/-/- - General"},
        {"L5", "text [Instruction To:] Arial 10 general center 0 -/-/-/- - General"},
        {"K7", "blank [] Arial 10 bold left center 0 hair/hair/hair/hair - General"},
        {"A9", "text [Pnt] Arial 8 bold general center 0 thin/thin/thin/thin - General"},
        {"B9", "text [Pest 1] Arial 8 center bottom 90 thin/thin/thin/thin - General"},
        {"A11", "number [2] Arial 8 bold left center 0 thin/thin/thin/thin - General"},
        {"A14", "text [Tot] Arial 8 bold general center 0 thin/thin/thin/thin - General"},
    };
    for (const auto &[cell, value] : cells) {
        QCOMPARE(sheet.cell(QLatin1String(cell)), QLatin1String(value));
    }
    const std::pair<const char *, const char *> values[] = {
        {"A3", "=Rivier's Oord"},   {"I3", "Block:"},          {"J3", "Blok A"}, {"A4", "Cultivars:"},
        {"A5", "Completion Date:"}, {"G5", "Date Completed:"}, {"J5", ""},       {"O5", "Anna"},
        {"A7", "Person"},           {"H7", "Signed"},          {"C9", "Pest 2"}, {"A13", ""},
    };
    for (const auto &[cell, value] : values) {
        QCOMPARE(sheet.value(QLatin1String(cell)), QLatin1String(value));
    }
    QVERIFY(sheet.cell(QStringLiteral("C14")).contains(QLatin1String("thin/thin/thin/thin")));
    QVERIFY(!sheet.cell(QStringLiteral("D14")).contains(QLatin1String("thin/thin")));
    QCOMPARE(
        sheet.all(QStringLiteral("merged")),
        QStringLiteral("A1:P1 A3:H3 J3:K3 A4:C4 D4:P4 A5:C5 D5:F5 G5:I5 J5:K5 L5:N5 O5:P5 A6:P6 A7:C7 D7:G7 H7:J7 K7:P7 A8:P8"));
    QCOMPARE(sheet.height(1) + u' ' + sheet.height(4) + u' ' + sheet.height(9) + u' ' + sheet.height(10),
             QStringLiteral("18 75 95 18"));
    for (const char *column : {"A", "D", "E", "P"}) {
        QVERIFY2(sheet.width(QLatin1String(column)).startsWith(u'5'), column);
    }
    QCOMPARE(sheet.all(QStringLiteral("titles")), QStringLiteral("$A:$A $1:$7"));
    QCOMPARE(sheet.all(QStringLiteral("page")), QStringLiteral("portrait 9 0.4921"));
    QVERIFY(sheet.all(QStringLiteral("head")).startsWith(QStringLiteral("[Date &D Time &T] [None] [Page #&P Of &N Pages]")));
}

void FieldSheetsTest::blockWithoutPoints()
{
    NEEDS_READERS();
    const ReadSheet sheet = blockSheet(data(1), {.name = QStringLiteral("Blok A"), .varieties = {}, .points = {}});
    QCOMPARE(sheet.value(QStringLiteral("A11")), QStringLiteral("Tot"));
    QCOMPARE(sheet.value(QStringLiteral("A10")) + sheet.value(QStringLiteral("D4")), QString());
}

void FieldSheetsTest::sixteenPests()
{
    NEEDS_READERS();
    const ReadSheet sheet = blockSheet(data(16), {.name = QStringLiteral("Blok A"), .varieties = {}, .points = {1}});
    QCOMPARE(sheet.value(QStringLiteral("Q9")), QStringLiteral("Pest 16"));
    QVERIFY(sheet.cell(QStringLiteral("Q12")).contains(QLatin1String("thin/thin/thin/thin")));
    QVERIFY(sheet.all(QStringLiteral("merged")).startsWith(QLatin1String("A1:P1 A3:H3")));
}

void FieldSheetsTest::farmSheetIsAForm()
{
    NEEDS_READERS();
    const ReadSheet sheet = farmSheet(data(15),
                                      {{.name = QStringLiteral("Bo-rivier Noord"), .varieties = {}, .points = {1, 2}},
                                       {.name = QStringLiteral("B2"), .varieties = {}, .points = {1}}});
    QCOMPARE(sheet.fault(), QString());
    const std::pair<const char *, QString> values[] = {
        {"A1", QStringLiteral("Pest Monitoring: Absent")},
        {"A3", QStringLiteral("=Rivier's Oord")},
        {"A4", QStringLiteral("Completion Date: ")},
        {"E4", basic::shortDate(QDate(2026, 5, 9))},
        {"H4", QStringLiteral("Date completed:")},
        {"M4", QStringLiteral("Instruction to:")},
        {"O4", QStringLiteral("Anna")},
        {"A6", QStringLiteral("Person")},
        {"I6", QStringLiteral("Signed")},
        {"A9", QStringLiteral("Block")},
        {"B9", QStringLiteral("Pnt")},
        {"C9", QStringLiteral("Pest 1")},
        {"Q9", QStringLiteral("Pest 15")},
        {"A11", QStringLiteral("Bo-rivier Noord")},
        {"B11", QStringLiteral("2")},
        {"A12", QStringLiteral("B2")},
        {"A14", QStringLiteral("Tot")},
    };
    for (const auto &[cell, value] : values) {
        QCOMPARE(sheet.value(QLatin1String(cell)), value);
    }
    QCOMPARE(sheet.cell(QStringLiteral("C9")),
             QStringLiteral("text [Pest 1] Arial 8 bold general bottom wrap 90 thin/thin/thin/thin - General"));
    QVERIFY(sheet.cell(QStringLiteral("Q14")).contains(QLatin1String("thin/thin/thin/thin")));
    QCOMPARE(sheet.all(QStringLiteral("merged")),
             QStringLiteral("A1:P1 A3:I3 A4:D4 E4:G4 H4:J4 K4:L4 M4:N4 O4:P4 A5:P5 A6:D6 E6:H6 I6:K6 L6:P6 A8:P8"));
    QCOMPARE(sheet.height(9), QStringLiteral("85"));
    QVERIFY2(sheet.height(11).toDouble() > sheet.height(12).toDouble(), "a long name needs lines");
    QVERIFY(sheet.width(QStringLiteral("S")).startsWith(u'5'));
}

void FieldSheetsTest::groupedLayouts_data()
{
    QTest::addColumn<int>("layout");
    QTest::addColumn<int>("pests");
    QTest::addColumn<QString>("captions");
    QTest::addColumn<QString>("lastFramed");
    QTest::newRow("count, in, out") << 1 << 2 << QStringLiteral("C:Cnt D:In E:Out F:Cnt G:In H:Out") << QStringLiteral("H");
    QTest::newRow("the sixth and one too many")
        << 1 << 7
        << QStringLiteral("C:Cnt D:In E:Out F:Cnt G:In H:Out I:Cnt J:In K:Out L:Cnt M:In N:Out O:Cnt P:In Q:Out R:Cnt T:Out")
        << QStringLiteral("T");
    QTest::newRow("in, out") << 3 << 2 << QStringLiteral("C:In D:Out E:In F:Out") << QStringLiteral("F");
    QTest::newRow("the ninth") << 3 << 9
                               << QStringLiteral("C:In D:Out E:In F:Out G:In H:Out I:In J:Out K:In L:Out M:In N:Out O:In P:Out "
                                                 "Q:In R:Out T:Out")
                               << QStringLiteral("P");
}

void FieldSheetsTest::groupedLayouts()
{
    QFETCH(int, layout);
    QFETCH(int, pests);
    FieldSheetData sheetData = data(pests);
    sheetData.layout = static_cast<SheetLayout>(layout);
    NEEDS_READERS();
    const ReadSheet sheet = farmSheet(sheetData, {{.name = QStringLiteral("B"), .varieties = {}, .points = {1}}});
    QStringList captions;
    for (char column = 'C'; column <= 'Z'; ++column) {
        const QString text = sheet.value(QChar(column) + QStringLiteral("10"));
        if (!text.isEmpty()) {
            captions.append(QChar(column) + QStringLiteral(":") + text);
        }
    }
    QTEST(captions.join(u' '), "captions");
    QFETCH(QString, lastFramed);
    QVERIFY(sheet.cell(lastFramed + QStringLiteral("13")).contains(QLatin1String("thin/thin/thin/thin")));
    const QString next = QString(QChar(lastFramed[0].unicode() + 1)) + QStringLiteral("13");
    QVERIFY(!sheet.cell(next).contains(QLatin1String("thin/thin")));
    QCOMPARE(sheet.value(QStringLiteral("A11")) + sheet.value(QStringLiteral("B11")) + sheet.value(QStringLiteral("A13")),
             QStringLiteral("B1Tot"));
    QCOMPARE(sheet.height(9), layout == 1 ? QStringLiteral("18") : QStringLiteral("24"));
}

QStringList FieldSheetsTest::print(const QStringList &blocks)
{
    farm_->addTarget(QStringLiteral("Ants"));
    farm_->addTarget(QStringLiteral("Mites"));
    std::vector<std::pair<int, int>> chosen;
    for (const QString &name : blocks) {
        chosen.emplace_back(farm_->addBlock({.name = name}), 2);
    }
    const int instruction = farm_->addInstruction({.blocks = chosen, .targets = {2, 1}});
    printBlockSheets(*host_, order(instruction), [this](double) { ++steps_; });
    return host_->launcher().opened;
}

void FieldSheetsTest::aSheetPerBlock()
{
    farm_->addPlanting(
        {.block = 1, .variety = farm_->addVariety(QStringLiteral("Fruit"), QStringLiteral("Apple"), QStringLiteral("Gala"))});
    const QStringList opened = print({QStringLiteral("Blok A"), QStringLiteral("Blok B")});
    QString date = basic::longDate(QDate(2026, 5, 4));
    date.replace(u',', u'_');
    const QString path = farm_->appPath() + QStringLiteral("/Reports/Pest Monitor/Count ") + date
        + QStringLiteral("Blok B-2026_05_04 10_07_09.xlsx");
    QCOMPARE(opened, QStringList{path});
    QCOMPARE(steps_, 2);
    QVERIFY2(host_->status.contains(QDir::toNativeSeparators(path)), qPrintable(host_->status));
    QVERIFY2(!host_->excelApplication(), "the sheets have an application of their own");
    NEEDS_READERS();
    const ReadSheet first(path, 1);
    QCOMPARE(first.name(), QStringLiteral("Blok A"));
    QVERIFY(first.isOnTop());
    QCOMPARE(first.value(QStringLiteral("D4")), QStringLiteral("Gala"));
    QCOMPARE(first.value(QStringLiteral("B9")) + first.value(QStringLiteral("C9")), QStringLiteral("AntsMites"));
    QCOMPARE(first.value(QStringLiteral("A11")) + first.value(QStringLiteral("A13")), QStringLiteral("2Tot"));
    QCOMPARE(ReadSheet(path, 2).name(), QStringLiteral("Blok B"));
    const ReadSheet last(path, 3);
    QVERIFY(!last.name().isEmpty());
    QCOMPARE(last.cell(QStringLiteral("A1")), QString());
    QCOMPARE(ReadSheet(path, 4).lineCount(), 0);
}

void FieldSheetsTest::refusedSheetNamesKeepTheDefault()
{
    const QStringList opened = print({QStringLiteral("A/B"), QStringLiteral("A:B"), QString(40, u'n'), QStringLiteral("a")});
    QCOMPARE(opened.size(), 1);
    const char *names[] = {"Sheet 1", "Sheet2", "Sheet3", "a"};
    NEEDS_READERS();
    for (int sheet = 1; sheet <= 4; ++sheet) {
        QCOMPARE(ReadSheet(opened[0], sheet).name(), QLatin1String(names[sheet - 1]));
    }
    QCOMPARE(ReadSheet(opened[0], 3).value(QStringLiteral("J3")), QString(40, u'n'));
}

void FieldSheetsTest::lastBlockWithASlashIsReportedAndNotOpened()
{
    host_->dialogs().expectMessage();
    QVERIFY(print({QStringLiteral("A"), QStringLiteral("A/B")}).isEmpty());
    QVERIFY(host_->dialogs().takeLastText().startsWith(QLatin1String("Error in REPORT_SaveReport ")));
    QVERIFY(host_->status.isEmpty());
    // Still to be read when the box is gone.
    QVERIFY2(host_->failure.contains(QLatin1String("A/B")), qPrintable(host_->failure));
}

void FieldSheetsTest::withoutBlocksOrInstructionNothingHappens()
{
    QVERIFY(print({}).isEmpty());
    Print_All_Blocks(*host_, order(0), [this](double) { ++steps_; });
    QVERIFY(host_->launcher().opened.isEmpty() && steps_ == 0);
    QVERIFY(!QDir(farm_->appPath() + QStringLiteral("/Reports")).exists());
}

void FieldSheetsTest::farmSheetIsSaved()
{
    print({QStringLiteral("Blok A"), QStringLiteral("Blok B")});
    host_->launcher().opened.clear();
    Print_All_Blocks(*host_, order(1), [](double) {});
    QCOMPARE(host_->launcher().opened.size(), 1);
    const QString path = host_->launcher().opened[0];
    QVERIFY2(QDir(path).dirName().contains(QLatin1String("2026-2026_05_04 10_07_09.xlsx")), qPrintable(path));
    NEEDS_READERS();
    const ReadSheet sheet(path);
    QCOMPARE(sheet.value(QStringLiteral("A1")), QStringLiteral("Pest Monitoring: Count"));
    QCOMPARE(sheet.value(QStringLiteral("A13")) + sheet.value(QStringLiteral("B13")), QStringLiteral("Blok B2"));
    farm_->close();
    host_->dialogs().expectMessage();
    Print_All_Blocks(*host_, order(1), [](double) {});
    QVERIFY(host_->dialogs().takeLastText().startsWith(QLatin1String("Error in Excel_Pmcount_Balnk_all ")));
}

void FieldSheetsTest::filledSheet()
{
    makeTemplate(farm_->appPath(), QStringLiteral("PestMoni.xls"));
    QStringList wide;
    for (int column = 1; column <= 33; ++column) {
        wide.append(QString::number(column));
    }
    Print_Filled_Sheet(*host_,
                       {.block = QStringLiteral("Blok A"),
                        .completed = QDate(2026, 5, 9),
                        .week = QStringLiteral("19"),
                        .person = QStringLiteral("Anna"),
                        .note = QStringLiteral("after rain"),
                        .rows = {{QString(), QStringLiteral("Yes")}, wide}});
    QCOMPARE(host_->launcher().opened.size(), 1);
    const QString path = host_->launcher().opened[0];
    QCOMPARE(path,
             farm_->appPath() + QStringLiteral("/Reports/Pest Monitor Reports/Report_") + basic::longDate(QDate(2026, 5, 4))
                 + QStringLiteral("  10-07-09.xls"));
    NEEDS_READERS();
    const ReadSheet sheet(path);
    const std::pair<const char *, QString> values[] = {
        {"A2", QStringLiteral("Block :  Blok A")},
        {"D2", QStringLiteral("Date :  ") + basic::shortDate(QDate(2026, 5, 9))},
        {"G2", QStringLiteral("Week No. :  19")},
        {"J2", QStringLiteral("Person :  Anna")},
        {"A3", QStringLiteral("Block :  after rain")},
        {"A5", QStringLiteral(" ")},
        {"B5", QStringLiteral("Yes")},
        {"AE6", QStringLiteral("31")},
        {"AF6", QString()},
    };
    for (const auto &[cell, value] : values) {
        QCOMPARE(sheet.value(QLatin1String(cell)), value);
    }
    QVERIFY(sheet.cell(QStringLiteral("A5")).contains(QLatin1String(" 8 general bottom 0 thin/thin/thin/thin")));
    QVERIFY(sheet.cell(QStringLiteral("A2")).contains(QLatin1String(" 8 bold ")));
    QVERIFY(sheet.cell(QStringLiteral("B5")).contains(QLatin1String(" 8 center ")));
    QVERIFY2(!host_->excelApplication(), "the session's application is released");
}

void FieldSheetsTest::columnsFitTheirHeadings()
{
    makeTemplate(farm_->appPath(), QStringLiteral("PestMoni.xls"));
    Print_Filled_Sheet(*host_,
                       {.block = QStringLiteral("A block with a name far wider than its column"),
                        .completed = QDate(2026, 5, 9),
                        .rows = {{QStringLiteral("Point"), QStringLiteral("Cercospora sp"), QStringLiteral("x")}}});
    NEEDS_READERS();
    const ReadSheet sheet(host_->launcher().opened.value(0));
    const auto width = [&sheet](const char *column) { return sheet.width(QLatin1String(column)).toDouble(); };
    QVERIFY2(width("B") > 2.0 * width("C"), qPrintable(sheet.width(QStringLiteral("B"))));
    // The headings above the grid run over the columns to their right.
    QVERIFY2(width("A") < width("B"), qPrintable(sheet.width(QStringLiteral("A"))));
}

void FieldSheetsTest::tooManyPestsAreRefused()
{
    std::vector<int> pests;
    for (int pest = 1; pest <= 300; ++pest) {
        pests.push_back(farm_->addTarget(QStringLiteral("Pest %1").arg(pest)));
    }
    const int block = farm_->addBlock({.name = QStringLiteral("A")});
    const int instruction = farm_->addInstruction({.blocks = {{block, 2}}, .targets = pests});
    const auto [number, text] = errorOf([&] { printBlockSheets(*host_, order(instruction), [](double) {}); });
    QCOMPARE(number, 5);
    QVERIFY2(text.contains(QLatin1String("300 pests")) && text.contains(QLatin1String("253")), qPrintable(text));
    QVERIFY(host_->launcher().opened.isEmpty());
}

void FieldSheetsTest::missingTemplateIsNamed()
{
    const auto [number, text] = errorOf([&] { Print_Filled_Sheet(*host_, {}); });
    QCOMPARE(number, 1004);
    QVERIFY2(text.contains(QLatin1String("PestMoni.xls")), qPrintable(text));
    QVERIFY(!host_->excelApplication());
}

QTEST_MAIN(FieldSheetsTest)
#include "FieldSheetsTest.moc"
