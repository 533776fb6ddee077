// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ImportDialog.h"
#include "fakes/QueuedDialogs.h"
#include "mainmodule/MainModuleWindow.h"
#include "platform/basic/RunTimeError.h"
#include "platform/controls/FlexGrid.h"
#include "shell/FarmApplication.h"
#include "support/TemporaryFarm.h"
#include "support/ZipFiles.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using mainmodule::ImportDialog;
using mainmodule::MainModuleWindow;

namespace
{

QByteArray cell(const char *position, const QByteArray &text)
{
    return QByteArray("<c r=\"") + position + "\" t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
}

/// Headings, and a first row whose three cells are given as they are.
QByteArray blockRows(const QByteArray &first)
{
    return "<row r=\"1\">" + cell("A1", "Block") + cell("B1", "Points") + "</row><row r=\"2\">" + first + "</row>";
}

QByteArray manyRows()
{
    QByteArray rows("Block,Points\n");
    for (int i = 1; i <= 100000; ++i) {
        rows += "Block " + QByteArray::number(i) + ",5\n";
    }
    return rows;
}

} // namespace

/// What people may open by mistake: each fault has a row, or the file a sentence.
class ImportDialogTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void workbooks_data();
    void workbooks();
    void separatedValues_data();
    void separatedValues();
    void brokenZipIsASentence();
    void namesMatchOnRequest();

private:
    /// The counts and each fault, or the sentence by which the file was refused.
    QString said(const QString &path);
    QString pathOf(const char *name) const { return folder_.filePath(QLatin1String(name)); }

    QTemporaryDir folder_;
    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<QueuedDialogs> dialogs_;
    std::unique_ptr<MainModuleWindow> window_;
};

void ImportDialogTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addBlock({QStringLiteral("Dam"), 1, 8, true});
    farm_->addBlock({QStringLiteral("Hill"), 1, 5, true});
    dialogs_ = std::make_unique<QueuedDialogs>();
    window_ = std::make_unique<MainModuleWindow>(*dialogs_);
    window_->load(farm_->appPath(), QStringLiteral("blocks"));
}

void ImportDialogTest::cleanup()
{
    QCOMPARE(farm_->count(QStringLiteral("tblBlock")), 2);
    window_.reset();
    farm_.reset();
}

QString ImportDialogTest::said(const QString &path)
{
    try {
        const lists::GivenBook given = lists::givenBook(sheets::readWorkbook(path), lists::List::Blocks);
        const ImportDialog dialog(*window_, given, lists::Matching::ByKey);
        QStringList lines{dialog.findChild<QLabel *>(QStringLiteral("screenTitle"))->text()};
        const auto &faults = *dialog.findChild<controls::FlexGrid *>(QStringLiteral("grdFaults"));
        for (int row = 1; row < faults.Rows(); ++row) {
            QStringList cells;
            for (int column = 0; column < faults.Cols(); ++column) {
                cells.append(faults.TextMatrix(row, column));
            }
            if (!cells.join(QString()).isEmpty()) {
                lines.append(cells.join(QStringLiteral(" | ")));
            }
        }
        return lines.join(u'\n');
    } catch (const basic::RunTimeError &error) {
        return error.description();
    }
}

void ImportDialogTest::workbooks_data()
{
    QTest::addColumn<ZipParts>("parts");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *name, const QByteArray &rows, const char *expected, const QByteArray &after = {}) {
        QTest::newRow(name) << workbookParts(rows, after) << QString::fromLatin1(expected);
    };
    add("merged cells", blockRows(cell("A2", "Weir") + cell("B2", "5")) + "<row r=\"3\"/>",
        "0 new, 0 changed, 1 refused\nBlocks | 2 |  |  | The cells A2:A3 are merged. Split them and fill in each.",
        "<mergeCells count=\"1\"><mergeCell ref=\"A2:A3\"/></mergeCells>");
    add("blank rows and columns",
        "<row r=\"3\">" + cell("C3", "Block") + cell("E3", "Points") + "</row><row r=\"7\">" + cell("C7", "Weir")
            + cell("E7", "5") + "</row>",
        "1 new, 0 changed, 0 refused");
    add("formula", blockRows(cell("A2", "Weir") + "<c r=\"B2\"><f>2+3</f><v>5</v></c>"),
        "Blocks | 2 | Points | 5 | The cell holds a formula. Paste it as a value.");
    add("formula without result", blockRows(cell("A2", "Weir") + "<c r=\"B2\"><f>2+3</f></c>"),
        "Blocks | 2 | Points |  | The cell holds a formula.");
    add("formula that failed", blockRows(cell("A2", "Weir") + "<c r=\"B2\" t=\"e\"><f>1/0</f><v>#DIV/0!</v></c>"),
        "Blocks | 2 | Points | #DIV/0! | The cell holds a formula.");
    add("number as text", blockRows(cell("A2", "Weir") + cell("B2", " 7 ")), "1 new, 0 changed, 0 refused");
    add("number as name", blockRows("<c r=\"A2\"><v>12</v></c><c r=\"B2\"><v>5</v></c>"), "1 new, 0 changed, 0 refused");
    add("date in a name", blockRows("<c r=\"A2\" s=\"1\"><v>46000</v></c><c r=\"B2\"><v>5</v></c>"),
        "Blocks | 2 | Block | 2025/12/09 | The spreadsheet made a date of it.");
    add("fraction", blockRows(cell("A2", "Weir") + "<c r=\"B2\"><v>5.5</v></c>"),
        "Blocks | 2 | Points | 5.5 | Monitoring points are a whole number from 1 to 500.");
    add("control character", blockRows(cell("A2", "We_x0007_ir") + cell("B2", "5")),
        "It holds a character that cannot be shown (U+0007).");
    add("right to left", blockRows(cell("A2", "\xD7\xA1\xD7\x9B\xD7\xA8") + cell("B2", "5")), "1 new, 0 changed, 0 refused");
    add("mark that turns the direction",
        blockRows(cell("A2",
                       "\xE2\x80\xAE"
                       "Weir")
                  + cell("B2", "5")),
        "It holds an invisible mark (U+202E).");
    const ZipParts plain = workbookParts(blockRows(cell("A2", "Weir") + cell("B2", "5")));
    QTest::newRow("macros") << withPart(plain, "xl/vbaProject.bin", "not run") << QStringLiteral("1 new, 0 changed, 0 refused");
    QTest::newRow("sheet that is no XML") << withPart(plain, "xl/worksheets/sheet1.xml", "<worksheet><sheetData><row>")
                                          << QStringLiteral("is damaged: the sheet \"Blocks\" cannot be read.");
    QTest::newRow("archive of something else")
        << ZipParts{{"readme.txt", "hello"}} << QStringLiteral("is no workbook: no sheets were found in it.");
}

void ImportDialogTest::workbooks()
{
    QFETCH(ZipParts, parts);
    QVERIFY(writeZip(pathOf("given.xlsx"), parts));
    const QString text = said(pathOf("given.xlsx"));
    QFETCH(QString, expected);
    QVERIFY2(text.contains(expected), qPrintable(text));
}

void ImportDialogTest::separatedValues_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *name, const QByteArray &text, const char *expected) {
        QTest::newRow(name) << text << QString::fromLatin1(expected);
    };
    add("two rows with one key", "Block key,Block\n1,Weir\n1,Low\n",
        "0 new, 0 changed, 2 refused\ngiven | 2 | Block key | 1 | Several rows have this key.\ngiven | 3 |");
    add("key that does not exist", "Block key,Block\n99,Weir\n", "given | 2 | Block key | 99 | There is no block with this key.");
    add("key that another new row will have", "Block key,Block\n,Weir\n3,Low\n",
        "given | 3 | Block key | 3 | There is no block with this key.");
    add("cell without heading", "Block,Points\nDam, upper,5\n", "given | 2 |  |  | Column C has no heading");
    add("text as key", "Block key,Block\nfirst,Weir\n", "given | 2 | Block key | first | This is not a key.");
    add("key of another table", "Farm key,Farm,Block\n1,Riverbend,Weir\n",
        "0 new, 0 changed, 0 refused; 1 sheet cannot be read\ngiven |  | Farm key |  | These are keys of the list Farms, not of "
        "Blocks.");
    add("wrong sheet", "Price,Amount\n12,3\n", "There is no farm list in it.");
    add("quotes", "Block;Points\n\"The \"\"old\"\" dam\";5\n",
        "1 new, 0 changed, 0 refused\ngiven | 2 | Block | The \"old\" dam | Note: ");
    add("line end in a cell", "Block,Points\n\"Upper\nweir\",5\nLow,5\n",
        "1 new, 0 changed, 1 refused\ngiven | 2 | Block | Upper\nweir | It holds a line break.");
    add("quote that is not closed", "Block,Points\n\"Weir,5\nLow,5\n", "has a quotation mark in row 2 that does not close.");
    add("Windows-1252 and carriage returns", "Block,Points\rM\xF4reson,5\r", "1 new, 0 changed, 0 refused");
    add("farm that does not exist", "Farm,Block\nNowhere,Weir\n", "given | 2 | Farm | Nowhere | There is no farm of this name.");
    add("too long a name", "Block\n" + QByteArray(51, 'x') + '\n', "It has 51 characters; 50 are the most.");
    add("characters of file names", "Block\nA/B\n", "Note: It holds \"/\", which the name of a sheet or file cannot have");
    add("nothing in it", "", "There is nothing in it.");
    add("bytes of a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16),
        "is neither a workbook (.xlsx) nor a text of separated values (.csv).");
    add("workbook of an older format", QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(504, '\0'),
        "is an .xls workbook or protected by a password. Save it as .xlsx without a password");
    add("100,000 rows", manyRows(), "has more than 50000 rows.");
}

void ImportDialogTest::separatedValues()
{
    QFETCH(QByteArray, text);
    QFile file(pathOf("given.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size());
    file.close();
    const QString found = said(file.fileName());
    QFETCH(QString, expected);
    QVERIFY2(found.contains(expected), qPrintable(found));
}

void ImportDialogTest::brokenZipIsASentence()
{
    QVERIFY(writeZip(pathOf("given.xlsx"), workbookParts(blockRows(cell("A2", "Weir") + cell("B2", "5")))));
    QFile file(pathOf("given.xlsx"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(file.size() / 2));
    file.close();
    QVERIFY(said(file.fileName()).endsWith(QLatin1String("is damaged: its list of contents cannot be read.")));
    QVERIFY(QFile::remove(file.fileName()));
    QVERIFY(writeZip(file.fileName(), workbookParts(blockRows(cell("A2", "Weir") + cell("B2", "5")))));
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(file.size() / 2) && file.write("damaged bytes", 13) == 13);
    file.close();
    QVERIFY(said(file.fileName()).contains(QLatin1String("is damaged: ")));
}

void ImportDialogTest::namesMatchOnRequest()
{
    QFile file(pathOf("given.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Block,Points\ndam,12\n") > 0);
    file.close();
    ImportDialog dialog(*window_, lists::givenBook(sheets::readWorkbook(file.fileName()), lists::List::Blocks),
                        lists::Matching::ByKey);
    const auto &title = *dialog.findChild<QLabel *>(QStringLiteral("screenTitle"));
    QCOMPARE(title.text(), QStringLiteral("1 new, 0 changed, 0 refused"));
    dialog.findChild<QCheckBox *>(QStringLiteral("chkByName"))->click();
    QCOMPARE(title.text(), QStringLiteral("0 new, 1 changed, 0 refused"));
    QCOMPARE(dialog.plan().changes.front().key(), 1);
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    ImportDialogTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "ImportDialogTest.moc"
