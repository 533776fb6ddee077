// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Theme.h"
#include "platform/basic/RunTimeError.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using controls::Theme;

/// Colours and icons exist, and text and edges have sufficient contrast, in both palettes.
class ThemeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyPairHasContrast_data();
    void everyPairHasContrast();
    void everyColourAndIconExists();
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
    const char *foreground;
    std::vector<const char *> backgrounds;
    double minimum;
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

void ThemeTest::everyPairHasContrast_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("foreground");
    QTest::addColumn<QString>("background");
    QTest::addColumn<double>("minimum");
    for (const bool dark : {false, true}) {
        for (const Pairs &pairs : AllPairs) {
            for (const char *background : pairs.backgrounds) {
                QTest::addRow("%s: %s on %s", dark ? "dark" : "light", pairs.foreground, background)
                    << dark << QString::fromLatin1(pairs.foreground) << QString::fromLatin1(background) << pairs.minimum;
            }
        }
    }
}

void ThemeTest::everyPairHasContrast()
{
    QFETCH(bool, dark);
    QFETCH(QString, foreground);
    QFETCH(QString, background);
    QFETCH(double, minimum);
    Theme::apply(*qApp, dark);
    const double found = contrast(Theme::colour(foreground), Theme::colour(background));
    QVERIFY2(found >= minimum, qPrintable(QStringLiteral("%1 to 1").arg(found)));
}

void ThemeTest::everyColourAndIconExists()
{
    Theme::apply(*qApp, true);
    QVERIFY2(!qApp->styleSheet().contains(u'@'), "every name of the style sheet is filled in");
    for (const char *name : {"window", "base", "header", "line", "border", "text", "muted", "disabled", "accent", "ahover",
                             "apress", "soft", "onacc", "danger"}) {
        QVERIFY2(Theme::colour(QLatin1String(name)).isValid(), name);
    }
    const QIcon icon = Theme::icon(QStringLiteral("add"));
    const QImage dark = icon.pixmap(QSize(24, 24)).toImage();
    Theme::apply(*qApp, false);
    QVERIFY(icon.pixmap(QSize(24, 24)).toImage() != dark);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Theme::icon(QStringLiteral("no such icon")));
    for (const char *path : {"light/tick", "dark/tick", "dark/chevron-down", "light/chevron-down-disabled@2x"}) {
        QVERIFY2(QFile::exists(QStringLiteral(":/farm/tinted/%1.png").arg(QLatin1String(path))), path);
    }
}

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
