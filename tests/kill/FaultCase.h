// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/DiskCalls.h"

#include <QTest>

/// A way in which a disk fails.
struct FaultCase {
    diskCalls::Kinds kinds;
    diskCalls::Effect effect = diskCalls::Effect::Fail;
    diskCalls::Duration duration = diskCalls::Duration::Once;

    /// Rows of a test function, in a column "fault".
    static void addAll()
    {
        using diskCalls::Duration;
        using diskCalls::Effect;
        using diskCalls::Kind;
        QTest::addColumn<FaultCase>("fault");
        QTest::newRow("a write fails") << FaultCase{Kind::Write};
        QTest::newRow("a write is short") << FaultCase{Kind::Write, Effect::Short};
        QTest::newRow("a read fails") << FaultCase{Kind::Read};
        QTest::newRow("a read is short") << FaultCase{Kind::Read, Effect::Short};
        QTest::newRow("waiting for a file fails") << FaultCase{Kind::Sync};
        QTest::newRow("waiting for a folder fails") << FaultCase{Kind::SyncFolder};
        QTest::newRow("no file can be made") << FaultCase{diskCalls::Kinds(Kind::Create) | Kind::MakeFolder};
        QTest::newRow("no file can be removed, renamed or cut")
            << FaultCase{diskCalls::Kinds(Kind::Remove) | Kind::Rename | Kind::Truncate};
        QTest::newRow("the disk is full") << FaultCase{diskCalls::Kinds(Kind::Write), Effect::FailFull, Duration::FromNowOn};
        QTest::newRow("the disk is gone") << FaultCase{diskCalls::Changes, Effect::Fail, Duration::FromNowOn};
    }

    /// Nothing hinders the program.
    bool isHarmless() const { return effect == diskCalls::Effect::Short; }
    /// What is reported as done may then be lost at a power cut.
    bool concernsSync() const { return kinds == diskCalls::Kind::Sync || kinds == diskCalls::Kind::SyncFolder; }
    /// The operation to fail after that of this number; all of them in a long run, with FARM_ALL_FAULTS in the environment.
    static int next(int number) { return number < 8 || qEnvironmentVariableIsSet("FARM_ALL_FAULTS") ? number + 1 : number + 5; }
    void failAt(int number) const { diskCalls::failAt(number, effect, kinds, duration); }
    /// Whether anything has failed.
    static bool repair()
    {
        const bool hasFailed = diskCalls::hasFailed();
        diskCalls::failAt(0, diskCalls::Effect::Fail);
        return hasFailed;
    }
};

Q_DECLARE_METATYPE(FaultCase)
