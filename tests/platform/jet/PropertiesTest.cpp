// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetBytes.h"

#include "platform/jet/Properties.h"

#include <QtTest>

namespace
{

template <typename Number> QByteArray little(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray name(const QString &text)
{
    const auto size = static_cast<qsizetype>(2 * text.size());
    return little(static_cast<quint16>(size)) + QByteArray(reinterpret_cast<const char *>(text.utf16()), size);
}

QByteArray chunk(quint16 kind, const QByteArray &content)
{
    return little(static_cast<quint32>(6 + content.size())) + little(kind) + content;
}

QByteArray booleanEntry(quint16 property, bool flag)
{
    return little(quint16{9}) + QByteArray("\0\x01", 2) + little(property) + little(quint16{1})
        + (flag ? "\x01" : QByteArray(1, '\0'));
}

QByteArray column(const QString &columnName, const QByteArray &entries)
{
    const QByteArray head = name(columnName);
    return chunk(1, little(static_cast<quint32>(4 + head.size())) + head + entries);
}

const QByteArray Blob = QByteArray("MR2\0", 4) + chunk(0x80, name("Required") + name("AllowZeroLength"))
    + column("tPBlock", booleanEntry(0, true) + booleanEntry(1, true)) + column("Note", booleanEntry(1, false))
    + column("Other", booleanEntry(0, true));

} // namespace

/// The blob that the catalogue keeps for a table.
class PropertiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allowZeroLengthIsFoundByColumn()
    {
        const QHash<QString, bool> found = jet::allowZeroLengthByColumn(bytes::view(Blob));
        QCOMPARE(found, (QHash<QString, bool>{{"tpblock", true}, {"note", false}}));
        QVERIFY(jet::allowZeroLengthByColumn({}).isEmpty());
    }

    void damageEndsInAFaultOrAnAnswer()
    {
        int faults = 0;
        for (qsizetype at = 0; at < Blob.size(); ++at) {
            for (const char byte : {'\0', '\x01', '\x7f', '\xff'}) {
                QByteArray damaged = Blob;
                damaged[at] = byte;
                try {
                    jet::allowZeroLengthByColumn(bytes::view(damaged));
                } catch (const jet::Fault &) {
                    ++faults;
                }
            }
        }
        QVERIFY(faults > 50);
        QVERIFY_THROWS_EXCEPTION(jet::Fault, jet::allowZeroLengthByColumn(bytes::view(Blob.chopped(3))));
    }
};

QTEST_GUILESS_MAIN(PropertiesTest)
#include "PropertiesTest.moc"
