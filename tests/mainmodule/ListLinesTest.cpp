// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListLines.h"
#include "platform/sheets/Csv.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using lists::List;
using mainmodule::Arrangement;
using mainmodule::PageLine;

/// A list as lines, and what typed and pasted texts change in it.
class ListLinesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { farm_.reset(); }
    void linesAreFilteredAndSorted();
    void typedCellsChangeOneRow();
    void pastedRowsCoverStoredOnesAndAddTheRest();
    void derivedColumnsAreNotEditable();
    void referencesAreSuggestedByTheirNames();

private:
    QStringList names(const Arrangement &arrangement) const;
    lists::Plan planOf(const std::vector<lists::GivenList> &given) const;

    std::unique_ptr<TemporaryFarm> farm_;
    lists::FarmLists lists_;
    std::unique_ptr<mainmodule::PageLines> blocks_;
};

void ListLinesTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addFarm(QStringLiteral("Ridge"));
    farm_->addBlock({QStringLiteral("Block 10"), 1, 8, true});
    farm_->addBlock({QStringLiteral("Block 2"), 1, 5, false});
    farm_->addBlock({QStringLiteral("Dam"), 2, 5, true});
    lists_.read(farm_->session);
    blocks_ = mainmodule::listLines(List::Blocks);
}

QStringList ListLinesTest::names(const Arrangement &arrangement) const
{
    QStringList found;
    for (const PageLine &line : blocks_->lines(lists_, arrangement)) {
        found.append(line.texts[1]);
    }
    return found;
}

lists::Plan ListLinesTest::planOf(const std::vector<lists::GivenList> &given) const
{
    lists::Planner planner(lists_, blocks_->pastedMatching(), 1);
    for (const lists::GivenList &list : given) {
        planner.add(list);
    }
    return planner.plan();
}

void ListLinesTest::linesAreFilteredAndSorted()
{
    // By farm, and by name within one.
    QCOMPARE(names({}), QStringList({"Dam", "Block 2", "Block 10"}));
    QCOMPARE(names({.column = 1, .descending = true}), QStringList({"Dam", "Block 10", "Block 2"}));
    QCOMPARE(names({.activeOnly = true, .column = 1}), QStringList({"Block 10", "Dam"}));
    QCOMPARE(names({.filter = QStringLiteral("ridge"), .column = 1}), QStringList("Dam"));
}

void ListLinesTest::typedCellsChangeOneRow()
{
    const PageLine dam = blocks_->lines(lists_, {}).front();
    const lists::Plan changed = planOf({blocks_->typed(dam, {{2, QStringLiteral("12")}})});
    QCOMPARE(changed.changes.size(), std::size_t(1));
    QCOMPARE(changed.changes.front().before->cell(2), QStringLiteral("5"));
    QCOMPARE(changed.changes.front().after->cells, (lists::Cells{"2", "Dam", "12", "1"}));
    // A new line belongs to the chosen farm and begins with the usual values.
    const lists::Plan added = planOf({blocks_->typed({List::Blocks, 0, {}}, {{1, QStringLiteral("Hill")}})});
    QCOMPARE(added.changes.front().after->cells, (lists::Cells{"1", "Hill", "5", "1"}));
}

void ListLinesTest::pastedRowsCoverStoredOnesAndAddTheRest()
{
    const std::vector<PageLine> targets = blocks_->lines(lists_, {.column = 1});
    const auto rows = sheets::readClipboardText(QStringLiteral("Low\t6\n\nHigh\t7\nNew\t9\nNewer\t10\n"));
    const lists::Plan plan = planOf(blocks_->pasted(rows, targets, 1));
    QVERIFY(plan.faults.empty());
    QCOMPARE(lists::summary(plan.total()), QStringLiteral("2 new, 2 changed, 0 refused"));
    // The blank row leaves its line as it is.
    QCOMPARE(plan.changes[0].key(), targets[0].key);
    QCOMPARE(plan.changes[1].key(), targets[2].key);
    QCOMPARE(plan.changes[3].after->cell(2), QStringLiteral("10"));
}

void ListLinesTest::derivedColumnsAreNotEditable()
{
    const auto plantings = mainmodule::listLines(List::Plantings);
    const PageLine line{List::Plantings, 0, {}};
    QVERIFY(!plantings->isEditable(line, 0));
    QVERIFY(plantings->isEditable(line, 1));
    QCOMPARE(plantings->firstColumn(), 1);
    QCOMPARE(blocks_->firstColumn(), 1);
    QCOMPARE(mainmodule::listLines(List::Workers)->firstColumn(), 0);
}

void ListLinesTest::referencesAreSuggestedByTheirNames()
{
    QCOMPARE(blocks_->suggestions(lists_, 0), QStringList({"Ridge", "Riverbend"}));
    QCOMPARE(blocks_->suggestions(lists_, 3), QStringList({"Yes", "No"}));
    QVERIFY(blocks_->suggestions(lists_, 1).isEmpty());
}

QTEST_GUILESS_MAIN(ListLinesTest)
#include "ListLinesTest.moc"
