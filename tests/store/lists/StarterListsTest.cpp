// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/StarterLists.h"

#include <QSet>
#include <QTest>

using lists::List;

/// The starter lists are sound: all of them go into an empty office without a fault or a note.
class StarterListsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void allOfThemCanBeAdded();
    void pestsNameCropTypesThatThereAre();
};

void StarterListsTest::allOfThemCanBeAdded()
{
    lists::FarmLists stored;
    lists::Planner crops(stored, lists::Matching::ByKeyOrName, 0);
    for (const lists::GivenList &list : lists::givenStarterCrops(lists::starterCrops())) {
        crops.add(list);
    }
    QVERIFY2(crops.plan().faults.empty(), crops.plan().faults.empty() ? "" : qPrintable(crops.plan().faults.front().reason));
    QCOMPARE(static_cast<std::size_t>(crops.plan().counts[lists::indexOf(List::Varieties)].added), lists::starterCrops().size());
    lists::Planner pests(crops.planned(), lists::Matching::ByKeyOrName, 0);
    pests.add(lists::givenStarterPests(lists::starterPests(), crops.planned()));
    QVERIFY2(pests.plan().faults.empty(), pests.plan().faults.empty() ? "" : qPrintable(pests.plan().faults.front().reason));
    QCOMPARE(static_cast<std::size_t>(pests.plan().total().added), lists::starterPests().size());
    // Ticked a second time they add nothing.
    lists::Planner again(pests.planned(), lists::Matching::ByKeyOrName, 0);
    for (const lists::GivenList &list : lists::givenStarterCrops(lists::starterCrops())) {
        again.add(list);
    }
    again.add(lists::givenStarterPests(lists::starterPests(), pests.planned()));
    QVERIFY(again.plan().changes.empty());
}

void StarterListsTest::pestsNameCropTypesThatThereAre()
{
    QSet<QString> types;
    for (const lists::StarterCrop &crop : lists::starterCrops()) {
        types.insert(crop.type);
    }
    for (const lists::StarterPest &pest : lists::starterPests()) {
        for (const QString &type : pest.cropTypes) {
            QVERIFY2(types.contains(type), qPrintable(pest.name + QStringLiteral(": ") + type));
        }
    }
}

QTEST_GUILESS_MAIN(StarterListsTest)
#include "StarterListsTest.moc"
