// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/FarmLists.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using lists::List;

/// What is read of the farm lists, and how rows are named.
class FarmListsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowsShowWordsForKeys();
    void namesThatAreNotUniqueAreQualified();
    void everyReferenceLeadsBack();
    void listThatCannotBeReadSaysWhy();
    void seasonsMayBeNumbers();
};

void FarmListsTest::rowsShowWordsForKeys()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.addBlock({QStringLiteral("Dam"), 1, std::nullopt, true});
    farm.addPlanting({QStringLiteral("Dam a"), 1, false,
                      farm.addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"))});
    farm.addPlanting({QStringLiteral("Stray"), 77, true, 0});
    farm.addTarget(QStringLiteral("Red scale"), QStringLiteral("p"), {1, 9});
    lists::FarmLists read;
    read.read(farm.session);
    const auto shown = [&read](List list, std::int32_t key) {
        QStringList texts;
        for (int column = 0; column < lists::tableOf(list).columnCount(); ++column) {
            texts.append(read.shown(list, *read.find(list, key), column));
        }
        return texts.join(u'|');
    };
    QCOMPARE(shown(List::Blocks, 1), QStringLiteral("Riverbend|Dam||Yes"));
    QCOMPARE(shown(List::Plantings, 1), QStringLiteral("Riverbend|Dam|Dam a|Citrus|Orange|Valencia|No"));
    QCOMPARE(shown(List::Plantings, 2), QStringLiteral("|#77|Stray||||Yes"));
    QCOMPARE(shown(List::Pests, 1), QStringLiteral("Red scale|Pests|#9; Orange"));
}

void FarmListsTest::namesThatAreNotUniqueAreQualified()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.addFarm(QStringLiteral("Ridge"));
    farm.addBlock({QStringLiteral("Dam"), 1, 5, true});
    farm.addBlock({QStringLiteral("DAM"), 2, 5, true});
    farm.addBlock({QStringLiteral("Hill"), 1, 5, true});
    farm.addBlock({QStringLiteral("Hill"), 1, 5, true});
    farm.addBlock({QStringLiteral("A / B #1"), 1, 5, true});
    lists::FarmLists read;
    read.read(farm.session);
    QCOMPARE(read.reference(List::Blocks, 1), QStringLiteral("Riverbend / Dam"));
    QCOMPARE(read.reference(List::Blocks, 2), QStringLiteral("Ridge / DAM"));
    QCOMPARE(read.reference(List::Blocks, 3), QStringLiteral("Hill #3"));
    QCOMPARE(read.reference(List::Blocks, 5), QStringLiteral("A / B #1"));
}

void FarmListsTest::everyReferenceLeadsBack()
{
    TemporaryFarm farm;
    for (const char *name : {"Riverbend", "Ridge", "Ridge"}) {
        farm.addFarm(QString::fromLatin1(name));
    }
    for (const char *name : {"Dam", "dam", "#2", "1 / 2", "Hill", " Hill", "Élan"}) {
        for (int key = 1; key <= 3; ++key) {
            farm.addBlock({QString::fromUtf8(name), key, 5, true});
        }
    }
    lists::FarmLists read;
    read.read(farm.session);
    for (const lists::Record &block : read.records(List::Blocks)) {
        const QString reference = read.reference(List::Blocks, block.key);
        QCOMPARE(read.referredTo(List::Blocks, reference), QList<std::int32_t>{block.key});
    }
}

void FarmListsTest::listThatCannotBeReadSaysWhy()
{
    TemporaryFarm farm;
    farm.addFarm(QStringLiteral("Riverbend"));
    farm.session.dbSpray.setFailure(QStringLiteral("ZN4_Spray.mdb"), QStringLiteral("it is damaged."));
    farm.session.dbSpray.set(nullptr);
    farm.session.dbSpray.setFailure(QStringLiteral("ZN4_Spray.mdb"), QStringLiteral("it is damaged."));
    lists::FarmLists read;
    read.read(farm.session);
    QCOMPARE(read.records(List::Farms).size(), std::size_t(1));
    QVERIFY(read.failure(List::Farms).isEmpty());
    QVERIFY2(read.failure(List::Pests).contains(QLatin1String("it is damaged")), qPrintable(read.failure(List::Pests)));
}

void FarmListsTest::seasonsMayBeNumbers()
{
    TemporaryFarm farm;
    farm.add(u"tblYear", {{u"FYear", QStringLiteral("2026")}});
    lists::FarmLists read;
    read.read(farm.session);
    QCOMPARE(read.records(List::Seasons).front().cell(0), QStringLiteral("2026"));
    QCOMPARE(read.size(List::Blocks, 1), 50);
    QVERIFY(!read.isNumeric(List::Seasons, 0));
}

QTEST_GUILESS_MAIN(FarmListsTest)
#include "FarmListsTest.moc"
