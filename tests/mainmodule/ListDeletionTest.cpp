// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListDeletion.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using lists::List;
using mainmodule::ListDeletion;

/// Rows without history are deleted, the others become inactive where their list has that.
class ListDeletionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowsInUseBecomeInactive();
    void listsWithoutInactiveRowsRefuse();
};

void ListDeletionTest::rowsInUseBecomeInactive()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    const int used = farm.addBlock({QStringLiteral("Dam"), 1, 2, true});
    const int free = farm.addBlock({QStringLiteral("Hill"), 1, 2, true});
    const int inactive = farm.addBlock({QStringLiteral("Old"), 1, 2, false});
    const int target = farm.addTarget(QStringLiteral("Red scale"));
    farm.addInstruction({.blocks = {{used, 2}, {inactive, 2}}, .targets = {target}});
    lists::FarmLists stored;
    stored.read(farm.session);
    const ListDeletion deletion(farm.session, stored,
                                {{List::Blocks, used, {}}, {List::Blocks, free, {}}, {List::Blocks, inactive, {}}});
    QCOMPARE(deletion.changes().size(), std::size_t(2));
    QCOMPARE(deletion.changes()[0].after->cell(3), QStringLiteral("0"));
    QVERIFY(!deletion.changes()[1].after);
    QCOMPARE(deletion.changes()[1].key(), free);
    QCOMPARE(deletion.held().size(), std::size_t(2));
    QVERIFY2(deletion.held()[0].reason.contains(QLatin1String("1 instruction;")), qPrintable(deletion.held()[0].reason));
    QCOMPARE(deletion.text(), QStringLiteral("\"Hill\" deleted, \"Dam\" made inactive, \"Old\" in use and not deleted"));
}

void ListDeletionTest::listsWithoutInactiveRowsRefuse()
{
    TemporaryFarm farm;
    farm.addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    lists::FarmLists stored;
    stored.read(farm.session);
    const ListDeletion deletion(farm.session, stored, {{List::CropTypes, 1, {}}});
    QVERIFY(deletion.changes().empty());
    QVERIFY2(deletion.held().front().reason.contains(QLatin1String("1 variety")), qPrintable(deletion.held().front().reason));
}

QTEST_GUILESS_MAIN(ListDeletionTest)
#include "ListDeletionTest.moc"
