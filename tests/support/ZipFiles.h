// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <zip.h>

#include <utility>
#include <vector>

/// The parts of a zip archive by name.
using ZipParts = std::vector<std::pair<QByteArray, QByteArray>>;

/// Writes a zip archive; false when it could not be written.
inline bool writeZip(const QString &path, const ZipParts &parts)
{
    const zipFile archive = zipOpen64(path.toUtf8().constData(), APPEND_STATUS_CREATE);
    bool written = archive != nullptr;
    for (const auto &[name, bytes] : parts) {
        const zip_fileinfo info{};
        written = written
            && zipOpenNewFileInZip64(archive, name.constData(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, 6, 0)
                == ZIP_OK
            && zipWriteInFileInZip(archive, bytes.constData(), static_cast<unsigned>(bytes.size())) == ZIP_OK
            && zipCloseFileInZip(archive) == ZIP_OK;
    }
    return written && zipClose(archive, nullptr) == ZIP_OK;
}

/// The parts of a workbook with one sheet, "Blocks", whose rows are given as XML; other parts may be added or replaced.
inline ZipParts workbookParts(const QByteArray &rows, const QByteArray &afterRows = {})
{
    const QByteArray office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const QByteArray relations = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const auto relation = [&](const QByteArray &id, const QByteArray &kind, const QByteArray &target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + office + '/' + kind + "\" Target=\"" + target + "\"/>";
    };
    return {
        {"[Content_Types].xml", "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>"},
        {"_rels/.rels", relations + relation("rId1", "officeDocument", "xl/workbook.xml") + "</Relationships>"},
        {"xl/workbook.xml",
         "<workbook xmlns:r=\"" + office + "\"><sheets><sheet name=\"Blocks\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>"},
        {"xl/_rels/workbook.xml.rels",
         relations + relation("rId1", "worksheet", "worksheets/sheet1.xml")
             + relation("rId2", "sharedStrings", "sharedStrings.xml") + relation("rId3", "styles", "styles.xml")
             + "</Relationships>"},
        {"xl/sharedStrings.xml",
         "<sst><si><t>Block</t></si><si><r><t>Da</t></r><r><t>m</t></r><rPh><t>hint</t></rPh></si><si><t>a_x0009_b</t></si></"
         "sst>"},
        {"xl/styles.xml",
         "<styleSheet><numFmts><numFmt numFmtId=\"164\" formatCode=\"[Red]dd/mm/yyyy\"/><numFmt numFmtId=\"165\" "
         "formatCode=\"0.0&quot;days&quot;\"/></numFmts><cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf "
         "numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs></styleSheet>"},
        {"xl/worksheets/sheet1.xml", "<worksheet><sheetData>" + rows + "</sheetData>" + afterRows + "</worksheet>"},
    };
}

/// The same parts with one replaced, or added.
inline ZipParts withPart(ZipParts parts, const QByteArray &name, const QByteArray &bytes)
{
    for (auto &part : parts) {
        if (part.first == name) {
            part.second = bytes;
            return parts;
        }
    }
    parts.emplace_back(name, bytes);
    return parts;
}
