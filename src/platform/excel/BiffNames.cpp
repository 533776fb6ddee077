// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffNames.h"

#include "platform/excel/ExcelError.h"

#include <algorithm>

namespace excel::biff
{

using model::Page;

namespace
{
/// Tokens of an expression.
constexpr std::size_t AreaOfSheet = 0x3B;
constexpr std::size_t MemoryFunction = 0x29;
constexpr std::size_t UnionOfAreas = 0x10;

constexpr std::size_t BuiltInName = 0x20;
constexpr std::size_t HiddenName = 0x01;
constexpr char16_t TitlesName = 7;
constexpr qsizetype AreaLength = 11;
constexpr qsizetype ReferenceLength = 6;
constexpr std::size_t LastRow = RowsOfXls - 1;
constexpr std::size_t LastColumn = ColumnsOfXls - 1;

/// A parsed name record.
struct Name {
    std::size_t options = 0;
    std::size_t sheet = 0;
    QString text;
    QByteArray expression;
    QByteArray rest;

    bool isTitles() const { return (options & BuiltInName) && text == QChar(TitlesName) && sheet > 0; }
};

Name parseName(const QByteArray &body)
{
    Name name;
    Reader reader(body);
    name.options = reader.u16();
    const std::size_t length = reader.skip(1).u8();
    const std::size_t expressionLength = reader.u16();
    name.sheet = reader.skip(2).u16();
    const bool wide = reader.skip(4).u8() & 1;
    name.text = takeLetters(reader, static_cast<qsizetype>(length), wide);
    name.expression = reader.raw(static_cast<qsizetype>(expressionLength)).toByteArray();
    name.rest = reader.raw(reader.left()).toByteArray();
    return name;
}

QByteArray nameBody(const Name &name)
{
    Bytes body;
    body.u16(name.options)
        .u8(0)
        .u8(static_cast<std::size_t>(name.text.size()))
        .u16(static_cast<std::size_t>(name.expression.size()));
    body.u16(0).u16(name.sheet).u32(0).u8(0).raw(name.text.toLatin1()).raw(name.expression);
    return body.bytes();
}

/// The areas of an expression; nothing when it holds anything else.
std::optional<std::vector<Area>> areasOf(const QByteArray &expression)
{
    std::vector<Area> areas;
    Reader reader(expression);
    while (reader.left() > 0) {
        const std::size_t token = reader.u8();
        if (token == MemoryFunction) {
            reader.skip(2);
        } else if (token == AreaOfSheet && reader.left() >= AreaLength - 1) {
            reader.skip(2);
            Area area;
            area.top = static_cast<int>(reader.u16());
            area.bottom = static_cast<int>(reader.u16());
            area.left = static_cast<int>(reader.u16() & LastColumn);
            area.right = static_cast<int>(reader.u16() & LastColumn);
            areas.push_back(area);
        } else if (token != UnionOfAreas) {
            return std::nullopt;
        }
    }
    return areas;
}

void putArea(Bytes &bytes, std::size_t reference, std::size_t top, std::size_t bottom, std::size_t left, std::size_t right)
{
    bytes.u8(AreaOfSheet).u16(reference).u16(top).u16(bottom).u16(left).u16(right);
}

bool sameTitles(const Page &one, const Page &other)
{
    return one.titleRows == other.titleRows && one.titleColumns == other.titleColumns;
}

/// A reference book of four bytes stands for the workbook itself.
bool isOwnBook(const QByteArray &body)
{
    return body.size() == 4 && u16At(body, 2) == 0x0401;
}
} // namespace

void readTitleNames(model::Book &book)
{
    for (const BiffRecord &record : book.passthrough->globals) {
        if (record.id != DefinedName || record.body.isEmpty()) {
            continue;
        }
        const Name name = parseName(record.body);
        book.sheetOrderIsFixed = book.sheetOrderIsFixed || name.sheet != 0;
        const std::optional<std::vector<Area>> areas = areasOf(name.expression);
        if (!name.isTitles() || name.sheet > book.sheets.size() || !areas) {
            continue;
        }
        Page &page = book.sheets[name.sheet - 1]->page;
        for (const Area &area : *areas) {
            if (area.left == 0 && area.right == static_cast<int>(LastColumn)) {
                page.titleRows = model::Span{area.top, area.bottom};
            } else {
                page.titleColumns = model::Span{area.left, area.right};
            }
        }
        book.sheets[name.sheet - 1]->passthrough->pageAsRead = page;
    }
}

NameWriter::NameWriter(const model::Book &book, const BookPassthrough &passthrough)
    : book_(book), referenceOfSheet_(book.sheets.size(), 0), nameStands_(book.sheets.size(), false)
{
    std::size_t books = 0;
    for (const BiffRecord &record : passthrough.globals) {
        if (record.id == SupplyBook) {
            if (ownBookIsNew_ && isOwnBook(record.body)) {
                ownBook_ = books;
                ownBookIsNew_ = false;
            }
            ++books;
        } else if (record.id == ExternSheet && record.body.size() >= 2) {
            const qsizetype length = u16At(record.body, 0) * ReferenceLength;
            references_ = record.body.mid(2, std::min(length, record.body.size() - 2));
        } else if (record.id == DefinedName && !record.body.isEmpty()) {
            const Name name = parseName(record.body);
            if (name.isTitles() && name.sheet <= nameStands_.size()) {
                nameStands_[name.sheet - 1] = true;
            }
        }
    }
    if (ownBookIsNew_) {
        ownBook_ = books;
    }
    for (std::size_t sheet = 0; sheet < book.sheets.size(); ++sheet) {
        const Page &page = book.sheets[sheet]->page;
        if (changed(sheet) && (page.titleRows || page.titleColumns)) {
            referenceOfSheet_[sheet] = referenceTo(sheet);
        }
    }
}

bool NameWriter::changed(std::size_t sheet) const
{
    const model::Sheet &titled = *book_.sheets[sheet];
    return !sameTitles(titled.page, titled.passthrough ? titled.passthrough->pageAsRead.value_or(Page{}) : Page{});
}

std::size_t NameWriter::referenceTo(std::size_t sheet)
{
    Bytes wanted;
    wanted.u16(ownBook_).u16(sheet).u16(sheet);
    for (qsizetype at = 0; at + ReferenceLength <= references_.size(); at += ReferenceLength) {
        if (references_.mid(at, ReferenceLength) == wanted.bytes()) {
            return static_cast<std::size_t>(at / ReferenceLength);
        }
    }
    references_ += wanted.bytes();
    return static_cast<std::size_t>(references_.size() / ReferenceLength - 1);
}

void NameWriter::putSupplyBook(Bytes &stream, const QByteArray &body) const
{
    QByteArray updated = body;
    if (isOwnBook(body)) {
        setU16(updated, 0, static_cast<std::uint16_t>(book_.sheets.size()));
    }
    stream.record(SupplyBook, updated);
}

void NameWriter::putReferences(Bytes &stream) const
{
    if (references_.isEmpty()) {
        return;
    }
    if (ownBookIsNew_) {
        stream.head(SupplyBook, 4).u16(book_.sheets.size()).u16(0x0401);
    }
    Bytes body;
    body.u16(static_cast<std::size_t>(references_.size() / ReferenceLength)).raw(references_);
    for (qsizetype at = 0; at < body.size(); at += MaxBody) {
        stream.record(at == 0 ? ExternSheet : Continuation, body.bytes().mid(at, MaxBody));
    }
}

QByteArray NameWriter::titleName(std::size_t sheet) const
{
    const Page &page = book_.sheets[sheet]->page;
    Name name;
    name.options = BuiltInName;
    name.sheet = sheet + 1;
    name.text = QChar(TitlesName);
    Bytes areas;
    if (page.titleColumns) {
        putArea(areas, referenceOfSheet_[sheet], 0, LastRow, static_cast<std::size_t>(page.titleColumns->first),
                static_cast<std::size_t>(page.titleColumns->last));
    }
    if (page.titleRows) {
        putArea(areas, referenceOfSheet_[sheet], static_cast<std::size_t>(page.titleRows->first),
                static_cast<std::size_t>(page.titleRows->last), 0, LastColumn);
    }
    if (page.titleColumns && page.titleRows) {
        areas.u8(UnionOfAreas);
        Bytes joined;
        joined.u8(MemoryFunction).u16(static_cast<std::size_t>(areas.size())).raw(areas.bytes());
        areas = joined;
    }
    name.expression = areas.bytes();
    return nameBody(name);
}

void NameWriter::putName(Bytes &stream, const QByteArray &body) const
{
    Name name = parseName(body);
    const bool ours = name.isTitles() && name.sheet <= book_.sheets.size() && changed(name.sheet - 1);
    if (!ours) {
        stream.record(DefinedName, body);
        return;
    }
    const Page &page = book_.sheets[name.sheet - 1]->page;
    if (page.titleRows || page.titleColumns) {
        stream.record(DefinedName, titleName(name.sheet - 1));
        return;
    }
    // Formulas refer to names by number, so a removed name is replaced by a hidden one.
    name.options = HiddenName;
    name.text = QStringLiteral("former_titles");
    stream.record(DefinedName, nameBody(name));
}

void NameWriter::putNewNames(Bytes &stream) const
{
    for (std::size_t sheet = 0; sheet < book_.sheets.size(); ++sheet) {
        const Page &page = book_.sheets[sheet]->page;
        if (!nameStands_[sheet] && changed(sheet) && (page.titleRows || page.titleColumns)) {
            stream.record(DefinedName, titleName(sheet));
        }
    }
}

} // namespace excel::biff
