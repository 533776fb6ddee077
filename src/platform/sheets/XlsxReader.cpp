// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/XlsxReader.h"

#include "platform/sheets/SheetError.h"
#include "platform/sheets/XlsxSheet.h"
#include "platform/sheets/XlsxStyles.h"
#include "platform/sheets/ZipArchive.h"

#include <QDir>
#include <QHash>
#include <QXmlStreamReader>

#include <vector>

namespace sheets
{

namespace
{

using Token = QXmlStreamReader::TokenType;

/// Calls the body at the start of each element; SheetError when the part is no sound XML.
template <typename Body> void forEachElement(const QByteArray &part, const QString &name, Body &&body)
{
    QXmlStreamReader xml(part);
    while (!xml.atEnd()) {
        if (xml.readNext() == Token::StartElement) {
            body(xml);
        }
    }
    if (xml.hasError()) {
        throw SheetError(QStringLiteral("is damaged: \"%1\" in it cannot be read.").arg(name));
    }
}

/// A relation of a part: where it leads, and by the last word of its type what for, such as "worksheet".
struct Relation {
    QString kind;
    QString target;
};

/// Relations of a part by their ids; none for a part without any.
QHash<QString, Relation> relationsOf(ZipArchive &archive, const QString &part)
{
    const qsizetype slash = part.lastIndexOf(u'/');
    const QString folder = part.left(slash + 1);
    const QString name = QStringLiteral("%1_rels/%2.rels").arg(folder, part.mid(slash + 1));
    QHash<QString, Relation> relations;
    if (!archive.contains(name)) {
        return relations;
    }
    forEachElement(archive.read(name), name, [&](const QXmlStreamReader &xml) {
        if (xml.name() != u"Relationship") {
            return;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        const QString target = attributes.value(QLatin1String("Target")).toString();
        const QString path = target.startsWith(u'/') ? target.mid(1) : QDir::cleanPath(folder + target);
        const QString type = attributes.value(QLatin1String("Type")).toString();
        relations.insert(attributes.value(QLatin1String("Id")).toString(), {type.mid(type.lastIndexOf(u'/') + 1), path});
    });
    return relations;
}

/// Where the one relation of a kind leads; empty without one.
QString targetOf(const QHash<QString, Relation> &relations, QStringView kind)
{
    for (const Relation &relation : relations) {
        if (relation.kind == kind) {
            return relation.target;
        }
    }
    return {};
}

/// The workbook part. What else comes in a zip archive is named.
QString workbookPart(ZipArchive &archive)
{
    const QString part = targetOf(relationsOf(archive, QString()), u"officeDocument");
    if (part.endsWith(QLatin1String(".bin"))) {
        throw SheetError(QStringLiteral("is a binary workbook (.xlsb). Save it as .xlsx, then open it again."));
    }
    if (!part.isEmpty() && archive.contains(part)) {
        return part;
    }
    if (archive.contains(QStringLiteral("content.xml"))) {
        throw SheetError(QStringLiteral("is an OpenDocument file. Save it as .xlsx or .csv, then open it again."));
    }
    throw SheetError(QStringLiteral("is no workbook: no sheets were found in it."));
}

void refuseMacros(const QHash<QString, Relation> &relations)
{
    if (!targetOf(relations, u"vbaProject").isEmpty()) {
        throw SheetError(QStringLiteral("holds macros. Save it as .xlsx without them, then open it again."));
    }
}

QStringList sharedTexts(ZipArchive &archive, const QString &part)
{
    QStringList texts;
    if (!part.isEmpty()) {
        forEachElement(archive.read(part), part, [&](QXmlStreamReader &xml) {
            if (xml.name() == u"si") {
                texts.append(readStringItem(xml));
            }
        });
    }
    return texts;
}

struct SheetEntry {
    QString name;
    QString relation;
};

bool isTrue(QStringView value)
{
    return value == u"1" || value == u"true";
}

} // namespace

Workbook readXlsx(ZipArchive &archive)
{
    const QString part = workbookPart(archive);
    const QHash<QString, Relation> relations = relationsOf(archive, part);
    refuseMacros(relations);
    XlsxShared shared;
    std::vector<SheetEntry> entries;
    forEachElement(archive.read(part), part, [&](const QXmlStreamReader &xml) {
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == u"workbookPr") {
            shared.from1904 = isTrue(attributes.value(QLatin1String("date1904")));
        } else if (xml.name() == u"sheet") {
            // The id of the relation is the one attribute "id" with a namespace.
            for (const QXmlStreamAttribute &attribute : attributes) {
                if (attribute.name() == u"id" && !attribute.namespaceUri().isEmpty()) {
                    entries.push_back({attributes.value(QLatin1String("name")).toString(), attribute.value().toString()});
                }
            }
        }
    });
    shared.texts = sharedTexts(archive, targetOf(relations, u"sharedStrings"));
    const QString styles = targetOf(relations, u"styles");
    shared.dateStyles = styles.isEmpty() ? std::vector<bool>() : dateStyles(archive.read(styles));
    Workbook book;
    for (const SheetEntry &entry : entries) {
        const Relation relation = relations.value(entry.relation);
        if (relation.kind == u"worksheet") {
            book.sheets.push_back(readXlsxSheet(entry.name, archive.read(relation.target), shared));
        }
    }
    if (book.sheets.empty()) {
        throw SheetError(QStringLiteral("is no workbook: no sheets were found in it."));
    }
    return book;
}

} // namespace sheets
