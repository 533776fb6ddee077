// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/TextCodec.h"

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

} // namespace jet
