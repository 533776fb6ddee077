// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgramLock.h"

#include "platform/basic/RunTimeError.h"

#include <QTemporaryDir>
#include <QTest>

class ProgramLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qunsetenv("TMPDIR"); }

    void folderIsLockedOnce()
    {
        auto first = ProgramLock::tryLock(folder_.path());
        QVERIFY(first);
        QVERIFY(!ProgramLock::tryLock(folder_.path() + QStringLiteral("/.")));
        first.reset();
        QVERIFY(ProgramLock::tryLock(folder_.path()));
    }

    void aLockThatCannotBeMadeIsNoOtherCopy()
    {
        qputenv("TMPDIR", "/proc");
        try {
            ProgramLock::tryLock(folder_.path());
            QFAIL("nobody can make a file there");
        } catch (const basic::RunTimeError &error) {
            QVERIFY2(error.description().contains(QStringLiteral("/proc/farm-monitoring")), qPrintable(error.description()));
        }
    }

private:
    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(ProgramLockTest)
#include "ProgramLockTest.moc"
