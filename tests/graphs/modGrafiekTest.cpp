// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/modGrafiek.h"

#include <QTest>

class modGrafiekTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void colourParts();
};

void modGrafiekTest::colourParts()
{
    QCOMPARE(ColorComponent(0x123456, 1), 0x56);
    QCOMPARE(ColorComponent(0x123456, 2), 0x34);
    QCOMPARE(ColorComponent(0x123456, 3), 0x12);
    QCOMPARE(ColorComponent(0xFFFFFF, 3), 255);
    for (const std::int16_t outside : {std::int16_t{0}, std::int16_t{4}}) {
        QCOMPARE(ColorComponent(0x123456, outside), -1);
    }
    QCOMPARE(ColorComponent(0x1000000, 1), -1);
    QCOMPARE(ColorComponent(-1, 1), -1);
    QCOMPARE(ColorComponent(colourNumber(QColor(1, 2, 3)), 3), 3);
}

QTEST_MAIN(modGrafiekTest)
#include "modGrafiekTest.moc"
