// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/XlsxStyles.h"

#include <QHash>
#include <QXmlStreamReader>

#include <utility>

namespace sheets
{

namespace
{

/// Numbers of the built-in formats for dates and times: ECMA-376, 18.8.30, with those of East Asian locales.
bool isBuiltInDateFormat(int number)
{
    constexpr std::pair<int, int> Ranges[] = {{14, 22}, {27, 36}, {45, 47}, {50, 58}};
    for (const auto &[first, last] : Ranges) {
        if (number >= first && number <= last) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isDateFormat(QStringView code)
{
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code[i].toLower();
        if (c == u'"' || c == u'[') {
            // Quoted text, a colour or a condition; "[h]" counts hours.
            const qsizetype end = code.indexOf(c == u'"' ? u'"' : u']', i + 1);
            if (end < 0) {
                return false;
            }
            if (c == u'[' && end == i + 2 && QStringView(u"hms").contains(code[i + 1].toLower())) {
                return true;
            }
            i = end;
        } else if (c == u'\\' || c == u'_' || c == u'*') {
            ++i;
        } else if (c == u';') {
            return false;
        } else if (QStringView(u"dmyhs").contains(c)) {
            return true;
        }
    }
    return false;
}

std::vector<bool> dateStyles(const QByteArray &stylesXml)
{
    QXmlStreamReader xml(stylesXml);
    QHash<int, bool> formats;
    std::vector<bool> styles;
    bool inCellStyles = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (xml.name() == u"cellXfs") {
            inCellStyles = token == QXmlStreamReader::StartElement;
        }
        if (token != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        const int number = attributes.value(QLatin1String("numFmtId")).toInt();
        if (xml.name() == u"numFmt") {
            formats.insert(number, isDateFormat(attributes.value(QLatin1String("formatCode"))));
        } else if (inCellStyles && xml.name() == u"xf") {
            styles.push_back(formats.value(number, isBuiltInDateFormat(number)));
        }
    }
    return styles;
}

} // namespace sheets
