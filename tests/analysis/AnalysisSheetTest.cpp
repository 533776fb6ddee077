// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisSheet.h"

#include "AnalysisScreen.h"
#include "reports/SheetReader.h"

#include <QFileInfo>

/// The sheet made by Print, as read by an independent reader.
class AnalysisSheetTest : public AnalysisScreen
{
    Q_OBJECT
private Q_SLOTS:
    void sheetOfAKind_data();
    void sheetOfAKind();
    void numbersOfAnySizeAreNumbers();
    void hiddenRowsLeaveNoGaps();
    void emptyListGivesTheHeadings();
    void withoutTemplateTheScreenStaysOpen();

private:
    ReadSheet print()
    {
        click("cmdExcel");
        return ReadSheet(host_->launcher().opened.value(0));
    }
    static QString line(const ReadSheet &sheet, int row)
    {
        QStringList cells;
        for (char16_t column = u'A'; column <= u'O'; ++column) {
            cells.append(sheet.value(QChar(column) + QString::number(row)));
        }
        return cells.join(u'|');
    }
};

void AnalysisSheetTest::sheetOfAKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("headings");
    QTest::addColumn<QString>("first");
    QTest::newRow("leaf") << "Leaf"
                          << "Leaf Analysis"
                          << "Block|Date|Leaf part|Season|N|P|K|Ca|Mg|Na|Mn|Fe|Cu|Zn|B"
                          << "Kloof|Valencia|Stem|Blossom|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5";
    QTest::newRow("fruit") << "Fruit"
                           << "Fruit Analysis"
                           << "Block|Date|Fruit part|Season|N|P|K|Ca|Mg|Na|Mn|Fe|Cu|Zn|B"
                           << "Kloof|Valencia|Stem|Blossom|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5";
    QTest::newRow("basic") << "Basic"
                           << "Soil Analysis:Basic"
                           << "Block|Date|Depth(cm)|Texture|pH(KCL)|Conduct|KUV|Klip(%)|Clay content(%)|Organic content(%)|||||"
                           << "Kloof|Valencia|1.5|Blossom|1.5|1.5|1.5|1.5|1.5|1.5|||||";
    QTest::newRow("extraction") << "Ex"
                                << "Soil Analysis:Extraction"
                                << "Block|Date|Depth(cm)||P (B1)|P (B2)|P (Ohlson)|K|Ca|Na|Mg|Cl|S|Al|"
                                << "Kloof|Valencia|1.5||1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|1.5|";
    QTest::newRow("micro") << "Micro"
                           << "Soil Analysis:Micro elements"
                           << "Block|Date|||Zn|Cu|B|Mn|Fe|Mo|||||"
                           << "Kloof|Valencia|||1.5|1.5|1.5|1.5|1.5|1.5|||||";
}

void AnalysisSheetTest::sheetOfAKind()
{
    QFETCH(QString, mode);
    QFETCH(QString, title);
    QFETCH(QString, headings);
    QFETCH(QString, first);
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    farm_->addAnalysis(*analysisKind(mode), farm_->kloof, QDate(2026, 5, 2), 1.5F);
    open(mode);
    NEEDS_READERS();
    const ReadSheet sheet = print();
    QVERIFY2(sheet.fault().isEmpty(), qPrintable(sheet.fault()));
    QCOMPARE(sheet.value("A1"), title);
    QCOMPARE(sheet.value("A3"), QStringLiteral("Rivier's Oord"));
    QCOMPARE(sheet.value("A4") + sheet.value("B4"), QStringLiteral("Period:01/01/2026 to 23/11/2026"));
    QVERIFY2(sheet.cell("A1").contains(QLatin1String("bold")), qPrintable(sheet.cell("A1")));
    QVERIFY2(sheet.all(QStringLiteral("titles")).contains(QLatin1String("$6")), qPrintable(sheet.all(QStringLiteral("titles"))));
    QCOMPARE(line(sheet, 6), headings);
    QCOMPARE(line(sheet, 7), first);
    QVERIFY2(sheet.cell("D6").contains(QLatin1String("bold")) && !sheet.cell("D7").contains(QLatin1String("bold")),
             qPrintable(sheet.cell("D6") + sheet.cell("D7")));
    const QFileInfo file(host_->launcher().opened.value(0));
    QCOMPARE(file.fileName(),
             QStringLiteral("Analysis ") + QLocale().toString(QDate(2026, 11, 23), QLocale::LongFormat)
                 + QStringLiteral("  10-00-00.xls"));
    QCOMPARE(file.dir().dirName(), QStringLiteral("Pest Monitor Reports"));
    QVERIFY(host_->status.contains(file.fileName()));
}

void AnalysisSheetTest::numbersOfAnySizeAreNumbers()
{
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    const std::array values{0.00005F, 0.5F, 2.5e10F, 1e20F, 1.5e-20F};
    for (std::size_t i = 0; i < values.size(); ++i) {
        farm_->addAnalysis(*analysisKind(u"Leaf"), farm_->kloof, QDate(2026, 5, 2).addDays(static_cast<int>(i)), values[i]);
    }
    open(u"Leaf");
    NEEDS_READERS();
    const ReadSheet sheet = print();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QString cell = sheet.cell(QStringLiteral("E%1").arg(7 + i));
        const double number = sheet.value(QStringLiteral("E%1").arg(7 + i)).toDouble();
        QVERIFY2(cell.startsWith(QLatin1String("number")), qPrintable(cell));
        QCOMPARE(static_cast<float>(number), values[i]);
    }
}

void AnalysisSheetTest::hiddenRowsLeaveNoGaps()
{
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    for (const int planting : {farm_->kloof, farm_->dam, farm_->rand}) {
        farm_->addAnalysis(*analysisKind(u"Leaf"), planting, QDate(2026, 5, 2), 1.5F);
    }
    open(u"Leaf");
    choose("cboGroup", QStringLiteral("Citrus"));
    choose("cmbBlock", QStringLiteral("Kloof"));
    NEEDS_READERS();
    const ReadSheet sheet = print();
    QCOMPARE(sheet.value("A7"), QStringLiteral("Kloof"));
    QCOMPARE(sheet.value("A8"), QString());
}

void AnalysisSheetTest::emptyListGivesTheHeadings()
{
    makeTemplate(farm_->appPath(), QStringLiteral("Analysis.xls"));
    open(u"Ex");
    NEEDS_READERS();
    const ReadSheet sheet = print();
    QCOMPARE(sheet.value("A6"), QStringLiteral("Block"));
    QCOMPARE(sheet.value("A7"), QString());
}

void AnalysisSheetTest::withoutTemplateTheScreenStaysOpen()
{
    open(u"Leaf");
    click("cmdExcel");
    QCOMPARE(host_->errors.size(), 1);
    QVERIFY(host_->errors.takeFirst().contains(QLatin1String("Analysis.xls")));
    QVERIFY(!host_->excelApplication());
}

QTEST_MAIN(AnalysisSheetTest)
#include "AnalysisSheetTest.moc"
