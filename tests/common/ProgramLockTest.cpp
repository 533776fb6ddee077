// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include "platform/basic/RunTimeError.h"

#include <QTemporaryDir>
#include <QTest>

class ProgramLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setFolder(running_.path()); }

    void aProgramIsLockedOnce()
    {
        const QTemporaryDir program;
        auto first = tryProgramLock(program.path());
        QVERIFY(first);
        QVERIFY(!tryProgramLock(program.path() + QStringLiteral("/.")));
        QVERIFY(tryProgramLock(running_.path()));
        first.reset();
        QVERIFY(tryProgramLock(program.path()));
    }

    void aLockThatCannotBeCreatedIsNoOtherCopy()
    {
#ifdef Q_OS_WIN
        setFolder(QCoreApplication::applicationFilePath());
#else
        setFolder("/proc");
        qputenv("XDG_RUNTIME_DIR", "/proc/none");
#endif
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, tryProgramLock(running_.path()));
    }

private:
    /// Where locks are: of running programs, or temporary files.
    static void setFolder(const QString &folder)
    {
        for (const char *variable : {"XDG_RUNTIME_DIR", "TMPDIR", "TMP"}) {
            qputenv(variable, folder.toUtf8());
        }
    }

    const QTemporaryDir running_;
};

QTEST_GUILESS_MAIN(ProgramLockTest)
#include "ProgramLockTest.moc"
