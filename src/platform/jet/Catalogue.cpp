// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Catalogue.h"

#include "platform/jet/RowBytes.h"
#include "platform/jet/RowReader.h"
#include "platform/jet/UsageMap.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::int32_t LocalTable = 1;
constexpr std::uint32_t SystemFlags = 0x80000002;
/// The object's number is the page of its definition.
constexpr std::uint32_t PageOfNumber = 0x00FFFFFF;

/// Cells of MSysObjects by the names of its columns.
class ObjectReader
{
public:
    ObjectReader(const Pager &pager, const TableDefinition &objects) : objects_(objects), decoder_(pager, objects) {}

    template <typename Type> Type value(const RowBytes &row, const char *column)
    {
        const ColumnDefinition *found = objects_.findColumn(QLatin1String(column));
        if (!found) {
            throw Fault(QStringLiteral("the list of tables has no column %1").arg(QLatin1String(column)));
        }
        Value cell;
        decoder_.decodeColumn(row, *found, cell);
        const Type *value = std::get_if<Type>(&cell);
        return value ? *value : Type{};
    }

private:
    const TableDefinition &objects_;
    RowDecoder decoder_;
};

CatalogueEntry readEntry(ObjectReader &reader, const RowBytes &row)
{
    CatalogueEntry entry;
    entry.name = reader.value<QString>(row, "Name");
    entry.definitionPage = static_cast<std::uint32_t>(reader.value<std::int32_t>(row, "Id")) & PageOfNumber;
    entry.isSystem = (static_cast<std::uint32_t>(reader.value<std::int32_t>(row, "Flags")) & SystemFlags) != 0;
    try {
        entry.properties = reader.value<QByteArray>(row, "LvProp");
    } catch (const Fault &fault) {
        entry.propertiesFault = fault.sentence();
    }
    return entry;
}

/// From a page of the catalogue as many tables as can be read, so that one bad row does not hide the others.
void readPage(const Pager &pager, std::uint32_t page, ObjectReader &reader, Catalogue &catalogue)
{
    const auto note = [&](const Fault &fault) {
        if (catalogue.fault.isEmpty()) {
            catalogue.fault = fault.sentence();
        }
    };
    std::uint32_t slots = 0;
    try {
        slots = DataPage(pager.page(page, PageType::Data)).slotCount();
    } catch (const Fault &fault) {
        note(fault);
    }
    for (std::uint32_t slot = 0; slot < slots; ++slot) {
        try {
            locating(page, slot, [&] {
                const RowPosition position{page, static_cast<std::uint8_t>(slot)};
                const std::optional<Bytes> bytes = findRow(pager, CataloguePage, position);
                if (!bytes) {
                    return;
                }
                const RowBytes row(*bytes);
                if (reader.value<std::int32_t>(row, "Type") == LocalTable) {
                    catalogue.tables.push_back(readEntry(reader, row));
                    catalogue.tables.back().position = position;
                }
            });
        } catch (const Fault &fault) {
            note(fault);
        }
    }
}

} // namespace

const CatalogueEntry *Catalogue::find(const QString &name) const
{
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const CatalogueEntry &entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == tables.end() ? nullptr : &*found;
}

Catalogue readCatalogue(const Pager &pager, RowPages &rowPages)
{
    const TableDefinition objects = readDefinition(pager, CataloguePage);
    ObjectReader reader(pager, objects);
    Catalogue catalogue;
    std::vector<std::uint32_t> pages;
    try {
        pages = rowPages.of(objects);
    } catch (const Fault &fault) {
        catalogue.fault = fault.sentence();
        pages = pagesInMap(pager, objects.ownedPages);
    }
    for (const std::uint32_t page : pages) {
        readPage(pager, page, reader, catalogue);
    }
    return catalogue;
}

} // namespace jet
