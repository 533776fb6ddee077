// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/TextCodec.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::uint16_t CompressedMark = 0xFEFF;

void decodeCompressed(Bytes bytes, QString &text)
{
    text.resize(static_cast<qsizetype>(bytes.size()));
    auto *out = reinterpret_cast<char16_t *>(text.data());
    const char16_t *const begin = out;
    const unsigned char *in = bytes.data();
    const unsigned char *const end = in + bytes.size();
    bool oneByte = true;
    while (in < end) {
        if (*in == 0) {
            oneByte = !oneByte;
            ++in;
        } else if (oneByte) {
            *out++ = *in++;
        } else if (end - in >= 2) {
            *out++ = qFromLittleEndian<char16_t>(in);
            in += 2;
        } else {
            break;
        }
    }
    text.resize(out - begin);
}

} // namespace

void decodeText(Bytes bytes, QString &text)
{
    if (bytes.size() >= 2 && bytes.shortAt(0) == CompressedMark) {
        decodeCompressed(bytes.from(2), text);
    } else {
        const auto length = static_cast<qsizetype>(bytes.size() / 2);
        text.resize(length);
        qFromLittleEndian<char16_t>(bytes.data(), length, text.data());
    }
    // Zero-length text is not null, in a QString neither.
    if (text.isNull()) {
        text = QStringLiteral("");
    }
}

QString decodeText(Bytes bytes)
{
    QString text;
    decodeText(bytes, text);
    return text;
}

QByteArray encodeText(const QString &text, bool compress)
{
    constexpr char16_t Mark = CompressedMark;
    const bool isShorter = text.size() > 2;
    const bool isOneByte =
        std::all_of(text.begin(), text.end(), [](QChar one) { return one.unicode() > 0 && one.unicode() < 0x100; });
    if (compress && isShorter && isOneByte) {
        return "\xFF\xFE" + text.toLatin1();
    }
    QByteArray bytes(2 * text.size(), '\0');
    qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    // A text that begins with the mark itself would be taken for a compressed one: it is written as one, in a run of two bytes.
    if (!text.isEmpty() && text.at(0) == Mark) {
        bytes.prepend("\xFF\xFE\0", 3);
    }
    return bytes;
}

} // namespace jet
