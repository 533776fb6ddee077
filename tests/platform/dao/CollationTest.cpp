// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Collation.h"

#include <QTest>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using dao::compareText;

class CollationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void equalTexts();
    void orderedTexts();
    void brokenBytesAreOrderedToo();
};

void CollationTest::equalTexts()
{
    QCOMPARE(compareText("Café", "CAFE"), 0);
    QCOMPARE(compareText("Cafe\u0301", "café"), 0);
    QCOMPARE(compareText("Ǖber", "uber"), 0);
    QCOMPARE(compareText("Straße", "STRASSE"), 0);
    QCOMPARE(compareText("O’Brien", "o'brien"), 0);
    QCOMPARE(compareText("", ""), 0);
}

void CollationTest::orderedTexts()
{
    const std::vector<std::string> ordered{
        "",     " a",    "#1",    "10",    "9",      "a",    "Ábel",   "Abels", "co op", "coop",
        "Coop", "co'op", "CO-OP", "coopa", "co-opb", "Eben", "éclair", "Zulu",  "аб",
    };
    // Capitals do not count, so equal neighbours stay in order in a stable sort.
    std::vector<std::string> shuffled(ordered.rbegin(), ordered.rend());
    std::iter_swap(std::find(shuffled.begin(), shuffled.end(), "coop"), std::find(shuffled.begin(), shuffled.end(), "Coop"));
    std::stable_sort(shuffled.begin(), shuffled.end(), [](const auto &a, const auto &b) { return compareText(a, b) < 0; });
    QCOMPARE(shuffled, ordered);
}

void CollationTest::brokenBytesAreOrderedToo()
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> length(0, 4);
    const std::string alphabet = "aA'-\xC3\xA9\xE2\x80\xFF\xF0 1";
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    const auto text = [&] {
        std::string result(static_cast<std::size_t>(length(random)), ' ');
        std::generate(result.begin(), result.end(), [&] { return alphabet[letter(random)]; });
        return result;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string a = text();
        const std::string b = text();
        const std::string c = text();
        QCOMPARE(compareText(a, b) < 0, compareText(b, a) > 0);
        if (compareText(a, b) <= 0 && compareText(b, c) <= 0) {
            QVERIFY(compareText(a, c) <= 0);
        }
    }
}

QTEST_GUILESS_MAIN(CollationTest)
#include "CollationTest.moc"
