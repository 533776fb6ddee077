// SPDX-License-Identifier: GPL-3.0-or-later
#include "DemoCatalogue.h"

#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"

#include <array>

namespace
{

using enum DemoType;

constexpr int FarmMoreson = 1;
constexpr int FarmRietvlei = 2;
constexpr int FarmOudeKraal = 3;

const std::vector<DemoBlock> &blocks()
{
    static const std::vector<DemoBlock> all{
        {1, "Bo-rivier 1", FarmMoreson, 5, true, Orange},
        {2, "Bo-rivier 2", FarmMoreson, 5, true, Orange},
        {3, "Dam", FarmMoreson, 6, true, Orange},
        {4, "D'Almeida", FarmMoreson, 5, true, Lemon},
        {5, "Eike", FarmMoreson, 4, true, Lemon},
        {6, "Fonteinkloof", FarmMoreson, 5, true, Grapefruit},
        {7, "Huis", FarmMoreson, 5, true, Grapefruit},
        {8, "Kliphek", FarmMoreson, 5, true, SoftCitrus},
        {9, "Langland", FarmMoreson, 8, true, SoftCitrus},
        {10, "Môreson Noord", FarmMoreson, 5, true, SoftCitrus},
        {11, "Ou Pad", FarmMoreson, 5, true, Litchi},
        {12, "Pompstasie", FarmMoreson, 5, true, Litchi},
        {13, "Skool", FarmMoreson, 0, true, Orange},
        {14, "Vlei", FarmMoreson, 5, false, Lemon},
        {15, "Ridge 1", FarmRietvlei, 5, true, Macadamia},
        {16, "Ridge 2", FarmRietvlei, 5, true, Macadamia},
        {17, "Ridge 3", FarmRietvlei, 5, true, Macadamia},
        {18, "O'Connor", FarmRietvlei, 6, true, Macadamia},
        {19, "Valley East", FarmRietvlei, 5, true, Avocado},
        {20, "Valley West", FarmRietvlei, 5, true, Avocado},
        {21, "Windpump", FarmRietvlei, 5, true, Avocado},
        {22, "Quarry", FarmRietvlei, 4, true, Avocado},
        {23, "Stone House", FarmRietvlei, 5, true, Litchi},
        {24, "Station", FarmRietvlei, 5, true, Litchi},
        {25, "Terrace", FarmRietvlei, 5, true, Macadamia},
        {26, "Gate", FarmRietvlei, 5, false, Avocado},
        {27, "Kraal 1", FarmOudeKraal, 5, true, Orange},
        {28, "Kraal 2", FarmOudeKraal, 5, true, Orange},
        {29, "Koppie", FarmOudeKraal, 5, true, Lemon},
        {30, "Wingerd", FarmOudeKraal, 5, false, SoftCitrus},
    };
    return all;
}

struct Fruit {
    DemoType type;
    int group;
    const char *name;
};
constexpr std::array<Fruit, 7> Fruits{{{Orange, 1, "Orange"},
                                       {Lemon, 1, "Lemon"},
                                       {Grapefruit, 1, "Grapefruit"},
                                       {SoftCitrus, 1, "Soft citrus"},
                                       {Avocado, 2, "Avocado"},
                                       {Litchi, 2, "Litchi"},
                                       {Macadamia, 3, "Macadamia"}}};

struct Variety {
    int key;
    DemoType type;
    const char *name;
};
constexpr std::array<Variety, 18> Varieties{{{1, Orange, "Valencia"},
                                             {2, Orange, "Washington Navel"},
                                             {3, Orange, "Delta"},
                                             {4, Lemon, "Eureka"},
                                             {5, Lemon, "Lisbon"},
                                             {6, Grapefruit, "Star Ruby"},
                                             {7, Grapefruit, "Marsh"},
                                             {8, SoftCitrus, "Clementine"},
                                             {9, SoftCitrus, "Satsuma"},
                                             {10, SoftCitrus, "Nova"},
                                             {11, Avocado, "Hass"},
                                             {12, Avocado, "Fuerte"},
                                             {13, Avocado, "Ryan"},
                                             {14, Litchi, "Mauritius"},
                                             {15, Litchi, "Red McLean"},
                                             {16, Macadamia, "Beaumont"},
                                             {17, Macadamia, "Nelmak 2"},
                                             {18, Macadamia, "A4"}}};

const std::vector<DemoTarget> &targets()
{
    using Types = std::vector<DemoType>;
    static const Types citrus{Orange, Lemon, Grapefruit, SoftCitrus};
    static const Types subtropical{Avocado, Litchi, Macadamia};
    static const Types all{Orange, Lemon, Grapefruit, SoftCitrus, Avocado, Litchi, Macadamia};
    static const std::vector<DemoTarget> list{
        {1, "Citrus thrips", "P", citrus, 42, 6, 7.0},
        {2, "Red scale", "P", citrus, 6, 9, 5.0},
        {3, "False codling moth", "P", {Orange, Grapefruit, SoftCitrus, Avocado, Litchi, Macadamia}, 10, 8, 3.0},
        {4, "Fruit fly", "P", all, 12, 7, 6.0},
        {5, "Mealybug", "P", citrus, 2, 7, 8.0},
        {6, "Citrus psylla", "P", citrus, 36, 6, 4.0},
        {7, "Aphids", "P", citrus, 35, 5, 11.0},
        {8, "Rust mite", "P", citrus, 4, 6, 14.0},
        {9, "Bud mite", "P", {Lemon}, 30, 8, 5.0},
        {10, "Bollworm", "P", {Orange, SoftCitrus}, 39, 4, 2.0},
        {11, "Leaf miner", "P", citrus, 46, 6, 3.0},
        {12, "Ants", "P", citrus, 50, 12, 20.0},
        {13, "Stink bug, green", "P", {Macadamia, Avocado}, 48, 9, 2.5},
        {14, "Stink bug, two-spotted", "P", {Macadamia}, 3, 9, 3.0},
        {15, "Coconut bug", "P", {Macadamia, Avocado}, 44, 8, 1.5},
        {16, "Nut borer", "P", {Macadamia}, 8, 7, 4.0},
        {17, "Avocado beetle", "P", {Avocado}, 45, 6, 2.0},
        {18, "Heart-shaped scale", "P", {Avocado}, 14, 9, 4.0},
        {19, "Litchi moth", "P", {Litchi}, 49, 5, 5.0},
        {20, "Bark borer", "P", {Litchi}, 1, 14, 1.0},
        {21, "Whitefly", "P", {Avocado, Litchi}, 7, 8, 6.0},
        {22, "Black spot", "D", citrus, 5, 8, 0.5},
        {23, "Alternaria", "D", {SoftCitrus, Grapefruit}, 45, 7, 0.4},
        {24, "Root rot", "D", {Orange, Lemon, Avocado, Macadamia}, 9, 10, 0.3},
        {25, "Anthracnose", "D", {Avocado, Litchi}, 11, 7, 0.4},
        {26, "Cercospora spot", "D", {Avocado}, 6, 7, 0.6},
        {27, "Stem-end rot", "D", {Avocado, Litchi}, 15, 6, 0.3},
        {28, "Greasy spot", "D", citrus, 8, 9, 0.4},
        {29, "Scab", "D", {Lemon, SoftCitrus}, 43, 6, 0.3},
        {30, "Melanose", "D", {Orange, Grapefruit}, 47, 7, 0.3},
        {31, "Husk rot", "D", {Macadamia}, 4, 7, 0.4},
        {32, "Blossom blight", "D", {Macadamia, Litchi}, 34, 5, 0.5},
        {33, "Blackjack", "W", all, 3, 11, 0.6},
        {34, "Nutgrass", "W", all, 50, 12, 0.5},
        {35, "Khaki weed", "W", all, 7, 10, 0.4},
        {36, "Morning glory", "W", all, 9, 9, 0.3},
        {37, "Couch grass", "W", all, 1, 16, 0.5},
        {38, "Fleabane", "W", all, 40, 10, 0.4},
        {39, "Pigweed", "W", subtropical, 52, 9, 0.4},
        {40, "Sunburn", "O", all, 2, 6, 0.3},
        {41, "Wind damage", "O", all, 37, 8, 0.3},
        {42, "Hail damage", "O", all, 47, 3, 0.2},
        {43, "Frost damage", "O", {Avocado, Macadamia, Lemon}, 27, 4, 0.3},
        {44, "Fruit drop", "O", all, 48, 6, 0.4},
        {45, "Monkeys' damage", "O", subtropical, 10, 12, 0.2},
    };
    return list;
}

/// Ten blocks have three plantings, the others two.
std::vector<DemoPlanting> plantings()
{
    constexpr int WithThree = 10;
    std::vector<DemoPlanting> all;
    for (const DemoBlock &block : blocks()) {
        std::vector<int> varieties;
        for (const Variety &variety : Varieties) {
            if (variety.type == block.type) {
                varieties.push_back(variety.key);
            }
        }
        const int count = block.key <= WithThree ? 3 : 2;
        for (int i = 0; i < count; ++i) {
            const int key = static_cast<int>(all.size()) + 1;
            const bool active = block.active && key % 17 != 0;
            all.push_back({key, block.key, block.name + u' ' + QChar(u'a' + i), active,
                           varieties[static_cast<std::size_t>(i) % varieties.size()]});
        }
    }
    return all;
}

/// Adds rows to one table, the values in the order of the named fields.
class TableWriter
{
public:
    TableWriter(dao::Database &database, const char *table, std::initializer_list<const char *> fields)
        : rows_(database.OpenRecordset(QStringLiteral("Select * from %1").arg(QLatin1String(table)), dao::RecordsetType::Dynaset))
    {
        for (const char *field : fields) {
            fields_.push_back(rows_.fieldIndex(QLatin1String(field)));
        }
    }

    void add(std::initializer_list<dao::Value> values)
    {
        rows_.AddNew();
        std::size_t column = 0;
        for (const dao::Value &value : values) {
            rows_.set(fields_[column++], value);
        }
        rows_.Update();
    }

private:
    dao::Recordset rows_;
    std::vector<int> fields_;
};

void writeCrops(dao::Database &main)
{
    TableWriter groups(main, "tblCrGroup", {"CrGrID", "Group"});
    groups.add({1, "Citrus"});
    groups.add({2, "Subtropical fruit"});
    groups.add({3, "Nuts"});
    TableWriter types(main, "tblCrType", {"CrTyID", "CrGrID", "Type"});
    for (const Fruit &fruit : Fruits) {
        types.add({static_cast<int>(fruit.type), fruit.group, QString::fromUtf8(fruit.name)});
    }
    TableWriter varieties(main, "tblCrVariety", {"CrVaID", "CrTyID", "Variety"});
    for (const Variety &variety : Varieties) {
        varieties.add({variety.key, static_cast<int>(variety.type), QString::fromUtf8(variety.name)});
    }
}

void writeSpray(const DemoCatalogue &catalogue, dao::Database &spray)
{
    TableWriter targetRows(spray, "tblCTarget", {"CTargetID", "ChemTarget", "CTType"});
    TableWriter typeRows(spray, "tblTargetFType", {"CrTyID", "CTargetID"});
    for (const DemoTarget &target : catalogue.targets) {
        targetRows.add({target.key, target.name, target.kind});
        for (const DemoType type : target.types) {
            typeRows.add({static_cast<int>(type), target.key});
        }
    }
}

} // namespace

DemoCatalogue demoCatalogue()
{
    return {blocks(),
            plantings(),
            targets(),
            {"Anél", "Busi", "D'Arcy", "Johan", "José", "Lerato", "Nomsa", "Pieter", "Sipho", "Thandi", "Willem", "Zanele"}};
}

void writeDemoCatalogue(const DemoCatalogue &catalogue, SessionContext &session)
{
    dao::Database &main = *session.dbMain;
    dao::CommitScope mainScope(main);
    TableWriter farms(main, "tblFarms", {"FarmID", "Farm", "isactive"});
    farms.add({FarmMoreson, "Môreson", true});
    farms.add({FarmRietvlei, "Rietvlei Estate", true});
    farms.add({FarmOudeKraal, "Oude Kraal", false});
    writeCrops(main);
    TableWriter blockRows(main, "tblBlock", {"BlockID", "Block", "FarmID", "NoofMpoints", "active"});
    for (const DemoBlock &block : catalogue.blocks) {
        blockRows.add({block.key, block.name, block.farm, block.points, block.active});
    }
    TableWriter plantingRows(main, "tblBlockPlant", {"BlockPID", "BlockID", "PBlock", "PBActive", "CrVaID"});
    for (const DemoPlanting &planting : catalogue.plantings) {
        plantingRows.add({planting.key, planting.block, planting.name, planting.active, planting.variety});
    }
    TableWriter workers(main, "tblWorker", {"WorkerID", "WNickName"});
    int worker = 0;
    for (const QString &name : catalogue.workers) {
        workers.add({++worker, name});
    }
    TableWriter years(main, "tblYear", {"FYear"});
    const int year = basic::Clock::today().year();
    for (int i = year - 2; i <= year; ++i) {
        years.add({QString::number(i)});
    }
    TableWriter ingredients(main, "tblActiveIngredient", {"ActInID", "ActiveIngredient"});
    ingredients.add({1, "Copper hydroxide"});
    ingredients.add({2, "Mineral oil"});
    mainScope.commit();

    dao::CommitScope sprayScope(*session.dbSpray);
    writeSpray(catalogue, *session.dbSpray);
    sprayScope.commit();
}
