// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The program itself, started while another copy has its lock and there are no databases.
class SecondCopyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The folder of running programs, which is that of temporary files on Windows.
        for (const char *variable : {"XDG_RUNTIME_DIR", "TMP"}) {
            qputenv(variable, running_.path().toUtf8());
        }
#ifdef Q_OS_WIN
        // The program there has the windows of the system alone.
        qunsetenv("QT_QPA_PLATFORM");
#endif
    }

    void refusedBeforeAnythingElse_data()
    {
        QTest::addColumn<bool>("isRunning");
        QTest::newRow("another copy runs") << true;
        QTest::newRow("the only copy") << false;
    }

    void refusedBeforeAnythingElse()
    {
        QFETCH(bool, isRunning);
        const QTemporaryDir folder;
        const QString built(QStringLiteral(FARM_PROGRAM));
        const QString program = folder.filePath(QFileInfo(built).fileName());
        QVERIFY(QFile::copy(built, program));
        QVERIFY(QDir(folder.path()).mkdir("Databases"));
        const auto lock = isRunning ? tryProgramLock(folder.path()) : nullptr;
        QProcess second;
        second.start(program, {});
        QVERIFY(second.waitForStarted());
        // The first thing that the only copy does is to lock the farm's folder.
        const QString farmLock = folder.filePath("Databases/PestMon.lock");
        constexpr int Wait = 3000;
        static_cast<void>(QTest::qWaitFor([&] { return QFile::exists(farmLock); }, Wait));
        QCOMPARE(QFile::exists(farmLock), !isRunning);
        // Its box waits for an answer.
        QCOMPARE(second.state(), QProcess::Running);
        second.kill();
        second.waitForFinished();
    }

private:
    const QTemporaryDir running_;
};

QTEST_GUILESS_MAIN(SecondCopyTest)
#include "SecondCopyTest.moc"
