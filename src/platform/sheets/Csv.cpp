// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/Csv.h"

#include "platform/basic/TextFiles.h"
#include "platform/sheets/SheetError.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace sheets
{

namespace
{

using Rows = std::vector<std::vector<Cell>>;

enum class Quotes { Strict, Lenient };

bool isLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r';
}

/// Reads one value after the other and knows in which row it is.
class CsvParser
{
public:
    CsvParser(QStringView text, QChar separator, Quotes quotes) : text_(text), separator_(separator), quotes_(quotes) {}

    Rows parse()
    {
        while (position_ < text_.size()) {
            parseRow();
        }
        while (!rows_.empty() && rows_.back().empty()) {
            rows_.pop_back();
        }
        return std::move(rows_);
    }

private:
    void parseRow()
    {
        std::vector<Cell> row;
        int column = 0;
        for (;;) {
            addValue(row, column++, value());
            if (position_ >= text_.size() || text_[position_] != separator_) {
                break;
            }
            ++position_;
        }
        skipLineEnd();
        if (!row.empty() && rows_.size() >= static_cast<std::size_t>(MaxRows)) {
            throw SheetError(QStringLiteral("has more than %1 rows.").arg(MaxRows));
        }
        // Blank lines beyond the limit are no rows.
        if (rows_.size() < static_cast<std::size_t>(MaxRows)) {
            rows_.push_back(std::move(row));
        }
    }

    void addValue(std::vector<Cell> &row, int column, QString text) const
    {
        if (text.isEmpty()) {
            return;
        }
        if (column >= MaxColumns) {
            throw SheetError(QStringLiteral("has more than %1 columns in row %2.").arg(MaxColumns).arg(rows_.size() + 1));
        }
        row.resize(static_cast<std::size_t>(column) + 1);
        row.back() = {CellKind::Text, false, std::move(text)};
    }

    void skipLineEnd()
    {
        if (position_ < text_.size() && text_[position_] == u'\r') {
            ++position_;
        }
        if (position_ < text_.size() && text_[position_] == u'\n') {
            ++position_;
        }
    }

    QString value()
    {
        if (position_ < text_.size() && text_[position_] == u'"') {
            const qsizetype begin = position_;
            QString quoted;
            if (parseQuoted(quoted)) {
                return quoted + plainValue();
            }
            if (quotes_ == Quotes::Strict) {
                throw SheetError(QStringLiteral("has a quotation mark in row %1 that does not close.").arg(rows_.size() + 1));
            }
            position_ = begin;
        }
        return plainValue();
    }

    bool parseQuoted(QString &value)
    {
        for (++position_; position_ < text_.size(); ++position_) {
            if (text_[position_] != u'"') {
                value += text_[position_];
            } else if (position_ + 1 < text_.size() && text_[position_ + 1] == u'"') {
                value += u'"';
                ++position_;
            } else {
                ++position_;
                return true;
            }
        }
        return false;
    }

    QString plainValue()
    {
        const qsizetype begin = position_;
        while (position_ < text_.size() && text_[position_] != separator_ && !isLineEnd(text_[position_])) {
            ++position_;
        }
        return text_.mid(begin, position_ - begin).toString();
    }

    QStringView text_;
    QChar separator_;
    Quotes quotes_;
    qsizetype position_ = 0;
    Rows rows_;
};

QString decoded(const QByteArray &bytes)
{
    const auto encoding = QStringConverter::encodingForData(bytes);
    if (encoding == QStringConverter::Utf16LE || encoding == QStringConverter::Utf16BE) {
        QString text = QStringDecoder(*encoding)(bytes);
        return text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text;
    }
    return basic::decodeText(bytes);
}

/// Of the candidates outside quotes in the first filled line; a tie goes to the one that is named first.
QChar separatorOf(QStringView text)
{
    constexpr std::array<char16_t, 3> Separators{u'\t', u';', u','};
    std::array<int, 3> counts{};
    bool quoted = false;
    bool filled = false;
    for (const QChar c : text) {
        quoted = c == u'"' ? !quoted : quoted;
        if (!quoted && isLineEnd(c)) {
            if (filled) {
                break;
            }
            continue;
        }
        filled = filled || !c.isSpace();
        const auto found = std::find(Separators.begin(), Separators.end(), c.unicode());
        if (!quoted && found != Separators.end()) {
            ++counts[static_cast<std::size_t>(found - Separators.begin())];
        }
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    return *most == 0 ? QChar(u',') : QChar(Separators[static_cast<std::size_t>(most - counts.begin())]);
}

QString quotedValue(const QString &value, QChar separator)
{
    const bool needsQuotes =
        value.contains(separator) || value.contains(u'"') || std::any_of(value.begin(), value.end(), isLineEnd);
    if (!needsQuotes) {
        return value;
    }
    QString quoted = value;
    return u'"' + quoted.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString joinedRows(const std::vector<QStringList> &rows, QChar separator, QStringView lineEnd)
{
    QString text;
    for (const QStringList &row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            text += i == 0 ? QString() : QString(separator);
            text += quotedValue(row[i], separator);
        }
        text += lineEnd;
    }
    return text;
}

} // namespace

Rows readCsv(const QByteArray &bytes)
{
    const QString text = decoded(bytes);
    if (text.contains(QChar::Null)) {
        throw SheetError(QStringLiteral("is neither a workbook (.xlsx) nor a text of separated values (.csv)."));
    }
    QStringView rest = text;
    QChar separator = separatorOf(rest);
    constexpr QStringView Announcement = u"sep=";
    if (rest.startsWith(Announcement, Qt::CaseInsensitive) && rest.size() > Announcement.size()
        && (rest.size() == Announcement.size() + 1 || isLineEnd(rest[Announcement.size() + 1]))) {
        separator = rest[Announcement.size()];
        // The row stays, as a blank one, so that row numbers are those of a spreadsheet.
        rest = rest.mid(Announcement.size() + 1);
    }
    return CsvParser(rest, separator, Quotes::Strict).parse();
}

Rows readClipboardText(const QString &text)
{
    return CsvParser(text, u'\t', Quotes::Lenient).parse();
}

QString clipboardText(const std::vector<QStringList> &rows)
{
    return joinedRows(rows, u'\t', u"\n");
}

QByteArray csvBytes(const std::vector<QStringList> &rows)
{
    return "\xEF\xBB\xBF" + joinedRows(rows, u',', u"\r\n").toUtf8();
}

} // namespace sheets
