// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/XlsxSheet.h"

#include "platform/basic/Formats.h"
#include "platform/basic/SerialDate.h"
#include "platform/sheets/SheetError.h"

#include <QRegularExpression>

#include <cmath>
#include <optional>

namespace sheets
{

namespace
{

using Token = QXmlStreamReader::TokenType;

constexpr double DaysFrom1900To1904 = 1462;

/// Row and column, both from 0.
struct Position {
    int row = 0;
    int column = 0;
};

/// "B5"; nothing when the text is no reference.
std::optional<Position> parseReference(QStringView text)
{
    constexpr int Letters = 26;
    constexpr int MostColumns = 16384;
    qsizetype i = 0;
    int column = 0;
    for (; i < text.size() && text[i] >= u'A' && text[i] <= u'Z' && column <= MostColumns; ++i) {
        column = column * Letters + (text[i].unicode() - u'A' + 1);
    }
    bool isNumber = false;
    const int row = text.mid(i).toInt(&isNumber);
    if (i == 0 || column > MostColumns || !isNumber || row < 1) {
        return std::nullopt;
    }
    return Position{row - 1, column - 1};
}

/// Characters that XML cannot hold are written as "_x0009_".
QString unescaped(const QString &text)
{
    if (!text.contains(QLatin1String("_x"))) {
        return text;
    }
    static const QRegularExpression Escape(QStringLiteral("_x([0-9A-Fa-f]{4})_"));
    QString plain;
    qsizetype end = 0;
    for (auto matches = Escape.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        plain += QStringView(text).mid(end, match.capturedStart() - end);
        plain += QChar(static_cast<char16_t>(match.capturedView(1).toUInt(nullptr, 16)));
        end = match.capturedEnd();
    }
    plain += QStringView(text).mid(end);
    return plain;
}

class SheetReader
{
public:
    SheetReader(const QString &name, const QByteArray &bytes, const XlsxShared &shared) : shared_(shared), xml_(bytes)
    {
        sheet_.name = name;
    }

    Sheet read()
    {
        while (!xml_.atEnd()) {
            const Token token = xml_.readNext();
            if (token == Token::DTD) {
                damaged();
            }
            if (token != Token::StartElement) {
                continue;
            }
            if (xml_.name() == u"row") {
                startRow();
            } else if (xml_.name() == u"c") {
                readCell();
            } else if (xml_.name() == u"mergeCell") {
                readMerge();
            }
        }
        if (xml_.hasError()) {
            damaged();
        }
        return std::move(sheet_);
    }

private:
    [[noreturn]] void damaged() const
    {
        throw SheetError(QStringLiteral("is damaged: the sheet \"%1\" cannot be read.").arg(sheet_.name));
    }

    QStringView attribute(const char *name)
    {
        attributes_ = xml_.attributes();
        return attributes_.value(QLatin1String(name));
    }

    /// Rows and cells may leave out where they are: they then follow the one before.
    void startRow()
    {
        const QStringView number = attribute("r");
        bool isNumber = true;
        next_ = {number.isEmpty() ? next_.row + 1 : number.toInt(&isNumber) - 1, 0};
        if (!isNumber || next_.row < 0) {
            damaged();
        }
    }

    void readCell()
    {
        if (const QStringView reference = attribute("r"); !reference.isEmpty()) {
            const std::optional<Position> position = parseReference(reference);
            if (!position) {
                damaged();
            }
            next_ = *position;
        }
        const QString type = attribute("t").toString();
        const auto style = static_cast<std::size_t>(attribute("s").toUInt());
        bool formula = false;
        QString value;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == u"f") {
                formula = true;
                xml_.skipCurrentElement();
            } else if (xml_.name() == u"v") {
                value = xml_.readElementText(QXmlStreamReader::SkipChildElements);
            } else if (xml_.name() == u"is") {
                value = readStringItem(xml_);
            } else {
                xml_.skipCurrentElement();
            }
        }
        Cell cell = cellOf(type, style, value);
        cell.formula = formula;
        if (!cell.isBlank() || formula) {
            put(std::move(cell));
        }
        ++next_.column;
    }

    Cell cellOf(QStringView type, std::size_t style, const QString &value) const
    {
        if (type == u"s") {
            bool isNumber = false;
            const qsizetype index = value.toLongLong(&isNumber);
            if (!isNumber || index < 0 || index >= shared_.texts.size()) {
                damaged();
            }
            return text(shared_.texts.at(index));
        }
        if (type == u"inlineStr" || type == u"str") {
            return text(type == u"str" ? unescaped(value) : value);
        }
        if (value.isEmpty()) {
            return {};
        }
        if (type == u"b") {
            return {CellKind::YesNo, false, value == u"0" ? QStringLiteral("No") : QStringLiteral("Yes")};
        }
        if (type == u"e") {
            return {CellKind::Error, false, value};
        }
        if (type == u"d") {
            return {CellKind::Date, false, value};
        }
        return number(style, value);
    }

    static Cell text(const QString &value) { return value.isEmpty() ? Cell() : Cell{CellKind::Text, false, value}; }

    Cell number(std::size_t style, const QString &value) const
    {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) {
            damaged();
        }
        constexpr double LastDay = 2958466; // the day after 9999/12/31
        const bool isDate = style < shared_.dateStyles.size() && shared_.dateStyles[style];
        const double serial = number + (shared_.from1904 ? DaysFrom1900To1904 : 0);
        if (!isDate || serial < 0 || serial >= LastDay) {
            return {CellKind::Number, false, basic::doubleText(number)};
        }
        const bool hasTime = serial != std::floor(serial);
        return {CellKind::Date, false,
                basic::formatDate(basic::SerialDate(serial),
                                  hasTime ? QStringView(u"yyyy/mm/dd hh:nn") : QStringView(u"yyyy/mm/dd"))};
    }

    void put(Cell cell)
    {
        if (next_.row >= MaxRows) {
            throw SheetError(QStringLiteral("has more than %1 rows in the sheet \"%2\".").arg(MaxRows).arg(sheet_.name));
        }
        if (next_.column >= MaxColumns) {
            throw SheetError(QStringLiteral("has more than %1 columns in the sheet \"%2\": %3%4 is filled.")
                                 .arg(MaxColumns)
                                 .arg(sheet_.name, columnLetters(next_.column))
                                 .arg(next_.row + 1));
        }
        const auto row = static_cast<std::size_t>(next_.row);
        const auto column = static_cast<std::size_t>(next_.column);
        sheet_.rows.resize(std::max(sheet_.rows.size(), row + 1));
        sheet_.rows[row].resize(std::max(sheet_.rows[row].size(), column + 1));
        sheet_.rows[row][column] = std::move(cell);
    }

    void readMerge()
    {
        const QString area = attribute("ref").toString();
        const std::optional<Position> first = parseReference(QStringView(area).left(area.indexOf(u':')));
        const std::optional<Position> last = parseReference(QStringView(area).mid(area.indexOf(u':') + 1));
        if (!first || !last) {
            damaged();
        }
        sheet_.merged.push_back({first->row, first->column, last->row, last->column});
    }

    const XlsxShared &shared_;
    QXmlStreamReader xml_;
    QXmlStreamAttributes attributes_;
    Sheet sheet_;
    Position next_{-1, 0};
};

} // namespace

QString readStringItem(QXmlStreamReader &xml)
{
    QString text;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"t") {
            text += unescaped(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (xml.name() == u"r") {
            text += readStringItem(xml);
        } else {
            xml.skipCurrentElement();
        }
    }
    return text;
}

Sheet readXlsxSheet(const QString &name, const QByteArray &sheetXml, const XlsxShared &shared)
{
    return SheetReader(name, sheetXml, shared).read();
}

} // namespace sheets
