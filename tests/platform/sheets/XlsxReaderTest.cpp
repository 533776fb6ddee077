// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/XlsxReader.h"
#include "platform/basic/RunTimeError.h"
#include "platform/excel/Application.h"
#include "platform/sheets/XlsxStyles.h"
#include "support/ZipFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using sheets::Cell;
using sheets::CellKind;

/// Workbooks of many makers, sound and broken.
class XlsxReaderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cellsAreReadByKind();
    void positionsMayBeLeftOut();
    void datesFollowTheFormat_data();
    void datesFollowTheFormat();
    void whatTheWriterWritesComesBack();
    void unsoundFileIsRefused_data();
    void unsoundFileIsRefused();
    void everyCutIsRefused();

private:
    QString path(const QString &name = QStringLiteral("book.xlsx")) const { return folder_.filePath(name); }
    QString refusal(const QString &file) const;
    sheets::Sheet readSheet(const QByteArray &rows, const QByteArray &afterRows = {}) const;

    QTemporaryDir folder_;
};

sheets::Sheet XlsxReaderTest::readSheet(const QByteArray &rows, const QByteArray &afterRows) const
{
    if (!writeZip(path(), workbookParts(rows, afterRows))) {
        qFatal("the archive was not written");
    }
    return sheets::readWorkbook(path()).sheets.front();
}

/// Why a file is not read; empty when it is.
QString XlsxReaderTest::refusal(const QString &file) const
{
    try {
        sheets::readWorkbook(file);
        return {};
    } catch (const basic::RunTimeError &error) {
        return error.description();
    }
}

void XlsxReaderTest::cellsAreReadByKind()
{
    const sheets::Sheet sheet =
        readSheet("<row r=\"2\"><c r=\"B2\" t=\"s\"><v>1</v></c><c r=\"C2\"><v>5</v></c><c r=\"D2\" s=\"1\"><v>46054</v></c>"
                  "<c r=\"E2\" t=\"b\"><v>1</v></c><c r=\"F2\" t=\"e\"><v>#N/A</v></c><c r=\"G2\"><f>1+1</f><v>2</v></c>"
                  "<c r=\"H2\" t=\"inlineStr\"><is><t>in line</t></is></c><c r=\"I2\" s=\"2\"/><c r=\"J2\" t=\"s\"><v>2</v></c>"
                  "<c r=\"K2\"><v>0.1</v></c><c r=\"L2\" t=\"str\"><f>A1</f><v>text</v></c></row>",
                  "<mergeCells><mergeCell ref=\"B2:C4\"/></mergeCells>");
    QCOMPARE(sheet.name, QStringLiteral("Blocks"));
    QCOMPARE(sheet.rows.size(), std::size_t(2));
    QVERIFY(sheet.rows[0].empty());
    const auto is = [&](int column, CellKind kind, const char *text, bool formula = false) {
        const Cell &cell = sheet.at(1, column);
        QCOMPARE(cell.kind, kind);
        QCOMPARE(cell.text, QString::fromUtf8(text));
        QCOMPARE(cell.formula, formula);
    };
    is(0, CellKind::Blank, "");
    is(1, CellKind::Text, "Dam");
    is(2, CellKind::Number, "5");
    is(3, CellKind::Date, "2026/02/01");
    is(4, CellKind::YesNo, "Yes");
    is(5, CellKind::Error, "#N/A");
    is(6, CellKind::Number, "2", true);
    is(7, CellKind::Text, "in line");
    is(8, CellKind::Blank, "");
    is(9, CellKind::Text, "a\tb");
    is(10, CellKind::Number, "0.1");
    is(11, CellKind::Text, "text", true);
    QCOMPARE(sheet.merged.size(), std::size_t(1));
    QCOMPARE(sheet.merged[0].lastRow, 3);
    QCOMPARE(sheets::columnLetters(sheet.merged[0].lastColumn), QStringLiteral("C"));
}

void XlsxReaderTest::positionsMayBeLeftOut()
{
    const sheets::Sheet sheet = readSheet("<row><c><v>1</v></c><c><v>2</v></c></row><row r=\"4\"><c r=\"C4\"><v>3</v></c>"
                                          "<c><v>4</v></c></row><row><c><v>5</v></c></row>");
    QCOMPARE(sheet.at(0, 1).text, QStringLiteral("2"));
    QCOMPARE(sheet.at(3, 3).text, QStringLiteral("4"));
    QCOMPARE(sheet.at(4, 0).text, QStringLiteral("5"));
}

void XlsxReaderTest::datesFollowTheFormat_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("date");
    for (const char *code : {"dd/mm/yyyy", "[$-409]d mmm", "yyyy", "h:mm", "[h]:mm", "\"on \"dd", "[Red]mm-yy;@"}) {
        QTest::newRow(code) << QString::fromLatin1(code) << true;
    }
    for (const char *code : {"General", "0.00", "#,##0", "0\" days\"", "[Red]0", "@", "0.0E+00", "\\d0", "0;dd"}) {
        QTest::newRow(code) << QString::fromLatin1(code) << false;
    }
}

void XlsxReaderTest::datesFollowTheFormat()
{
    QFETCH(QString, code);
    QFETCH(bool, date);
    QCOMPARE(sheets::isDateFormat(code), date);
}

void XlsxReaderTest::whatTheWriterWritesComesBack()
{
    const QStringList texts{QStringLiteral("007"),     QStringLiteral("=1+1"), QStringLiteral("Môreson, \"upper\""),
                            QStringLiteral("<&> a_b"), QStringLiteral("מטע"),  QStringLiteral("  spaces  ")};
    excel::Application application;
    application.setDisplayAlerts(false);
    excel::Workbook book = application.Workbooks().Add();
    excel::Worksheet sheet = book.Worksheets(1);
    sheet.setName(QStringLiteral("Names"));
    sheet.Range(QStringLiteral("A1"), QStringLiteral("A6")).setNumberFormat(QStringLiteral("@"));
    for (int i = 0; i < texts.size(); ++i) {
        sheet.Cells(i + 1, 1).setValue(texts[i]);
    }
    sheet.Cells(1, 2).setValue(12.5);
    book.SaveAs(path(), excel::xlOpenXMLWorkbook);
    const sheets::Sheet read = sheets::readWorkbook(path()).sheets.front();
    QCOMPARE(read.name, QStringLiteral("Names"));
    for (int i = 0; i < texts.size(); ++i) {
        QCOMPARE(read.at(i, 0).text, texts[i]);
        QCOMPARE(read.at(i, 0).kind, CellKind::Text);
    }
    QCOMPARE(read.at(0, 1).text, QStringLiteral("12.5"));
}

void XlsxReaderTest::unsoundFileIsRefused_data()
{
    QTest::addColumn<ZipParts>("parts");
    QTest::addColumn<QString>("reason");
    const QByteArray row = "<row><c><v>1</v></c></row>";
    const ZipParts sound = workbookParts(row);
    const auto refused = [](const char *name, const ZipParts &parts, const char *reason) {
        QTest::newRow(name) << parts << QString::fromLatin1(reason);
    };
    QByteArray relations = sound[3].second;
    refused("macros",
            withPart(sound, "xl/_rels/workbook.xml.rels",
                     relations.replace("</Relationships>",
                                       "<Relationship Id=\"rId9\" Type=\"x/vbaProject\" Target=\"vbaProject.bin\"/>"
                                       "</Relationships>")),
            "holds macros");
    refused(
        "binary workbook",
        withPart(sound, "_rels/.rels",
                 "<Relationships><Relationship Id=\"a\" Type=\"x/officeDocument\" Target=\"xl/workbook.bin\"/></Relationships>"),
        ".xlsb");
    refused("OpenDocument", {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", "<a/>"}},
            "OpenDocument");
    refused("other zip", {{"readme.txt", "hello"}}, "no sheets");
    refused("broken XML", withPart(sound, "xl/worksheets/sheet1.xml", "<worksheet><sheetData><row>"), "damaged");
    refused("missing sheet",
            withPart(sound, "xl/_rels/workbook.xml.rels", QByteArray(sound[3].second).replace("sheet1.xml", "sheet7.xml")),
            "damaged");
    refused("text that is not there", workbookParts("<row><c t=\"s\"><v>99</v></c></row>"), "damaged");
    refused("cell without position", workbookParts("<row><c r=\"7B\"><v>1</v></c></row>"), "damaged");
    refused("declared entities",
            withPart(sound, "xl/worksheets/sheet1.xml",
                     "<!DOCTYPE a [<!ENTITY x \"xxxxxxxxxx\">]><worksheet><sheetData/></worksheet>"),
            "damaged");
    refused("too many rows", workbookParts("<row r=\"100000\"><c r=\"A100000\"><v>1</v></c></row>"), "more than 50000 rows");
    refused("too many columns", workbookParts("<row><c r=\"XFD1\"><v>1</v></c></row>"), "XFD1 is filled");
    refused("unpacks to too much", withPart(sound, "xl/worksheets/sheet1.xml", QByteArray(300 * 1024 * 1024, ' ')), "too large");
}

void XlsxReaderTest::unsoundFileIsRefused()
{
    QFETCH(ZipParts, parts);
    QFETCH(QString, reason);
    QVERIFY(writeZip(path(), parts));
    const QString why = refusal(path());
    QVERIFY2(why.contains(reason) && why.startsWith(path()), qPrintable(why));
}

/// A cut or turned byte is noticed, or changes nothing that is read.
void XlsxReaderTest::everyCutIsRefused()
{
    const sheets::Sheet whole = readSheet("<row><c t=\"s\"><v>1</v></c><c><v>5</v></c></row>");
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto write = [&](const QByteArray &damaged) {
        QFile copy(path(QStringLiteral("damaged.xlsx")));
        return copy.open(QIODevice::WriteOnly) && copy.write(damaged) == damaged.size();
    };
    for (qsizetype length = 0; length < bytes.size(); length += 7) {
        QVERIFY(write(bytes.left(length)));
        const QString why = refusal(path(QStringLiteral("damaged.xlsx")));
        QVERIFY2(length < 2 || why.startsWith(path(QStringLiteral("damaged.xlsx"))), qPrintable(why));
    }
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        QByteArray turned = bytes;
        turned[i] = static_cast<char>(turned[i] ^ 0x40);
        QVERIFY(write(turned));
        try {
            const sheets::Workbook read = sheets::readWorkbook(path(QStringLiteral("damaged.xlsx")));
            if (read.sheets.front().name == whole.name && !read.sheets.front().rows.empty()) {
                QCOMPARE(read.sheets.front().at(0, 0).text, whole.at(0, 0).text);
            }
        } catch (const basic::RunTimeError &) {
            continue;
        }
    }
    QCOMPARE(refusal(path(QStringLiteral("missing.xlsx"))),
             QStringLiteral("File not found: ") + path(QStringLiteral("missing.xlsx")));
    QVERIFY(write(QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8)));
    QVERIFY(refusal(path(QStringLiteral("damaged.xlsx"))).contains(QLatin1String("protected by a password")));
}

QTEST_GUILESS_MAIN(XlsxReaderTest)
#include "XlsxReaderTest.moc"
