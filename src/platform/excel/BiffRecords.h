// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>

/// The records of a .xls stream, version 8 of the format. Numbers and layouts are those of the format's published description;
/// all are little-endian.
namespace excel::biff
{

enum Id : std::uint16_t {
    Dimensions = 0x200,
    Blank = 0x201,
    Number = 0x203,
    Label = 0x204,
    BoolError = 0x205,
    FormulaText = 0x207,
    RowRecord = 0x208,
    IndexOfRows = 0x20B,
    Array = 0x221,
    DefaultRowHeight = 0x225,
    DataTable = 0x236,
    Window2 = 0x23E,
    Rk = 0x27E,
    StyleName = 0x293,
    Formula = 0x006,
    EndOfStream = 0x00A,
    Header = 0x014,
    Footer = 0x015,
    ExternSheet = 0x017,
    DefinedName = 0x018,
    RowBreaks = 0x01B,
    LeftMargin = 0x026,
    RightMargin = 0x027,
    TopMargin = 0x028,
    BottomMargin = 0x029,
    FilePass = 0x02F,
    FontRecord = 0x031,
    Continuation = 0x03C,
    Window1 = 0x03D,
    DefaultColumnWidth = 0x055,
    ColumnInfo = 0x07D,
    SheetOptions = 0x081,
    BoundSheet = 0x085,
    Country = 0x08C,
    Palette = 0x092,
    StandardWidth = 0x099,
    Setup = 0x0A1,
    MultipleRk = 0x0BD,
    MultipleBlank = 0x0BE,
    RichString = 0x0D6,
    RowIndex = 0x0D7,
    ExtendedFormat = 0x0E0,
    MergedCells = 0x0E5,
    DrawingGroup = 0x0EB,
    SharedTexts = 0x0FC,
    LabelShared = 0x0FD,
    SharedTextIndex = 0x0FF,
    SheetNumbers = 0x13D,
    NaturalLanguage = 0x160,
    SupplyBook = 0x1AE,
    NumberFormat = 0x41E,
    SharedFormula = 0x4BC,
    BeginOfStream = 0x809,
    /// Not part of the format: marks where new names are written.
    NewNames = 0xFFFF,
};

/// Bits of the options of a row.
enum RowOption : std::uint16_t { RowHidden = 0x20, HeightByHand = 0x40, RowHasFormat = 0x80, RowAlways = 0x100 };

inline constexpr int RowsOfXls = 65536;
inline constexpr int ColumnsOfXls = 256;
/// The stream of a container that holds the book.
inline constexpr QLatin1String StreamOfBook("Workbook");
inline constexpr qsizetype MaxBody = 8224;
inline constexpr std::uint16_t Version8 = 0x0600;
/// The format of an empty cell, in the files that this program makes.
inline constexpr std::int32_t StandardFormat = 15;
inline constexpr std::uint16_t KindOfWorksheet = 0x10;
/// Colours 0 to 7 are fixed, the palette begins after them, 64 is the automatic one.
inline constexpr std::int32_t FirstPaletteColour = 8;
inline constexpr std::uint32_t AutomaticColour = 64;

/// Appends numbers to a body or a stream. It has a buffer of its own, since a stream takes millions of small numbers.
class Bytes
{
public:
    Bytes() = default;
    explicit Bytes(const QByteArray &start) { raw(start); }

    template <typename Number> Bytes &put(Number value)
    {
        const Number stored = qToLittleEndian(value);
        std::memcpy(grow(sizeof stored), &stored, sizeof stored);
        return *this;
    }
    Bytes &u8(std::size_t value) { return put(static_cast<std::uint8_t>(value)); }
    Bytes &u16(std::size_t value) { return put(static_cast<std::uint16_t>(value)); }
    Bytes &u32(std::size_t value) { return put(static_cast<std::uint32_t>(value)); }
    Bytes &real(double value) { return put(std::bit_cast<std::uint64_t>(value)); }
    Bytes &raw(QByteArrayView more)
    {
        std::copy(more.begin(), more.end(), grow(static_cast<std::size_t>(more.size())));
        return *this;
    }
    /// Appends the header of a record whose body follows.
    Bytes &head(std::uint16_t id, std::size_t length) { return u16(id).u16(length); }
    Bytes &record(std::uint16_t id, const QByteArray &body) { return head(id, static_cast<std::size_t>(body.size())).raw(body); }
    /// Overwrites a number.
    template <typename Number> void patch(qsizetype at, Number value) { qToLittleEndian(value, buffer_.data() + at); }

    qsizetype size() const { return static_cast<qsizetype>(used_); }
    /// A copy of the bytes.
    QByteArray bytes() const { return {buffer_.data(), size()}; }

private:
    /// Grows by `length` bytes and returns their start.
    char *grow(std::size_t length)
    {
        if (buffer_.size() - used_ < length) {
            buffer_.resize(2 * buffer_.size() + length);
        }
        used_ += length;
        return buffer_.data() + used_ - length;
    }

    std::vector<char> buffer_;
    std::size_t used_ = 0;
};

/// Reads numbers from a body; ExcelError when the body ends too early.
class Reader
{
public:
    explicit Reader(QByteArrayView bytes) : bytes_(bytes) {}

    std::size_t u8() { return take<std::uint8_t>(); }
    std::size_t u16() { return take<std::uint16_t>(); }
    std::size_t u32() { return take<std::uint32_t>(); }
    double real() { return std::bit_cast<double>(take<std::uint64_t>()); }
    QByteArrayView raw(qsizetype length)
    {
        need(length);
        at_ += length;
        return bytes_.sliced(at_ - length, length);
    }
    Reader &skip(qsizetype length)
    {
        raw(length);
        return *this;
    }
    qsizetype left() const { return bytes_.size() - at_; }

private:
    template <typename Number> Number take()
    {
        return qFromLittleEndian<Number>(raw(static_cast<qsizetype>(sizeof(Number))).data());
    }
    void need(qsizetype length) const;

    QByteArrayView bytes_;
    qsizetype at_ = 0;
};

/// The number at an offset of a body, which must be long enough.
std::uint16_t u16At(const QByteArray &body, qsizetype at);
void setU16(QByteArray &body, qsizetype at, std::uint16_t value);

/// The characters of a text whose length and kind are known: one byte each, or two.
QString takeLetters(Reader &reader, qsizetype count, bool wide);
/// A text after a length of one or two bytes.
QString takeShortText(Reader &reader);
QString takeText(Reader &reader);
void putShortText(Bytes &bytes, const QString &text);
void putText(Bytes &bytes, const QString &text);

/// Appends the shared texts, split into continuations; `uses` counts the cells that show one of them.
void putSharedTexts(Bytes &stream, const std::vector<const model::Text *> &texts, std::size_t uses);
/// Reads the shared texts from their record and its continuations.
std::vector<model::Text> takeSharedTexts(const std::vector<QByteArray> &parts);

} // namespace excel::biff
