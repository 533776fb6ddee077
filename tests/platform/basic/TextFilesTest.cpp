// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/TextFiles.h"

#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace basic;

namespace
{
int errorOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const RunTimeError &error) {
        return error.number();
    }
    return 0;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}
} // namespace

class TextFilesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void firstItem_data();
    void firstItem();
    void firstLong_data();
    void firstLong();
    void missingAndUnreadable();
    void pathsAreFoundInAnyCase();
    void lineReplacesTheFile();
    void aFileOfASharedFolderIsShared();
};

void TextFilesTest::firstItem_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("item");
    QTest::newRow("plain line") << QByteArray("Rietvlei\r\nmore") << "Rietvlei";
    QTest::newRow("comma ends it") << QByteArray("  Rietvlei , 7") << "Rietvlei";
    QTest::newRow("quoted with commas") << QByteArray("\"Smith, Sons\",7\r\n") << "Smith, Sons";
    QTest::newRow("quote never closed") << QByteArray("\"Rietvlei") << "Rietvlei";
    QTest::newRow("quote alone") << QByteArray("\"") << "";
    QTest::newRow("empty line") << QByteArray("\r\n") << "";
    QTest::newRow("Windows-1252") << QByteArray("Caf\xE9 \x80\x92") << QString::fromUtf8("Café €’");
    QTest::newRow("UTF-8") << QByteArray("Caf\xC3\xA9") << QString::fromUtf8("Café");
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF"
                                                   "Caf\xC3\xA9")
                                     << QString::fromUtf8("Café");
    QTest::newRow("Windows-1252 ending like UTF-8") << QByteArray("Mor\xC3") << QString::fromUtf8("MorÃ");
}

void TextFilesTest::firstItem()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir folder;
    const QString path = folder.filePath("Findfarm.txt");
    write(path, bytes);
    QTEST(readFirstItem(path), "item");
}

void TextFilesTest::firstLong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("value");
    QTest::newRow("number") << QByteArray(" 12 \r\n") << 0 << 12;
    QTest::newRow("quoted") << QByteArray("\"12\"") << 0 << 12;
    QTest::newRow("half to even") << QByteArray("2.5") << 0 << 2;
    QTest::newRow("empty item") << QByteArray("\n") << 0 << 0;
    QTest::newRow("letters") << QByteArray("abc") << 13 << 0;
    QTest::newRow("digits then letters") << QByteArray("12abc") << 13 << 0;
    QTest::newRow("exponent") << QByteArray("1e3") << 13 << 0;
    QTest::newRow("too large") << QByteArray("3000000000") << 6 << 0;
    QTest::newRow("empty file") << QByteArray() << 62 << 0;
}

void TextFilesTest::firstLong()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir folder;
    const QString path = folder.filePath("FindfarmID.txt");
    write(path, bytes);
    int value = 0;
    QTEST(errorOf([&] { value = readFirstLong(path); }), "error");
    QTEST(value, "value");
}

void TextFilesTest::missingAndUnreadable()
{
    const QTemporaryDir folder;
    QCOMPARE(errorOf([&] { readFirstItem(folder.filePath("Findfarm.txt")); }), 53);
    QCOMPARE(errorOf([&] { readFirstItem(folder.filePath("gone\\Findfarm.txt")); }), 53);
    QCOMPARE(errorOf([&] { readFirstItem(folder.path()); }), 75);
    QCOMPARE(errorOf([&] { writeLine(folder.filePath("gone/FindSDate.txt"), "2026/01/01"); }), 75);
}

void TextFilesTest::pathsAreFoundInAnyCase()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath("Databases"));
    write(folder.filePath("Databases/pestmon.MDB"), "x");
    const QString stored = folder.filePath("Databases/pestmon.MDB");
#ifdef Q_OS_WIN
    QCOMPARE(QFileInfo(findPath(folder.path() + "\\DATABASES\\PestMon.mdb").value_or(QString())), QFileInfo(stored));
    return;
#endif
    QCOMPARE(findPath(folder.path() + "\\DATABASES\\PestMon.mdb").value_or(QString()), stored);
    QCOMPARE(pathForWriting(folder.path() + "/databases/PestMon.mdb"), stored);
    QCOMPARE(pathForWriting(folder.path() + "\\databases\\New.mdb"), folder.filePath("Databases/New.mdb"));
    QVERIFY(!findPath(folder.path() + "\\Reports\\a.xls"));
    // Two names that differ in case only: the exact match wins.
    write(folder.filePath("Databases/PestMon.mdb"), "y");
    QCOMPARE(findPath(folder.path() + "\\databases\\PestMon.mdb").value_or(QString()), folder.filePath("Databases/PestMon.mdb"));
}

void TextFilesTest::lineReplacesTheFile()
{
    const QTemporaryDir folder;
    write(folder.filePath("FINDSDATE.TXT"), "a much longer text than the new one\n");
    writeLine(folder.path() + "\\FindSDate.txt", "2026/01/01");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"FINDSDATE.TXT"});
    QCOMPARE(readFirstItem(folder.filePath("FindSDate.txt")), QStringLiteral("2026/01/01"));
}

void TextFilesTest::aFileOfASharedFolderIsShared()
{
#ifdef Q_OS_WIN
    QSKIP("A file has the permissions of its folder on Windows.");
#endif
    const QTemporaryDir folder;
    const auto group = QFile::ReadGroup | QFile::WriteGroup;
    QVERIFY(QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | group | QFile::ExeGroup));
    const QString path = folder.filePath("FindSDate.txt");
    writeLine(path, "2026/01/01");
    QVERIFY2(QFile::permissions(path).testFlags(group), "every member of the group can write it");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    writeLine(path, "2026/01/02");
    QVERIFY2(!(QFile::permissions(path) & group), "a file that exists has its own permissions");
}

QTEST_GUILESS_MAIN(TextFilesTest)
#include "TextFilesTest.moc"
