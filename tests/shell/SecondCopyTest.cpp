// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The program itself, started while another copy has its lock and the databases are gone.
class SecondCopyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        const QString program = folder.filePath("FarmMonitoring");
        QVERIFY(QFile::copy(QStringLiteral(FARM_PROGRAM), program));
        QVERIFY(QDir(folder.path()).mkdir("run"));
        qputenv("XDG_RUNTIME_DIR", folder.filePath("run").toUtf8());
        const auto lock = isRunning ? tryProgramLock(folder.path()) : nullptr;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", folder.filePath("data"));
        QProcess second;
        second.setProcessEnvironment(environment);
        second.start(program, {});
        QVERIFY(second.waitForStarted());
        // Without the lock the first thing that a start without databases does is to lay out the user's folder.
        const QString laidOut = folder.filePath("data/farm-monitoring/Templates");
        constexpr int Wait = 3000;
        static_cast<void>(QTest::qWaitFor([&] { return QFile::exists(laidOut); }, Wait));
        QCOMPARE(QFile::exists(laidOut), !isRunning);
        // Its box waits for an answer.
        QCOMPARE(second.state(), QProcess::Running);
        second.kill();
        second.waitForFinished();
        qunsetenv("XDG_RUNTIME_DIR");
    }
};

QTEST_GUILESS_MAIN(SecondCopyTest)
#include "SecondCopyTest.moc"
