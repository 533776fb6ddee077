// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"

#include "platform/jet/TextCodec.h"

#include <QtTest>

class TextCodecTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsPlainOrCompressed_data()
    {
        QTest::addColumn<QByteArray>("stored");
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
        QTest::newRow("half a character at the end of a run") << QByteArray("\xff\xfe"
                                                                            "a\0b",
                                                                            5)
                                                              << QString("a");
    }

    void textIsPlainOrCompressed()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, text);
        QString decoded("memory of a longer text before");
        jet::decodeText(bytes::view(stored), decoded);
        QCOMPARE(decoded, text);
        QVERIFY(!jet::decodeText(bytes::view(stored)).isNull());
    }
};

QTEST_GUILESS_MAIN(TextCodecTest)
#include "TextCodecTest.moc"
