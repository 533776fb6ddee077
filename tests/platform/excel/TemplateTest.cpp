// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Application.h"
#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffReader.h"
#include "platform/excel/BiffRecords.h"
#include "platform/excel/BiffWriter.h"
#include "platform/excel/Readers.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace excel;

namespace
{
const QString TemplatePath = QStringLiteral(XLS_FOLDER "/template.xls");

QByteArray templateBytes()
{
    QFile file(TemplatePath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// The file with one run of bytes exchanged for another of the same length.
QByteArray exchanged(const char *before, const char *after)
{
    return templateBytes().replace(QByteArray::fromHex(before), QByteArray::fromHex(after));
}

QByteArray utf16(const QString &text)
{
    return {reinterpret_cast<const char *>(text.utf16()), 2 * text.size()};
}

/// A container whose streams all lie in the sectors of the first one.
QByteArray overlappingStreams()
{
    constexpr qsizetype startAndSize = 116;
    const QStringList names{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Six")};
    std::vector<CompoundEntry> entries{{{}, true, {}, {}}};
    for (const QString &name : names) {
        entries.push_back({{name}, false, QByteArray(entries.size() == 1 ? 60000 : 5000, 'x'), {}});
    }
    QByteArray bytes = writeCompound(entries);
    const QByteArray shared = bytes.mid(bytes.indexOf(utf16(names.front())) + startAndSize, 8);
    for (const QString &name : names) {
        bytes.replace(bytes.indexOf(utf16(name)) + startAndSize, shared.size(), shared);
    }
    return bytes;
}

QByteArray tooManyStreams()
{
    std::vector<CompoundEntry> entries{{{}, true, {}, {}}};
    for (int number = 0; number < 4097; ++number) {
        entries.push_back({{QString::number(number)}, false, {}, {}});
    }
    return writeCompound(entries);
}
} // namespace

class TemplateTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anUnchangedTemplateIsWrittenBackAsIs();
    void filledKeepsTheRest();
    void cellsTakeTheStyleOfTheTemplate();
    void onlyXlsKeepsEverything();
    void ofTwoPalettesTheLastCounts();
    void ofTwoFootersTheLastCounts();
    void foreignFiles_data();
    void foreignFiles();
    void aFileThatCannotBeReadThrough();
    void damage();
};

void TemplateTest::anUnchangedTemplateIsWrittenBackAsIs()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("same.xls");
    Application application;
    application.Workbooks().Open(TemplatePath).SaveAs(path);
    NEEDS_READERS();
    const QStringList records = readBack({"--records", TemplatePath});
    QVERIFY(records.size() > 50);
    compareLines(readBack({"--records", path}), records);
    compareLines(readBack({path}), readBack({TemplatePath}));
}

void TemplateTest::filledKeepsTheRest()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("filled.xls");
    Application application;
    Workbook book = application.Workbooks().Open(TemplatePath);
    // Over the first formula of a column of them, next to the image, and on a cell of its own far below.
    application.Range("B5").setValue("seven");
    application.Range("A2").setValue("Block :  7");
    application.Range("F20", "G21").Borders().setLineStyle(xlContinuous);
    application.ActiveSheet().PageSetup().setOrientation(xlLandscape);
    application.ActiveSheet().PageSetup().setPrintTitleRows("$1:$3");
    book.Worksheets().Add(book.Worksheets(2)).Range("A1").setValue("added");
    book.SaveAs(path);
    NEEDS_READERS();
    const QStringList actual = readBack({path});
    QVERIFY(!actual.filter("B5 text [seven]").isEmpty());
    QVERIFY(!actual.filter("A2 text [Block :  7]").isEmpty());
    QVERIFY(!actual.filter("A1 text [Orchard form] ").first().contains("reader failed"));
    QCOMPARE(actual.filter("titles"), QStringList{"titles Form!$A$1:$IV$3"});
    QVERIFY(actual.contains("sheet Sheet3 shown"));
    // The sum, the other formulas and the reference from the second sheet still give their values.
    QVERIFY(!actual.filter("A3 number [10]").isEmpty());
    QVERIFY(!actual.filter("B6 number [4]").isEmpty());
    const auto passedThrough = [](const QStringList &records) {
        return records.filter(QRegularExpression("^(00EB|00EC|005D|001C|01B6|01B2|01BE|0031) "));
    };
    const QStringList before = passedThrough(readBack({"--records", TemplatePath}));
    QVERIFY(before.filter("00EC").size() >= 2 && before.filter("01BE").size() == 1 && before.filter("001C").size() == 1);
    compareLines(passedThrough(readBack({"--records", path})), before);
}

void TemplateTest::cellsTakeTheStyleOfTheTemplate()
{
    Application application;
    application.Workbooks().Open(TemplatePath);
    Range title = application.Range("A1", "C1");
    QVERIFY(title.MergeCells());
    QCOMPARE(title.value(), "Orchard form");
    QVERIFY(title.Font().Bold());
    QCOMPARE(title.Font().Size(), 14.0);
    QCOMPARE(title.Interior().Color(), 0x99CC00);
    QCOMPARE(application.Range("B2").value(), QString::fromUtf8("é – 測試"));
    QVERIFY(qAbs(title.RowHeight() - 34) < 0.1);
    QCOMPARE(errorOf([&] { application.Range("A65537"); }).first, 1004);
}

void TemplateTest::onlyXlsKeepsEverything()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("other.xlsx");
    Application application;
    Workbook book = application.Workbooks().Open(TemplatePath);
    QCOMPARE(errorOf([&] { book.SaveAs(path, xlOpenXMLWorkbook); }).first, 1004);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(errorOf([&] { book.Worksheets(1).Delete(); }).first, 1004);
}

void TemplateTest::ofTwoPalettesTheLastCounts()
{
    const auto twice = bookFromXls(templateBytes());
    auto &records = twice->passthrough->globals;
    const auto first =
        std::find_if(records.begin(), records.end(), [](const auto &record) { return record.id == biff::Palette; });
    QVERIFY(first != records.end());
    const BiffRecord second = *first;
    records.insert(first, second);
    twice->passthrough->palette.front() = 0x123456;
    const auto book = bookFromXls(xlsBytes(*twice));
    QCOMPARE(book->passthrough->palette, twice->passthrough->palette);
    // More colours than the palette holds: each replaces an unused one, the last ones use the nearest.
    for (int column = 0; column < 100; ++column) {
        Interior interior = Range(book, book->sheets.front().get(), {0, column, 0, column}).Interior();
        interior.setPattern(xlSolid);
        interior.setThemeColor(1);
        interior.setTintAndShade(column / -100.0);
    }
    QCOMPARE(bookFromXls(xlsBytes(*book))->passthrough->palette.size(), std::size_t{56});
}

void TemplateTest::ofTwoFootersTheLastCounts()
{
    const auto twice = bookFromXls(templateBytes());
    const auto &sheet = twice->sheets.front();
    auto &records = sheet->passthrough->records;
    const auto last = std::find_if(records.begin(), records.end(),
                                   [](const auto &record) { return record.id == biff::Footer && !record.body.isEmpty(); });
    QVERIFY(last != records.end());
    BiffRecord first = *last;
    first.body.back() = 'x';
    records.insert(last, first);
    const auto book = bookFromXls(xlsBytes(*twice));
    QCOMPARE(book->sheets.front()->page.footer, sheet->page.footer);
    QCOMPARE(bookFromXls(xlsBytes(*book))->sheets.front()->page.footer, sheet->page.footer);
}

void TemplateTest::foreignFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << QByteArray("") << "empty";
    QTest::newRow("text") << QByteArray("Farm;Block\n1;2\n") << "not a .xls";
    QTest::newRow("xlsx renamed") << QByteArray("PK\x03\x04 and more") << "another format";
    QTest::newRow("first half") << templateBytes().left(templateBytes().size() / 2) << "damaged";
    QTest::newRow("container without a table") << templateBytes().left(512) << "damaged";
    QTest::newRow("older generation") << exchanged("09081000000605", "09081000000505") << "too old";
    // The record behind the begin of the book becomes the one that tells of a password.
    QTest::newRow("password") << exchanged("42000200b004", "2f000200b004") << "password";
    QTest::newRow("no workbook inside") << templateBytes().replace(QByteArray("W\0o\0r\0k\0b\0", 10),
                                                                   QByteArray("W\0a\0l\0k\0b\0", 10))
                                        << "does not contain a workbook";
    QTest::newRow("streams over each other") << overlappingStreams() << "damaged";
    QTest::newRow("thousands of streams") << tooManyStreams() << "damaged";
}

void TemplateTest::foreignFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const QTemporaryDir folder;
    const QString path = folder.filePath("foreign.xls");
    write(path, bytes);
    Application application;
    const auto [number, description] = errorOf([&] { application.Workbooks().Open(path); });
    QCOMPARE(number, 1004);
    QVERIFY2(description.contains(path) && description.contains(reason), qPrintable(description));
    QCOMPARE(application.Workbooks().Count(), 0);
}

// The begin of this file is no readable place, so the reading fails after the opening has not.
void TemplateTest::aFileThatCannotBeReadThrough()
{
#ifdef Q_OS_WIN
    QSKIP("There is no such file on Windows.");
#endif
    const QString path = QStringLiteral("/proc/self/mem");
    const auto [number, description] = errorOf([&] { readXls(path); });
    QCOMPARE(number, 1004);
    QVERIFY2(description.contains(path) && description.contains("could not be read completely"), qPrintable(description));
}

// Whatever bytes are hit, opening ends in a workbook that can be saved or in a clear error.
void TemplateTest::damage()
{
    const QTemporaryDir folder;
    const QByteArray sound = templateBytes();
    std::mt19937 random(20261122);
    int opened = 0;
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = sound;
        for (int hit = 0; hit <= round % 5; ++hit) {
            bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random());
        }
        const QString path = folder.filePath("damaged.xls");
        write(path, bytes);
        Application application;
        application.setDisplayAlerts(false);
        const auto [number, description] = errorOf([&] {
            Workbook book = application.Workbooks().Open(path);
            ++opened;
            book.SaveAs(folder.filePath("saved.xls"));
        });
        QVERIFY2(number == 0 || (number == 1004 && description.contains(".xls")), qPrintable(description));
    }
    QVERIFY(opened > 50 && opened < 300);
}

QTEST_GUILESS_MAIN(TemplateTest)
#include "TemplateTest.moc"
