// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffRecords.h"

#include "platform/excel/ExcelError.h"

#include <algorithm>

namespace excel::biff
{

namespace
{
constexpr std::size_t WideLetters = 1;
constexpr std::size_t WithReading = 4;
constexpr std::size_t WithRuns = 8;
/// Bytes of a font run.
constexpr qsizetype RunLength = 4;

bool isWide(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() > 0xFF; });
}

void putLetters(Bytes &bytes, QStringView text, bool wide)
{
    for (const QChar letter : text) {
        wide ? bytes.u16(letter.unicode()) : bytes.u8(letter.unicode());
    }
}

/// A body that continues in a new record when it is full.
class ContinuedBody
{
public:
    ContinuedBody(Bytes &stream, std::uint16_t id) : stream_(stream) { begin(id); }
    ~ContinuedBody() { finish(); }
    Q_DISABLE_COPY_MOVE(ContinuedBody)

    qsizetype freeBytes() const { return MaxBody - (stream_.size() - start_); }
    void next()
    {
        finish();
        begin(Continuation);
    }
    /// Bytes that may be split anywhere.
    void putRaw(QByteArrayView bytes, qsizetype unit)
    {
        while (!bytes.isEmpty()) {
            if (freeBytes() < unit) {
                next();
            }
            const qsizetype length = std::min(bytes.size(), freeBytes() / unit * unit);
            stream_.raw(bytes.first(length));
            bytes = bytes.sliced(length);
        }
    }
    Bytes &stream() { return stream_; }

private:
    void begin(std::uint16_t id)
    {
        stream_.head(id, 0);
        start_ = stream_.size();
    }
    void finish() { stream_.patch(start_ - 2, static_cast<std::uint16_t>(stream_.size() - start_)); }

    Bytes &stream_;
    qsizetype start_ = 0;
};

void putSharedText(ContinuedBody &body, const model::Text &text)
{
    const bool wide = isWide(text.text);
    const std::size_t flags =
        (wide ? WideLetters : 0U) | (text.runs.isEmpty() ? 0U : WithRuns) | (text.reading.isEmpty() ? 0U : WithReading);
    Bytes head;
    head.u16(static_cast<std::size_t>(text.text.size())).u8(flags);
    if (!text.runs.isEmpty()) {
        head.u16(static_cast<std::size_t>(text.runs.size() / RunLength));
    }
    if (!text.reading.isEmpty()) {
        head.u32(static_cast<std::size_t>(text.reading.size()));
    }
    const qsizetype unit = wide ? 2 : 1;
    // The header and the first letter must not be split.
    if (body.freeBytes() < head.size() + 2 * unit) {
        body.next();
    }
    body.stream().raw(head.bytes());
    for (QStringView rest(text.text); !rest.isEmpty();) {
        if (body.freeBytes() < 2 * unit) {
            body.next();
            body.stream().u8(wide ? WideLetters : 0U);
        }
        qsizetype count = std::min(rest.size(), body.freeBytes() / unit);
        // Readers decode each part separately, so a surrogate pair must not be split.
        count -= count > 1 && count < rest.size() && rest[count].isLowSurrogate() ? 1 : 0;
        putLetters(body.stream(), rest.first(count), wide);
        rest = rest.sliced(count);
    }
    body.putRaw(text.runs, RunLength);
    body.putRaw(text.reading, 1);
}

/// The parts of the shared texts, read as one.
class ContinuedReader
{
public:
    explicit ContinuedReader(const std::vector<QByteArray> &parts) : parts_(parts), reader_(parts.front()) {}

    Reader &whole()
    {
        if (reader_.left() == 0) {
            next();
        }
        return reader_;
    }
    QString letters(qsizetype count, bool wide)
    {
        QString text;
        while (count > 0) {
            if (reader_.left() < (wide ? 2 : 1)) {
                next();
                wide = (reader_.u8() & WideLetters) != 0;
            }
            const qsizetype here = std::min(count, reader_.left() / (wide ? 2 : 1));
            text += takeLetters(reader_, here, wide);
            count -= here;
        }
        return text;
    }
    QByteArray raw(qsizetype length)
    {
        QByteArray bytes;
        while (bytes.size() < length) {
            const qsizetype here = std::min(length - bytes.size(), whole().left());
            bytes += reader_.raw(here).toByteArray();
        }
        return bytes;
    }

private:
    void next()
    {
        do {
            if (++part_ >= parts_.size()) {
                throw ExcelError(QStringLiteral("its list of texts ends too early."));
            }
            reader_ = Reader(parts_[part_]);
        } while (reader_.left() == 0);
    }

    const std::vector<QByteArray> &parts_;
    std::size_t part_ = 0;
    Reader reader_;
};
} // namespace

void Reader::need(qsizetype length) const
{
    if (length < 0 || length > left()) {
        throw ExcelError(QStringLiteral("it is damaged: a record ends too early."));
    }
}

std::uint16_t u16At(const QByteArray &body, qsizetype at)
{
    return static_cast<std::uint16_t>(Reader(body).skip(at).u16());
}

void setU16(QByteArray &body, qsizetype at, std::uint16_t value)
{
    qToLittleEndian(value, body.data() + at);
}

QString takeLetters(Reader &reader, qsizetype count, bool wide)
{
    const QByteArrayView bytes = reader.raw(wide ? count * 2 : count);
    if (!wide) {
        return QString::fromLatin1(bytes.data(), bytes.size());
    }
    QString text(count, Qt::Uninitialized);
    for (qsizetype at = 0; at < count; ++at) {
        text[at] = QChar(qFromLittleEndian<char16_t>(bytes.data() + 2 * at));
    }
    return text;
}

namespace
{
QString takeFlaggedText(Reader &reader, std::size_t length)
{
    const std::size_t flags = reader.u8();
    const qsizetype skipped = (flags & WithRuns ? 2 : 0) + (flags & WithReading ? 4 : 0);
    reader.skip(skipped);
    return takeLetters(reader, static_cast<qsizetype>(length), (flags & WideLetters) != 0);
}

void putFlaggedText(Bytes &bytes, const QString &text)
{
    const bool wide = isWide(text);
    bytes.u8(wide ? WideLetters : 0U);
    putLetters(bytes, text, wide);
}
} // namespace

QString takeShortText(Reader &reader)
{
    const std::size_t length = reader.u8();
    return takeFlaggedText(reader, length);
}

QString takeText(Reader &reader)
{
    const std::size_t length = reader.u16();
    return takeFlaggedText(reader, length);
}

void putShortText(Bytes &bytes, const QString &text)
{
    bytes.u8(static_cast<std::size_t>(text.size()));
    putFlaggedText(bytes, text);
}

void putText(Bytes &bytes, const QString &text)
{
    bytes.u16(static_cast<std::size_t>(text.size()));
    putFlaggedText(bytes, text);
}

void putSharedTexts(Bytes &stream, const std::vector<const model::Text *> &texts, std::size_t uses)
{
    ContinuedBody body(stream, SharedTexts);
    body.stream().u32(uses).u32(texts.size());
    for (const model::Text *text : texts) {
        putSharedText(body, *text);
    }
}

std::vector<model::Text> takeSharedTexts(const std::vector<QByteArray> &parts)
{
    ContinuedReader reader(parts);
    reader.whole().skip(4);
    const std::size_t count = reader.whole().u32();
    std::vector<model::Text> texts;
    for (std::size_t number = 0; number < count; ++number) {
        const auto length = static_cast<qsizetype>(reader.whole().u16());
        const std::size_t flags = reader.whole().u8();
        const auto runs = flags & WithRuns ? static_cast<qsizetype>(reader.whole().u16()) : 0;
        const auto reading = flags & WithReading ? static_cast<qsizetype>(reader.whole().u32()) : 0;
        model::Text text{reader.letters(length, (flags & WideLetters) != 0), {}, {}};
        text.runs = reader.raw(runs * RunLength);
        text.reading = reader.raw(reading);
        texts.push_back(std::move(text));
    }
    return texts;
}

} // namespace excel::biff
