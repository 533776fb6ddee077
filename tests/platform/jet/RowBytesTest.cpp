// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"

#include "platform/jet/RowBytes.h"

#include <QtTest>

class RowBytesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsAreFoundByTheirPlace()
    {
        // A 32-bit number, a Boolean, a text of two bytes; null mask 0b111.
        const QByteArray whole("\x03\0"
                               "\x2a\0\0\0"
                               "hi"
                               "\x08\0"
                               "\x06\0"
                               "\x01\0"
                               "\x07",
                               15);
        const jet::RowBytes row(bytes::view(whole));
        QCOMPARE(row.fixed(0, 4).longAt(0), 42U);
        QVERIFY(row.bit(1));
        QCOMPARE(row.variable(0).size(), std::size_t{2});
        // Columns added after the row was written: no bit, no bytes, and nothing read from the neighbours.
        QVERIFY(!row.bit(3));
        QVERIFY(!row.bit(4000));
        QVERIFY_THROWS_EXCEPTION(jet::Fault, row.variable(1));
    }

    void aRowOlderThanTheFirstVariableColumnIsSound()
    {
        const QByteArray old("\x01\0\xff\xff\xff\xff\x01", 7);
        const jet::RowBytes row(bytes::view(old));
        QVERIFY(row.bit(0));
        QVERIFY(!row.bit(1));
        QCOMPARE(row.fixed(0, 4).longAt(0), 0xFFFFFFFF);
    }

    void aDamagedRowIsRefused_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("more columns than bytes") << QByteArray("\xff\x03\0\0", 4);
        QTest::newRow("no table of ends") << QByteArray("\x01\0\x01", 3);
        QTest::newRow("more variable columns than bytes") << QByteArray("\x01\0"
                                                                        "ab"
                                                                        "\xff\x7f"
                                                                        "\x01",
                                                                        7);
        QTest::newRow("an end beyond the row") << QByteArray("\x01\0hi\x60\0\x02\0\x01\0\x01", 11);
        QTest::newRow("an end before its beginning") << QByteArray("\x01\0hi\x01\0\x04\0\x01\0\x01", 11);
    }

    void aDamagedRowIsRefused()
    {
        QFETCH(QByteArray, stored);
        QVERIFY_THROWS_EXCEPTION(jet::Fault, jet::RowBytes(bytes::view(stored)).variable(0));
    }
};

QTEST_GUILESS_MAIN(RowBytesTest)
#include "RowBytesTest.moc"
