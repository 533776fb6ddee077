// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include "platform/basic/RunTimeError.h"

#include <QTemporaryDir>
#include <QTest>

class ProgramLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("XDG_RUNTIME_DIR", running_.path().toUtf8()); }
    void cleanup()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        qunsetenv("TMPDIR");
    }

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
        qputenv("XDG_RUNTIME_DIR", "/proc/none");
        qputenv("TMPDIR", "/proc");
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, tryProgramLock(running_.path()));
    }

private:
    QTemporaryDir running_;
};

QTEST_GUILESS_MAIN(ProgramLockTest)
#include "ProgramLockTest.moc"
