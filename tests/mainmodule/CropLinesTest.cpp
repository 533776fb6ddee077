// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/CropLines.h"
#include "platform/sheets/Csv.h"
#include "support/TemporaryFarm.h"

#include <QTest>

using lists::List;
using mainmodule::PageLine;

/// Crops as a tree of lines, each level in a column of its own.
class CropLinesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { farm_.reset(); }
    void treeShowsEachLevelBelowItsOwner();
    void filterShowsPathsAndWhatBelongsToThem_data();
    void filterShowsPathsAndWhatBelongsToThem();
    void nextColumnTakesWhatBelongsToTheLine();
    void pastedPathsCompleteTheTree();

private:
    std::vector<PageLine> lines(const QString &filter = {}) const { return page_->lines(lists_, {.filter = filter}); }
    QString tree(const QString &filter = {}) const;
    lists::Plan planOf(const std::vector<lists::GivenList> &given) const;

    std::unique_ptr<TemporaryFarm> farm_;
    lists::FarmLists lists_;
    std::unique_ptr<mainmodule::PageLines> page_ = mainmodule::cropLines();
};

void CropLinesTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addVariety(QStringLiteral("Nuts"), QStringLiteral("Pecan"), QStringLiteral("Wichita"));
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Delta"));
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Lemon"), QStringLiteral("Eureka"));
    lists_.read(farm_->session);
}

/// "Citrus >Lemon >>Eureka".
QString CropLinesTest::tree(const QString &filter) const
{
    QStringList shown;
    for (const PageLine &line : lines(filter)) {
        const int level = line.list == List::CropGroups ? 0 : line.list == List::CropTypes ? 1 : 2;
        shown.append(QString(level, u'>') + line.texts[level]);
    }
    return shown.join(u' ');
}

lists::Plan CropLinesTest::planOf(const std::vector<lists::GivenList> &given) const
{
    lists::Planner planner(lists_, page_->pastedMatching(), 0);
    for (const lists::GivenList &list : given) {
        planner.add(list);
    }
    return planner.plan();
}

void CropLinesTest::treeShowsEachLevelBelowItsOwner()
{
    QCOMPARE(tree(), QStringLiteral("Citrus >Lemon >>Eureka >Orange >>Delta >>Valencia Nuts >Pecan >>Wichita"));
}

void CropLinesTest::filterShowsPathsAndWhatBelongsToThem_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("shown");
    QTest::newRow("variety") << "delta"
                             << "Citrus >Orange >>Delta";
    QTest::newRow("type") << "Orange"
                          << "Citrus >Orange >>Delta >>Valencia";
    QTest::newRow("group") << "nut"
                           << "Nuts >Pecan >>Wichita";
    QTest::newRow("none") << "maize"
                          << "";
}

void CropLinesTest::filterShowsPathsAndWhatBelongsToThem()
{
    QFETCH(QString, filter);
    QTEST(tree(filter), "shown");
}

void CropLinesTest::nextColumnTakesWhatBelongsToTheLine()
{
    const PageLine orange = lines(QStringLiteral("Orange"))[1];
    QVERIFY(page_->isEditable(orange, 1) && page_->isEditable(orange, 2) && !page_->isEditable(orange, 0));
    const lists::Plan variety = planOf({page_->typed(orange, {{2, QStringLiteral("Midknight")}})});
    QVERIFY(variety.faults.empty());
    QCOMPARE(variety.changes.front().list, List::Varieties);
    QCOMPARE(variety.changes.front().after->cell(1), QString::number(orange.key));
    const lists::Plan renamed = planOf({page_->typed(orange, {{1, QStringLiteral("Sweet orange")}})});
    QCOMPARE(renamed.changes.front().key(), orange.key);
    QVERIFY(renamed.changes.front().before.has_value());
}

void CropLinesTest::pastedPathsCompleteTheTree()
{
    const auto rows = sheets::readClipboardText(QStringLiteral("Citrus\tOrange\tDelta\n\t\tNavel\n\tLime\tBearss\n"));
    const lists::Plan whole = planOf(page_->pasted(rows, {}, 0));
    QVERIFY(whole.faults.empty());
    QCOMPARE(lists::summary(whole.total()), QStringLiteral("3 new, 0 changed, 0 refused"));
    // From the column of varieties on, they belong to the line that they are pasted over.
    const auto varieties = sheets::readClipboardText(QStringLiteral("Hamlin\nNavel\n"));
    const lists::Plan part = planOf(page_->pasted(varieties, {lines(QStringLiteral("Orange"))[1]}, 2));
    QVERIFY2(part.faults.empty(), part.faults.empty() ? "" : qPrintable(part.faults.front().reason));
    QCOMPARE(part.changes.size(), std::size_t(2));
}

QTEST_GUILESS_MAIN(CropLinesTest)
#include "CropLinesTest.moc"
