// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DatabaseMaker.h"

#include "platform/basic/Clock.h"
#include "platform/basic/FileReplacement.h"
#include "platform/basic/SerialDate.h"
#include "platform/jet/DataPageEditor.h"
#include "platform/jet/DefinitionLayout.h"
#include "platform/jet/DefinitionWriter.h"
#include "platform/jet/DiskFile.h"
#include "platform/jet/Error.h"
#include "platform/jet/Pager.h"
#include "platform/jet/SystemTable.h"
#include "platform/jet/TableMaker.h"
#include "platform/jet/UsageMapEditor.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace jet
{

namespace
{

constexpr qint64 PageBytes = static_cast<qint64>(PageSize);
/// The first page, the maps of free pages, and the definitions of the four system tables.
constexpr qint64 FixedPages = 6;
constexpr std::uint32_t MapsPage = 1;
constexpr std::uint32_t ObjectsPage = 2;
constexpr std::uint32_t QueriesPage = 4;
constexpr std::uint32_t RelationsPage = 5;
constexpr std::uint16_t LongestText = 510;

/// Identifiers of the system, the user Admin and the group Users.
const QByteArray SystemOwner("\xA7\x31", 2);
const QByteArray Admin("\xA6\x33", 2);
const QByteArray Users("\xA7\x33", 2);
const QByteArray System("\xA7\x36", 2);

ColumnDefinition systemColumn(const QString &name, ColumnType type, std::uint8_t extraFlags = 0)
{
    ColumnDefinition column;
    column.name = name;
    column.type = type;
    column.flags = ColumnFlag::Nullable | ColumnFlag::System | extraFlags;
    switch (type) {
    case ColumnType::Text:
    case ColumnType::Binary:
        column.length = LongestText;
        break;
    case ColumnType::Memo:
    case ColumnType::Ole:
        break;
    default:
        column.flags |= ColumnFlag::Fixed;
        column.length = static_cast<std::uint16_t>(type == ColumnType::Boolean || type == ColumnType::Byte ? 1
                                                       : type == ColumnType::Integer                       ? 2
                                                       : type == ColumnType::Date                          ? 8
                                                                                                           : 4);
    }
    return column;
}

/// One of the system tables, on its fixed page.
class SystemDefinition
{
public:
    SystemDefinition(const QString &name, std::uint32_t page)
    {
        table_.name = name;
        table_.page = page;
        table_.isSystem = true;
    }

    SystemDefinition &column(const char *name, ColumnType type, std::uint8_t flags = 0)
    {
        table_.columns.push_back(systemColumn(QLatin1String(name), type, flags));
        return *this;
    }
    /// Of the flags of an index.
    SystemDefinition &index(const char *name, const std::vector<std::size_t> &columns, std::uint8_t flags, bool isPrimary = false)
    {
        IndexDefinition index;
        index.name = QLatin1String(name);
        for (const std::size_t column : columns) {
            index.columns.push_back({column, true});
        }
        index.isPrimary = isPrimary;
        index.isUnique = (flags & IndexFlag::Unique) != 0;
        index.ignoresNulls = (flags & IndexFlag::IgnoresNulls) != 0;
        index.isRequired = (flags & IndexFlag::Required) != 0;
        table_.indexes.push_back(index);
        return *this;
    }
    void make(PageAllocator &allocator)
    {
        layOutColumns(table_);
        makePages(allocator, table_);
    }

private:
    TableDefinition table_;
};

void makeSystemTables(PageAllocator &allocator)
{
    using Type = ColumnType;
    SystemDefinition(QStringLiteral("MSysObjects"), ObjectsPage)
        .column("Id", Type::Long)
        .column("ParentId", Type::Long)
        .column("Name", Type::Text)
        .column("Type", Type::Integer)
        .column("DateCreate", Type::Date)
        .column("DateUpdate", Type::Date)
        .column("Owner", Type::Binary, ColumnFlag::SystemId)
        .column("Flags", Type::Long)
        .column("Database", Type::Memo)
        .column("Connect", Type::Memo)
        .column("ForeignName", Type::Text)
        .column("RmtInfoShort", Type::Binary)
        .column("RmtInfoLong", Type::Ole)
        .column("Lv", Type::Ole)
        .column("LvProp", Type::Ole)
        .column("LvModule", Type::Ole)
        .column("LvExtra", Type::Ole)
        .index("ParentIdName", {1, 2}, IndexFlag::Unique)
        .index("Id", {0}, IndexFlag::Unique, true)
        .make(allocator);
    SystemDefinition(QStringLiteral("MSysACEs"), RightsPage)
        .column("ObjectId", Type::Long)
        .column("SID", Type::Binary, ColumnFlag::SystemId)
        .column("ACM", Type::Long)
        .column("FInheritable", Type::Boolean)
        .index("ObjectId", {0}, IndexFlag::Required)
        .make(allocator);
    SystemDefinition(QStringLiteral("MSysQueries"), QueriesPage)
        .column("ObjectId", Type::Long)
        .column("Attribute", Type::Byte)
        .column("Order", Type::Binary)
        .column("Name1", Type::Text)
        .column("Name2", Type::Text)
        .column("Expression", Type::Memo)
        .column("Flag", Type::Integer)
        .column("LvExtra", Type::Long)
        .index("ObjectIdAttribute", {0, 1, 2}, IndexFlag::Unique, true)
        .make(allocator);
    SystemDefinition(QStringLiteral("MSysRelationships"), RelationsPage)
        .column("szRelationship", Type::Text)
        .column("grbit", Type::Long)
        .column("ccolumn", Type::Long)
        .column("icolumn", Type::Long)
        .column("szObject", Type::Text)
        .column("szColumn", Type::Text)
        .column("szReferencedObject", Type::Text)
        .column("szReferencedColumn", Type::Text)
        .index("szRelationship", {0}, IndexFlag::IgnoresNulls)
        .index("szObject", {4}, IndexFlag::IgnoresNulls)
        .index("szReferencedObject", {6}, IndexFlag::IgnoresNulls)
        .make(allocator);
}

struct SystemObject {
    std::uint32_t id;
    std::uint32_t parent;
    const char *name;
    std::int32_t type;
    const QByteArray &owner;
};

constexpr std::uint32_t RootId = 0x0F000000;
constexpr std::uint32_t DatabasesId = 0x0F000002;
constexpr std::uint32_t RelationshipsId = 0x0F000003;

void fillObjects(PageAllocator &allocator)
{
    constexpr std::int32_t TableType = 1;
    constexpr std::int32_t DatabaseType = 2;
    constexpr std::int32_t ContainerType = 3;
    constexpr auto SystemObjectFlag = static_cast<std::int32_t>(0x80000000);
    const std::vector<SystemObject> objects{
        {CatalogueId::Tables, RootId, "Tables", ContainerType, SystemOwner},
        {DatabasesId, RootId, "Databases", ContainerType, SystemOwner},
        {RelationshipsId, RootId, "Relationships", ContainerType, SystemOwner},
        {CatalogueId::Database, DatabasesId, "MSysDb", DatabaseType, Admin},
        {ObjectsPage, CatalogueId::Tables, "MSysObjects", TableType, SystemOwner},
        {RightsPage, CatalogueId::Tables, "MSysACEs", TableType, SystemOwner},
        {QueriesPage, CatalogueId::Tables, "MSysQueries", TableType, SystemOwner},
        {RelationsPage, CatalogueId::Tables, "MSysRelationships", TableType, SystemOwner},
    };
    const QDateTime now = basic::Clock::now();
    const Date made{basic::SerialDate::fromDateTime(now.date(), now.time()).days()};
    SystemTable table(allocator, QStringLiteral("MSysObjects"), ObjectsPage);
    for (const SystemObject &object : objects) {
        table.insert({{QStringLiteral("Id"), static_cast<std::int32_t>(object.id)},
                      {QStringLiteral("ParentId"), static_cast<std::int32_t>(object.parent)},
                      {QStringLiteral("Name"), QString::fromLatin1(object.name)},
                      {QStringLiteral("Type"), object.type},
                      {QStringLiteral("DateCreate"), made},
                      {QStringLiteral("DateUpdate"), made},
                      {QStringLiteral("Owner"), object.owner},
                      {QStringLiteral("Flags"), SystemObjectFlag}});
    }
    table.flush();
}

struct SystemRight {
    std::uint32_t object;
    const QByteArray &holder;
    std::int32_t rights;
    bool isInherited;
};

/// The user and the group have the same permissions as in files of other programs.
void fillRights(PageAllocator &allocator)
{
    const std::vector<SystemRight> rights{
        {CatalogueId::Tables, System, 0xF00FE, true},   {CatalogueId::Tables, Admin, 0xFFEFF, true},
        {CatalogueId::Tables, Users, 0xFFEFF, true},    {DatabasesId, Admin, 0x60000, false},
        {RelationshipsId, System, 0xF00FE, true},       {RelationshipsId, Admin, 0x60001, false},
        {RelationshipsId, Users, 0xFFFFF, true},        {CatalogueId::Database, Admin, 0x6000E, false},
        {CatalogueId::Database, Users, 0x0000E, false}, {ObjectsPage, Admin, 0x60000, false},
        {ObjectsPage, Users, 0x00014, false},           {RightsPage, Admin, 0x60000, false},
        {QueriesPage, Admin, 0x60000, false},           {QueriesPage, Users, 0x00014, false},
        {RelationsPage, Admin, 0xE0000, false},         {RelationsPage, Users, 0x00014, false},
    };
    SystemTable table(allocator, QStringLiteral("MSysACEs"), RightsPage);
    for (const SystemRight &right : rights) {
        table.insert({{QStringLiteral("ObjectId"), static_cast<std::int32_t>(right.object)},
                      {QStringLiteral("SID"), right.holder},
                      {QStringLiteral("ACM"), right.rights},
                      {QStringLiteral("FInheritable"), right.isInherited}});
    }
    table.flush();
}

/// The map of free pages, without the pages that are there, and an empty one whose use is not known.
void makeFreeMaps(Pager &pager)
{
    DataPageEditor::format(pager, MapsPage, 0);
    DataPageEditor editor(pager, MapsPage, 0);
    std::array<unsigned char, MapRowSize> row;
    row.fill(0xFF);
    std::fill_n(row.begin(), 5, std::uint8_t{0});
    row[5] = static_cast<unsigned char>(0xFF << FixedPages);
    editor.add({row.data(), row.size()}, SlotFlag::Plain);
    row.fill(0);
    editor.add({row.data(), row.size()}, SlotFlag::Plain);
}

void write(QFile &file, const Pager &pager)
{
    for (const PageEdit &edit : pager.edits()) {
        writeAt(file, edit.page * PageBytes, reinterpret_cast<const char *>(edit.after), PageBytes);
    }
    syncFile(file);
}

void fillDatabase(QFile &file, const QString &password)
{
    const QDateTime now = basic::Clock::now();
    const QByteArray header = newHeader(password, basic::SerialDate::fromDateTime(now.date(), now.time()).days());
    const QByteArray empty = header + QByteArray((FixedPages - 1) * PageBytes, '\0');
    writeAt(file, 0, empty.constData(), empty.size());

    Pager pager(file.fileName());
    PageAllocator allocator(pager);
    makeFreeMaps(pager);
    makeSystemTables(allocator);
    fillObjects(allocator);
    fillRights(allocator);
    write(file, pager);
}

} // namespace

void createDatabase(const QString &path, const QString &password)
{
    if (QFile::exists(path)) {
        throw Error(ErrorNumber::FileExists, QStringLiteral("%1 exists already.").arg(path));
    }
    basic::UnfinishedFile unfinished(path + QStringLiteral(".XXXXXX"));
    QFile file(unfinished.path());
    if (unfinished.path().isEmpty() || !file.open(QIODevice::ReadWrite)) {
        throw Error(ErrorNumber::CannotOpenFile, QStringLiteral("%1 cannot be made: %2.").arg(path, unfinished.errorString()));
    }
    fillDatabase(file, password);
    file.close();
    if (!unfinished.rename(path)) {
        throw Error(ErrorNumber::CannotOpenFile, QStringLiteral("%1 cannot be made.").arg(path));
    }
    syncFolderOf(path);
}

} // namespace jet
