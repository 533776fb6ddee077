// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Theme.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using controls::Theme;

/// Text reads on every ground that it is drawn on, and edges and focus stand out, in both forms of the palette.
class ContrastTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyPairReads_data();
    void everyPairReads();
};

namespace
{

/// Relative luminance of sRGB, 0 to 1.
double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        const double value = static_cast<double>(part);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [dark, bright] = std::minmax({luminance(one), luminance(other)});
    return (bright + 0.05) / (dark + 0.05);
}

struct Pairs {
    const char *ink;
    std::vector<const char *> grounds;
    double least;
};

constexpr double Text = 4.5;
constexpr double Edge = 3.0;

const std::array<Pairs, 6> AllPairs{{
    {"text", {"window", "base", "header", "soft", "line"}, Text},
    {"muted", {"window", "base", "header", "soft"}, Text},
    {"danger", {"window", "base", "soft", "line"}, Text},
    {"accent", {"window", "base", "soft"}, Text},
    {"onacc", {"accent", "ahover", "apress"}, Text},
    {"border", {"window", "base", "soft", "header"}, Edge},
}};

} // namespace

void ContrastTest::everyPairReads_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<QString>("ground");
    QTest::addColumn<double>("least");
    for (const bool dark : {false, true}) {
        for (const Pairs &pairs : AllPairs) {
            for (const char *ground : pairs.grounds) {
                QTest::addRow("%s: %s on %s", dark ? "dark" : "light", pairs.ink, ground)
                    << dark << QString::fromLatin1(pairs.ink) << QString::fromLatin1(ground) << pairs.least;
            }
        }
    }
}

void ContrastTest::everyPairReads()
{
    QFETCH(bool, dark);
    QFETCH(QString, ink);
    QFETCH(QString, ground);
    QFETCH(double, least);
    Theme::apply(*qApp, dark);
    const double found = contrast(Theme::colour(ink), Theme::colour(ground));
    QVERIFY2(found >= least, qPrintable(QStringLiteral("%1 to 1").arg(found)));
}

QTEST_MAIN(ContrastTest)
#include "ContrastTest.moc"
