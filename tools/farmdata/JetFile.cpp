// SPDX-License-Identifier: GPL-3.0-or-later
// The only place that sees mdbtools. The library reads the pages, the catalogue and the definitions; rows are taken apart
// here, since the library reads a missing field of an old row from its neighbours, cannot tell null from zero-length text, and
// turns numbers and dates into rounded text.
#include "JetFile.h"

#include "JetRow.h"

#include "platform/basic/RunTimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <bit>
#include <cstring>

#include <mdbtools.h>

namespace
{

constexpr std::size_t PageSize = 4096;
constexpr unsigned char DataPage = 0x01;
constexpr unsigned char DefinitionPage = 0x02;
constexpr std::size_t OwnerOffset = 4;
constexpr std::size_t RowCountOffset = 12;
constexpr std::size_t FirstSlotOffset = 14;
constexpr std::size_t LastAutonumberOffset = 20;
constexpr std::uint16_t SlotMask = 0x1FFF;
/// A deleted row, or the new home of a row that is reached through its pointer.
constexpr std::uint16_t SlotSkipped = 0x8000;
constexpr std::uint16_t SlotPointer = 0x4000;
constexpr unsigned char PrimaryIndex = 1;

struct TableDeleter {
    void operator()(MdbTableDef *table) const { mdb_free_tabledef(table); }
};
using TablePointer = std::unique_ptr<MdbTableDef, TableDeleter>;

template <typename Item> Item *itemAt(const GPtrArray *array, unsigned int index)
{
    return static_cast<Item *>(array->pdata[index]);
}

JetType typeOf(int columnType)
{
    switch (columnType) {
    case MDB_BOOL:
        return JetType::Boolean;
    case MDB_BYTE:
        return JetType::Byte;
    case MDB_INT:
        return JetType::Integer;
    case MDB_LONGINT:
        return JetType::Long;
    case MDB_FLOAT:
        return JetType::Single;
    case MDB_DOUBLE:
        return JetType::Double;
    case MDB_DATETIME:
        return JetType::Date;
    case MDB_TEXT:
        return JetType::Text;
    default:
        return JetType::Other;
    }
}

JetPlace placeOf(const MdbColumn &column)
{
    return {static_cast<std::size_t>(column.col_num), column.is_fixed != 0, static_cast<std::size_t>(column.fixed_offset),
            static_cast<std::size_t>(column.col_size), column.var_col_num};
}

/// Nothing when the row is too short for the field.
std::optional<dao::Value> valueOf(JetType type, JetBytes bytes)
{
    const auto as = [](auto raw, auto convert) -> std::optional<dao::Value> {
        return raw ? std::optional<dao::Value>(convert(*raw)) : std::nullopt;
    };
    switch (type) {
    case JetType::Byte:
        return as(bytes.byteAt(0), [](std::uint8_t raw) { return dao::Value(std::int32_t{raw}); });
    case JetType::Integer:
        return as(bytes.shortAt(0), [](std::uint16_t raw) { return dao::Value(std::int32_t{static_cast<std::int16_t>(raw)}); });
    case JetType::Long:
        return as(bytes.longAt(0), [](std::uint32_t raw) { return dao::Value(static_cast<std::int32_t>(raw)); });
    case JetType::Single:
        return as(bytes.longAt(0), [](std::uint32_t raw) { return dao::Value(static_cast<double>(std::bit_cast<float>(raw))); });
    case JetType::Double:
        return as(bytes.eightAt(0), [](std::uint64_t raw) { return dao::Value(std::bit_cast<double>(raw)); });
    case JetType::Date:
        return as(bytes.eightAt(0), [](std::uint64_t raw) { return dao::Value(basic::SerialDate(std::bit_cast<double>(raw))); });
    case JetType::Text:
        return dao::Value(bytes.text());
    default:
        return dao::Value(dao::Null{});
    }
}

struct Column {
    JetType type;
    JetPlace place;
};

/// Nothing when the row is too short for the field.
std::optional<dao::Value> cellOf(const JetRow &cells, const Column &column)
{
    if (column.type == JetType::Boolean) {
        return dao::Value(cells.bit(column.place));
    }
    if (!cells.bit(column.place)) {
        return dao::Value(dao::Null{});
    }
    const std::optional<JetBytes> field = cells.field(column.place);
    return field ? valueOf(column.type, *field) : std::nullopt;
}

} // namespace

struct JetFile::Library {
    QString path;
    MdbHandle *handle = nullptr;
    std::uint32_t pageCount = 0;
    /// Data pages by the page of their table's definition, ascending. The file's own maps may be stale; the pages are not.
    QHash<std::uint32_t, std::vector<std::uint32_t>> dataPages;

    ~Library()
    {
        if (handle) {
            mdb_close(handle);
        }
    }

    [[noreturn]] void fail(const QString &what) const
    {
        throw basic::RunTimeError(basic::ErrorNumber::DeviceError, QStringLiteral("%1 %2").arg(path, what));
    }
    [[noreturn]] void failDamaged(const QString &what) const
    {
        fail(QStringLiteral("is damaged: %1. Repair it in the suite first, or take a copy from before the damage.").arg(what));
    }

    /// The page in the library's buffer, good until the next page is asked for.
    JetBytes page(std::uint32_t number)
    {
        if (number >= pageCount || mdb_read_pg(handle, number) <= 0) {
            failDamaged(QStringLiteral("page %1 cannot be read").arg(number));
        }
        return JetBytes({handle->pg_buf, PageSize});
    }

    void open();
    void findDataPages();
    MdbCatalogEntry *entry(const QString &name) const;
    TablePointer definition(const QString &name);
    /// The bytes of a row slot of a page, without its flags.
    JetBytes slot(JetBytes page, std::size_t number) const;
    std::uint16_t slotFlags(JetBytes page, std::size_t number) const;
    /// Calls `take` with the bytes of each row of a table that is not deleted; returns how many there are.
    std::uint32_t forEachRow(const MdbTableDef &table, const std::function<void(JetBytes)> &take);
};

void JetFile::Library::open()
{
    const QFileInfo info(path);
    if (!info.isFile()) {
        fail(QStringLiteral("does not exist or is no file."));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("cannot be read: %1.").arg(file.errorString()));
    }
    const QByteArray start = file.read(24);
    if (start.size() < 24 || start.mid(4, 15) != "Standard Jet DB") {
        fail(QStringLiteral("is no Jet database."));
    }
    if (start.at(20) != 1) {
        fail(QStringLiteral("is a Jet database of another version than 4; convert it in the suite first."));
    }
    if (info.size() % static_cast<qint64>(PageSize) != 0 || info.size() < 3 * static_cast<qint64>(PageSize)) {
        failDamaged(QStringLiteral("its length is no whole number of pages"));
    }
    file.close();
    pageCount = static_cast<std::uint32_t>(info.size() / static_cast<qint64>(PageSize));
    // Names come in this character set whatever the locale.
    qputenv("MDBICONV", "UTF-8");
    handle = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
    if (!handle) {
        fail(QStringLiteral("cannot be opened as a Jet database."));
    }
    findDataPages();
    if (page(2).byteAt(0) != DefinitionPage || !mdb_read_catalog(handle, MDB_TABLE)) {
        failDamaged(QStringLiteral("its list of tables cannot be read"));
    }
}

void JetFile::Library::findDataPages()
{
    for (std::uint32_t number = 1; number < pageCount; ++number) {
        const JetBytes bytes = page(number);
        if (bytes.byteAt(0) == DataPage) {
            dataPages[*bytes.longAt(OwnerOffset)].push_back(number);
        }
    }
}

MdbCatalogEntry *JetFile::Library::entry(const QString &name) const
{
    for (unsigned int i = 0; i < handle->num_catalog; ++i) {
        auto *found = itemAt<MdbCatalogEntry>(handle->catalog, i);
        if (found->object_type == MDB_TABLE && QString::fromUtf8(found->object_name).compare(name, Qt::CaseInsensitive) == 0) {
            return found;
        }
    }
    return nullptr;
}

TablePointer JetFile::Library::definition(const QString &name)
{
    MdbCatalogEntry *found = entry(name);
    if (!found) {
        fail(QStringLiteral("has no table %1.").arg(name));
    }
    if (page(static_cast<std::uint32_t>(found->table_pg)).byteAt(0) != DefinitionPage) {
        failDamaged(QStringLiteral("the definition of the table %1 is not where the file says").arg(name));
    }
    TablePointer table(mdb_read_table(found));
    if (!table || !mdb_read_columns(table.get())) {
        failDamaged(QStringLiteral("the definition of the table %1 cannot be read").arg(name));
    }
    return table;
}

std::uint16_t JetFile::Library::slotFlags(JetBytes page, std::size_t number) const
{
    return static_cast<std::uint16_t>(page.shortAt(FirstSlotOffset + 2 * number).value_or(SlotSkipped) & ~SlotMask);
}

JetBytes JetFile::Library::slot(JetBytes page, std::size_t number) const
{
    const std::size_t begin = page.shortAt(FirstSlotOffset + 2 * number).value_or(0) & SlotMask;
    const std::size_t end = number == 0
        ? PageSize
        : static_cast<std::size_t>(page.shortAt(FirstSlotOffset + 2 * (number - 1)).value_or(0) & SlotMask);
    const std::optional<JetBytes> bytes = end < begin ? std::nullopt : page.part(begin, end - begin);
    if (!bytes) {
        failDamaged(QStringLiteral("a row lies outside its page"));
    }
    return *bytes;
}

std::uint32_t JetFile::Library::forEachRow(const MdbTableDef &table, const std::function<void(JetBytes)> &take)
{
    std::uint32_t count = 0;
    for (const std::uint32_t number : dataPages.value(static_cast<std::uint32_t>(table.entry->table_pg))) {
        JetBytes bytes = page(number);
        const std::size_t slotCount = bytes.shortAt(RowCountOffset).value_or(0);
        for (std::size_t i = 0; i < slotCount; ++i) {
            const std::uint16_t flags = slotFlags(bytes, i);
            if ((flags & SlotSkipped) != 0) {
                continue;
            }
            if ((flags & SlotPointer) != 0) {
                // The row has outgrown its page; it keeps its place in the order and lies in a slot elsewhere.
                const std::uint32_t pointer = slot(bytes, i).longAt(0).value_or(0);
                take(slot(page(pointer >> 8), pointer & 0xFF));
                bytes = page(number);
            } else {
                take(slot(bytes, i));
            }
            ++count;
        }
    }
    return count;
}

JetFile::JetFile(const QString &path) : library_(std::make_unique<Library>())
{
    library_->path = path;
    library_->open();
}

JetFile::~JetFile() = default;

const QString &JetFile::path() const
{
    return library_->path;
}

QStringList JetFile::tableNames() const
{
    QStringList names;
    for (unsigned int i = 0; i < library_->handle->num_catalog; ++i) {
        auto *entry = itemAt<MdbCatalogEntry>(library_->handle->catalog, i);
        if (mdb_is_user_table(entry)) {
            names.append(QString::fromUtf8(entry->object_name));
        }
    }
    return names;
}

JetTable JetFile::table(const QString &name) const
{
    const TablePointer definition = library_->definition(name);
    JetTable table;
    table.name = QString::fromUtf8(definition->name);
    table.rowCount = definition->num_rows;
    for (unsigned int i = 0; i < definition->num_cols; ++i) {
        const auto *column = itemAt<MdbColumn>(definition->columns, i);
        const JetType type = typeOf(column->col_type);
        table.fields.push_back({QString::fromUtf8(column->name), type, type == JetType::Text ? column->col_size / 2 : 0,
                                column->is_long_auto != 0, false});
    }
    mdb_read_indices(definition.get());
    for (unsigned int i = 0; definition->indices && i < definition->indices->len; ++i) {
        const auto *index = itemAt<MdbIndex>(definition->indices, i);
        const auto key = static_cast<std::size_t>(index->key_col_num[0] - 1);
        if (index->index_type == PrimaryIndex && index->num_keys == 1 && key < table.fields.size()) {
            table.fields[key].primary = true;
        }
    }
    const JetBytes page = library_->page(static_cast<std::uint32_t>(definition->entry->table_pg));
    table.lastAutonumber = static_cast<std::int32_t>(*page.longAt(LastAutonumberOffset));
    return table;
}

std::uint32_t JetFile::readRows(const QString &name, const std::function<void(const Row &)> &take) const
{
    const TablePointer definition = library_->definition(name);
    std::vector<Column> columns;
    for (unsigned int i = 0; i < definition->num_cols; ++i) {
        const auto *column = itemAt<MdbColumn>(definition->columns, i);
        columns.push_back({typeOf(column->col_type), placeOf(*column)});
    }
    Row row(columns.size());
    return library_->forEachRow(*definition, [&](JetBytes bytes) {
        const std::optional<JetRow> cells = JetRow::open(bytes, definition->num_var_cols > 0);
        if (!cells) {
            library_->failDamaged(QStringLiteral("a row of the table %1 cannot be read").arg(name));
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::optional<dao::Value> value = cellOf(*cells, columns[i]);
            if (!value) {
                library_->failDamaged(QStringLiteral("a row of the table %1 is too short").arg(name));
            }
            row[i] = *value;
        }
        take(row);
    });
}
