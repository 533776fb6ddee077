// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListTables.h"

#include <algorithm>

namespace lists
{

namespace
{

using store::DatabaseFile;

/// The copy of the plantings holds no longer names.
constexpr int NameSizeOfCopy = 50;

Column text(const char *heading, const char *field, QStringList synonyms, int size = 0)
{
    Column column;
    column.heading = QLatin1String(heading);
    column.field = QLatin1String(field);
    column.required = true;
    column.size = size;
    column.synonyms = std::move(synonyms);
    return column;
}

Column plain(const char *heading, ColumnKind kind, const char *field, QStringList synonyms = {}, bool required = false)
{
    Column column;
    column.heading = QLatin1String(heading);
    column.kind = kind;
    column.field = QLatin1String(field);
    column.required = required;
    column.synonyms = std::move(synonyms);
    return column;
}

Column active(const char *field)
{
    return plain("Active", ColumnKind::YesNo, field, {QStringLiteral("In use"), QStringLiteral("Is active")});
}

Column reference(const char *heading, const char *field, List target, QStringList synonyms = {})
{
    Column column = plain(heading, ColumnKind::Reference, field, std::move(synonyms), true);
    column.target = target;
    return column;
}

Column parent(const char *heading, List target, int from, QStringList synonyms = {})
{
    Column column = plain(heading, ColumnKind::Parent, "", std::move(synonyms));
    column.target = target;
    column.from = from;
    return column;
}

Table table(List list, const char *name, const char *key, const char *sheet, const char *singular, std::vector<Column> columns)
{
    Table made;
    made.list = list;
    made.table = QLatin1String(name);
    made.key = QLatin1String(key);
    made.sheet = QLatin1String(sheet);
    made.singular = QLatin1String(singular);
    made.keyHeading = made.singular.left(1).toUpper() + made.singular.mid(1) + QStringLiteral(" key");
    made.columns = std::move(columns);
    for (int i = 0; i < made.columnCount(); ++i) {
        if (made.column(i).kind == ColumnKind::Text) {
            made.nameColumn = i;
        } else if (made.column(i).kind == ColumnKind::YesNo) {
            made.activeColumn = i;
        } else if (made.column(i).kind == ColumnKind::Reference && made.ownerColumn < 0) {
            made.ownerColumn = i;
        }
    }
    const int farm = made.columnFor(List::Farms);
    made.scopeColumn = farm < 0 ? made.ownerColumn : farm;
    return made;
}

const QStringList GroupHeadings{QStringLiteral("Group")};
const QStringList TypeHeadings{QStringLiteral("Type"), QStringLiteral("Crop"), QStringLiteral("Fruit type")};
const QStringList VarietyHeadings{QStringLiteral("Cultivar"), QStringLiteral("Crop variety")};
const QStringList FarmHeadings{QStringLiteral("Farm name")};
const QStringList BlockHeadings{QStringLiteral("Block name"), QStringLiteral("Main block")};

std::vector<Table> allTables()
{
    Table pests =
        table(List::Pests, "tblCTarget", "CTargetID", "Pests", "pest",
              {text("Pest", "ChemTarget", {QStringLiteral("Target"), QStringLiteral("Pest name")}),
               plain("Kind", ColumnKind::PestKind, "CTType", {QStringLiteral("Type of pest")}, true),
               plain("Crop types", ColumnKind::References, "", {QStringLiteral("Crops"), QStringLiteral("Fruit types")})});
    pests.file = DatabaseFile::Spray;
    pests.columns.back().target = List::CropTypes;
    return {
        table(List::Farms, "tblFarms", "FarmID", "Farms", "farm", {text("Farm", "Farm", FarmHeadings), active("isactive")}),
        table(List::Blocks, "tblBlock", "BlockID", "Blocks", "block",
              {reference("Farm", "FarmID", List::Farms, FarmHeadings), text("Block", "Block", BlockHeadings, NameSizeOfCopy),
               plain("Points", ColumnKind::Points, "NoofMpoints",
                     {QStringLiteral("Monitoring points"), QStringLiteral("No of points"), QStringLiteral("Number of points")}),
               active("active")}),
        table(List::CropGroups, "tblCrGroup", "CrGrID", "Crop groups", "crop group",
              {text("Crop group", "Group", GroupHeadings)}),
        table(List::CropTypes, "tblCrType", "CrTyID", "Crop types", "crop type",
              {reference("Crop group", "CrGrID", List::CropGroups, GroupHeadings), text("Crop type", "Type", TypeHeadings)}),
        table(List::Varieties, "tblCrVariety", "CrVaID", "Varieties", "variety",
              {parent("Crop group", List::CropGroups, 1, GroupHeadings),
               reference("Crop type", "CrTyID", List::CropTypes, TypeHeadings), text("Variety", "Variety", VarietyHeadings)}),
        table(List::Plantings, "tblBlockPlant", "BlockPID", "Planted blocks", "planted block",
              {parent("Farm", List::Farms, 1, FarmHeadings), reference("Block", "BlockID", List::Blocks, BlockHeadings),
               text("Planted block", "PBlock", {QStringLiteral("Planting"), QStringLiteral("Spray block")}, NameSizeOfCopy),
               parent("Crop group", List::CropGroups, 4, GroupHeadings), parent("Crop type", List::CropTypes, 5, TypeHeadings),
               reference("Variety", "CrVaID", List::Varieties, VarietyHeadings), active("PBActive")}),
        table(List::Workers, "tblWorker", "WorkerID", "Workers", "worker",
              {text("Nickname", "WNickName", {QStringLiteral("Worker")}), active("WInactive")}),
        std::move(pests),
        table(List::Seasons, "tblYear", "", "Seasons", "season",
              {text("Season", "FYear", {QStringLiteral("Year"), QStringLiteral("Financial year")})}),
    };
}

} // namespace

int Table::columnFor(List target) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [target](const Column &column) {
        return column.target == target && column.kind != ColumnKind::References;
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

const Table &tableOf(List list)
{
    static const std::vector<Table> tables = allTables();
    return tables[indexOf(list)];
}

} // namespace lists
