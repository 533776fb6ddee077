// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/Csv.h"
#include "platform/sheets/SheetError.h"

#include <QTest>

using sheets::Cell;

namespace
{

/// Rows as "a|b" per row, joined by newlines; a blank cell as nothing.
QString shown(const std::vector<std::vector<Cell>> &rows)
{
    QStringList lines;
    for (const std::vector<Cell> &row : rows) {
        QStringList cells;
        for (const Cell &cell : row) {
            cells.append(cell.text);
        }
        lines.append(cells.join(u'|'));
    }
    return lines.join(u'\n');
}

} // namespace

/// Separated values as spreadsheet programs of all sorts write them.
class CsvTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void valuesAreRead_data();
    void valuesAreRead();
    void brokenTextIsRefused_data();
    void brokenTextIsRefused();
    void limitsHold();
    void writtenValuesComeBack();
    void clipboardTakesAnyText();
};

void CsvTest::valuesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char *name, const QByteArray &bytes, const char *rows) {
        QTest::newRow(name) << bytes << QString::fromUtf8(rows);
    };
    row("comma", "Block,Points\nDam,5\n", "Block|Points\nDam|5");
    row("semicolon, with a comma in a name", "Block;Points\nDam, upper;5", "Block|Points\nDam, upper|5");
    row("tab", "Block\tPoints\nDam\t5", "Block|Points\nDam|5");
    row("announced separator", "sep=|\nBlock|Points\n", "\nBlock|Points");
    row("one column", "Block\nDam\n", "Block\nDam");
    row("UTF-8 with mark",
        "\xEF\xBB\xBF"
        "Block\nM\xC3\xB4reson",
        "Block\nMôreson");
    row("UTF-8 without", "Block\nM\xC3\xB4reson", "Block\nMôreson");
    row("Windows-1252", "Block\nM\xF4reson \x96 east", "Block\nMôreson – east");
    row("UTF-16",
        QByteArray("\xFF\xFE"
                   "A\0,\0B\0",
                   8),
        "A|B");
    row("line ends of all kinds", "a\r\nb\rc\nd", "a\nb\nc\nd");
    row("blank lines and columns stay", ",a\n\n,b\n", "|a\n\n|b");
    row("quotes", "\"a,b\",\"say \"\"no\"\"\",\"two\nlines\"", "a,b|say \"no\"|two\nlines");
    row("quote inside a value", "5\" pipe,b", "5\" pipe|b");
    row("separator only in quotes", "\"a;b\"\nc", "a;b\nc");
    row("right to left", "Block\n\xD7\x9E\xD7\x98\xD7\xA2", "Block\nמטע");
    row("nothing", "", "");
}

void CsvTest::valuesAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, rows);
    QCOMPARE(shown(sheets::readCsv(bytes)), rows);
}

void CsvTest::brokenTextIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("open quote") << QByteArray("Block\nDam\n\"never closed\nx") << QStringLiteral("row 3");
    QTest::newRow("no text") << QByteArray("\x7F"
                                           "ELF\0\0",
                                           6)
                             << QStringLiteral("neither a workbook");
}

void CsvTest::brokenTextIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    try {
        sheets::readCsv(bytes);
        QFAIL("it was read");
    } catch (const sheets::SheetError &error) {
        QVERIFY2(error.description().contains(reason), qPrintable(error.description()));
    }
}

void CsvTest::limitsHold()
{
    const QByteArray most = QByteArray("a\n").repeated(sheets::MaxRows);
    QCOMPARE(sheets::readCsv(most + "\n\n").size(), static_cast<std::size_t>(sheets::MaxRows));
    QVERIFY_THROWS_EXCEPTION(sheets::SheetError, sheets::readCsv(most + "a\n"));
    QVERIFY_THROWS_EXCEPTION(sheets::SheetError, sheets::readCsv(QByteArray(sheets::MaxColumns, ',') + "x"));
    QCOMPARE(sheets::readCsv("x" + QByteArray(sheets::MaxColumns, ',')).front().size(), std::size_t(1));
}

void CsvTest::writtenValuesComeBack()
{
    const std::vector<QStringList> rows{{QStringLiteral("a,b"), QStringLiteral("say \"no\""), QStringLiteral("Môreson")},
                                        {QStringLiteral("two\r\nlines"), QString(), QStringLiteral("=1+1")}};
    QCOMPARE(shown(sheets::readCsv(sheets::csvBytes(rows))), QStringLiteral("a,b|say \"no\"|Môreson\ntwo\r\nlines||=1+1"));
    QCOMPARE(shown(sheets::readClipboardText(sheets::clipboardText(rows))),
             QStringLiteral("a,b|say \"no\"|Môreson\ntwo\r\nlines||=1+1"));
}

void CsvTest::clipboardTakesAnyText()
{
    QCOMPARE(shown(sheets::readClipboardText(QStringLiteral("Dam\t5\r\n\"12\" pipe\t6\r\n"))),
             QStringLiteral("Dam|5\n12 pipe|6"));
    QCOMPARE(shown(sheets::readClipboardText(QStringLiteral("\"open\t1"))), QStringLiteral("\"open|1"));
    QVERIFY(sheets::readClipboardText(QString()).empty());
}

QTEST_GUILESS_MAIN(CsvTest)
#include "CsvTest.moc"
