// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/FileReplacement.h"
#include "platform/basic/NativePath.h"
#include "platform/basic/TextFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace
{

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

#ifdef Q_OS_WIN

/// Holds a file for a while as a virus scanner does: nobody may write, rename or remove it.
class Scanner
{
public:
    Scanner(const QString &path, DWORD milliseconds)
        : file_(CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), GENERIC_READ, FILE_SHARE_READ, nullptr,
                            OPEN_EXISTING, 0, nullptr)),
          thread_([this, milliseconds] {
              Sleep(milliseconds);
              CloseHandle(file_);
          })
    {
    }
    ~Scanner() { thread_.join(); }
    bool isHolding() const { return file_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE file_;
    std::thread thread_;
};

#endif

} // namespace

/// A file is replaced in one step, also under a name that few programs expect.
class FileReplacementTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void namesOfAllKinds_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("plain") << "plain";
        QTest::newRow("umlauts and other letters") << QString::fromUtf8("Jürgen Müller 農場");
        QTest::newRow("300 characters") << QString(150, u'a') + u'/' + QString(150, u'b');
    }

    void namesOfAllKinds()
    {
        QFETCH(QString, folder);
        const QTemporaryDir root;
        const QString path = root.filePath(folder) + "/file.txt";
        QVERIFY(QDir().mkpath(root.filePath(folder)));
        QCOMPARE(basic::writeWholeFile(path, "first"), QString());
        QCOMPARE(basic::writeWholeFile(path + ".new", "second"), QString());
        QCOMPARE(basic::replaceFile(path + ".new", path), QString());
        QCOMPARE(read(path), QByteArray("second"));
        QCOMPARE(read(basic::nativePath(path)), QByteArray("second"));
        QCOMPARE(basic::findPath(path), std::optional(QDir::cleanPath(path)));
        QCOMPARE(QDir(root.filePath(folder)).entryList(QDir::Files), QStringList("file.txt"));
    }

    void anUnfinishedFileReplacesNothing()
    {
        const QTemporaryDir root;
        const QString path = root.filePath("file");
        {
            basic::UnfinishedFile first(path + ".XXXXXX");
            QVERIFY(first.rename(path));
            QCOMPARE(basic::writeWholeFile(path, "old"), QString());
            basic::UnfinishedFile second(path + ".XXXXXX");
            QVERIFY(!second.rename(path));
        }
        QCOMPARE(QDir(root.path()).entryList(QDir::Files), QStringList("file"));
        QCOMPARE(read(path), QByteArray("old"));
    }

    void aFailureLeavesTheOldFile()
    {
        const QTemporaryDir root;
        QVERIFY(QDir(root.path()).mkpath("file/in the way"));
        QVERIFY(!basic::writeWholeFile(root.filePath("file"), "new").isEmpty());
        QVERIFY(!basic::replaceFile(root.filePath("none"), root.filePath("other")).isEmpty());
        QCOMPARE(QDir(root.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("file"));
    }

    void whatCannotBeOpenedFailsAtOnce()
    {
        const QTemporaryDir root;
        QElapsedTimer timer;
        timer.start();
        QFile inNoFolder(root.filePath("none/file"));
        QVERIFY(!basic::openWhenFree(inNoFolder, QIODevice::ReadWrite));
        QFile folder(root.path());
        QVERIFY(!basic::openWhenFree(folder, QIODevice::ReadWrite));
        QVERIFY(timer.elapsed() < 1000);
    }

    void aScannerIsWaitedFor()
    {
#ifdef Q_OS_WIN
        const QTemporaryDir root;
        const QString path = root.filePath("file");
        QCOMPARE(basic::writeWholeFile(path, "old"), QString());
        {
            const Scanner scanner(path, 1000);
            QVERIFY(scanner.isHolding());
            QVERIFY(!QFile::remove(path));
            QCOMPARE(basic::writeWholeFile(path, "new"), QString());
        }
        {
            const Scanner scanner(path, 1000);
            QFile file(path);
            QVERIFY(!file.open(QIODevice::ReadWrite));
            QVERIFY(basic::openWhenFree(file, QIODevice::ReadWrite));
        }
        QCOMPARE(basic::writeWholeFile(path + ".new", "newer"), QString());
        {
            const Scanner scanner(path + ".new", 1000);
            QCOMPARE(basic::replaceFile(path + ".new", path), QString());
        }
        QCOMPARE(read(path), QByteArray("newer"));
        const Scanner scanner(path, 4000);
        QVERIFY(!basic::writeWholeFile(path, "never").isEmpty());
        QCOMPARE(read(path), QByteArray("newer"));
#else
        QSKIP("only on Windows does an open file refuse to be replaced");
#endif
    }
};

QTEST_GUILESS_MAIN(FileReplacementTest)
#include "FileReplacementTest.moc"
