// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/LineOrder.h"

#include <QTest>

using mainmodule::PageLine;

/// The order of lines, and which ones a filter shows.
class LineOrderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void numbersInNamesCount();
    void equalLinesKeepTheirOrder();
    void filterIsSoughtInEveryColumn();
};

namespace
{

std::vector<PageLine> linesOf(const QList<QStringList> &texts)
{
    std::vector<PageLine> lines;
    for (const QStringList &text : texts) {
        lines.push_back({lists::List::Blocks, static_cast<std::int32_t>(lines.size()) + 1, text});
    }
    return lines;
}

QList<int> keysOf(const std::vector<PageLine> &lines)
{
    QList<int> keys;
    for (const PageLine &line : lines) {
        keys.append(line.key);
    }
    return keys;
}

} // namespace

void LineOrderTest::numbersInNamesCount()
{
    const QLocale before;
    for (const QLocale &locale : {before, QLocale::c()}) {
        QLocale::setDefault(locale);
        auto lines = linesOf({{"Block 10"}, {"block 2"}, {"Block 1"}, {"Ábalo"}});
        mainmodule::sortLines(lines, 0, false);
        QCOMPARE(keysOf(lines), QList<int>({4, 3, 2, 1}));
        mainmodule::sortLines(lines, 0, true);
        QCOMPARE(keysOf(lines), QList<int>({1, 2, 3, 4}));
    }
    QLocale::setDefault(before);
}

void LineOrderTest::equalLinesKeepTheirOrder()
{
    for (const bool descending : {false, true}) {
        auto lines = linesOf({{"b", "5"}, {"a", "5"}, {"c", "5"}});
        mainmodule::sortLines(lines, 1, descending);
        QCOMPARE(keysOf(lines), QList<int>({1, 2, 3}));
    }
}

void LineOrderTest::filterIsSoughtInEveryColumn()
{
    const PageLine line{lists::List::Blocks, 1, {QStringLiteral("Dam"), QStringLiteral("Riverbend")}};
    QVERIFY(mainmodule::fitsFilter(line, {}));
    QVERIFY(mainmodule::fitsFilter(line, QStringLiteral("BEND")));
    QVERIFY(!mainmodule::fitsFilter(line, QStringLiteral("DamRiver")));
}

QTEST_GUILESS_MAIN(LineOrderTest)
#include "LineOrderTest.moc"
