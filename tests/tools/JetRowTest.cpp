// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetRow.h"

#include <QtTest>

namespace
{

JetBytes bytesOf(const QByteArray &bytes)
{
    return JetBytes({reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

} // namespace

/// Rows of a Jet file, taken apart byte by byte.
class JetRowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsPlainOrCompressed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QByteArray() << QString("");
        QTest::newRow("plain") << QByteArray("\x93\x01z\0", 4) << QString(QChar(0x193)) + "z";
        QTest::newRow("one byte a character") << QByteArray("\xff\xfe"
                                                            "caf\xe9")
                                              << QString("café");
        QTest::newRow("runs of both") << QByteArray("\xff\xfe"
                                                    "a\0\x13\x20\x1c\x20\0b\xbd",
                                                    12)
                                      << QString("a") + QChar(0x2013) + QChar(0x201c) + "b½";
        QTest::newRow("a zero as the second byte") << QByteArray("\xff\xfe\0\x13\x20s\0\0x", 9) << QString(QChar(0x2013)) + "sx";
        QTest::newRow("mark alone") << QByteArray("\xff\xfe") << QString("");
        QTest::newRow("half a character at the end") << QByteArray("a\0b", 3) << QString("a");
    }

    void textIsPlainOrCompressed()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(bytesOf(bytes).text(), text);
    }

    void fieldsAreFoundByTheirPlace()
    {
        // Three fields: a 32-bit number, a Boolean, a text of two bytes; null mask 0b111.
        const QByteArray whole("\x03\0"
                               "\x2a\0\0\0"
                               "hi"
                               "\x08\0"
                               "\x06\0"
                               "\x01\0"
                               "\x07",
                               15);
        const JetPlace number{0, true, 0, 4, 0};
        const JetPlace flag{1, true, 4, 0, 0};
        const JetPlace text{2, false, 0, 0, 0};
        const auto row = JetRow::open(bytesOf(whole), true);
        QVERIFY(row);
        QCOMPARE(*row->field(number)->longAt(0), 42U);
        QVERIFY(row->bit(flag));
        QCOMPARE(row->field(text)->size(), std::size_t{2});
        // Fields added after the row was written: no bit, no bytes, and nothing read from the neighbours.
        const JetPlace laterFlag{3, true, 4, 0, 0};
        const JetPlace laterText{4, false, 0, 0, 1};
        QVERIFY(!row->bit(laterFlag));
        QVERIFY(!row->bit(laterText));
        QVERIFY(!row->field(laterText));
    }

    void aDamagedRowIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("more fields than bytes") << QByteArray("\xff\x03\0\0", 4);
        QTest::newRow("more variable fields than bytes") << QByteArray("\x02\0"
                                                                       "ab"
                                                                       "\xff\x7f"
                                                                       "\x03",
                                                                       7);
    }

    void aDamagedRowIsRefused()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!JetRow::open(bytesOf(bytes), true));
    }

    void anEndOutsideTheRowGivesNoField()
    {
        const QByteArray beyond("\x01\0"
                                "hi"
                                "\x60\0"
                                "\x02\0"
                                "\x01\0"
                                "\x01",
                                11);
        const QByteArray reversed("\x01\0"
                                  "hi"
                                  "\x01\0"
                                  "\x04\0"
                                  "\x01\0"
                                  "\x01",
                                  11);
        for (const QByteArray &bytes : {beyond, reversed}) {
            const auto row = JetRow::open(bytesOf(bytes), true);
            QVERIFY(row);
            QVERIFY(!row->field({0, false, 0, 0, 0}));
        }
    }
};

QTEST_GUILESS_MAIN(JetRowTest)
#include "JetRowTest.moc"
