// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/StarterLists.h"

#include "common/PestTypes.h"
#include "store/lists/ListSheets.h"

namespace lists
{

namespace
{

struct CropNames {
    const char *group;
    const char *type;
    const char *varieties;
};

constexpr CropNames Crops[] = {
    {"Citrus", "Orange", "Valencia, Delta, Midknight, Washington Navel, Palmer Navel, Cara Cara, Hamlin, Salustiana"},
    {"Citrus", "Lemon", "Eureka, Lisbon, Genoa, Verna, Fino"},
    {"Citrus", "Lime", "Bearss, Mexican"},
    {"Citrus", "Grapefruit", "Marsh, Star Ruby, Rio Red, Ruby Red, Flame"},
    {"Citrus", "Soft citrus", "Clementine, Satsuma, Nova, Nadorcott, Murcott, Minneola, Ortanique"},
    {"Subtropical fruit", "Avocado", "Hass, Fuerte, Pinkerton, Ryan, Reed, Lamb Hass, Edranol"},
    {"Subtropical fruit", "Mango", "Tommy Atkins, Kent, Keitt, Sensation, Heidi, Haden"},
    {"Subtropical fruit", "Litchi", "Mauritius, Red McLean, Brewster"},
    {"Subtropical fruit", "Banana", "Grand Nain, Williams, Dwarf Cavendish"},
    {"Subtropical fruit", "Guava", "Fan Retief, Psidium"},
    {"Subtropical fruit", "Papaya", "Solo, Sunrise, Red Lady"},
    {"Nuts", "Macadamia", "Beaumont, A4, A16, Nelmak 2, 816, 814"},
    {"Nuts", "Pecan", "Wichita, Choctaw, Western Schley, Navaho"},
    {"Nuts", "Almond", "Nonpareil, Carmel, Guara"},
    {"Nuts", "Walnut", "Chandler, Howard, Serr"},
    {"Nuts", "Pistachio", "Kerman, Sirora"},
    {"Pome fruit", "Apple", "Golden Delicious, Gala, Fuji, Granny Smith, Pink Lady, Braeburn, Top Red"},
    {"Pome fruit", "Pear", "Packham's Triumph, Forelle, Williams Bon Chretien, Conference, Abate Fetel"},
    {"Pome fruit", "Quince", "Smyrna, Champion"},
    {"Stone fruit", "Peach", "Kakamas, Keisie, Elberta, Summerset"},
    {"Stone fruit", "Nectarine", "Alpine, Flavortop, Fantasia"},
    {"Stone fruit", "Plum", "Laetitia, Songold, Angeleno, Santa Rosa, African Delight"},
    {"Stone fruit", "Apricot", "Bulida, Imperial, Soldonne"},
    {"Stone fruit", "Cherry", "Bing, Lapins, Royal Tioga, Sweetheart"},
    {"Grapes", "Table grape", "Crimson Seedless, Thompson Seedless, Red Globe, Flame Seedless, Prime, Autumn Royal"},
    {"Grapes", "Wine grape", "Cabernet Sauvignon, Shiraz, Merlot, Pinotage, Chenin Blanc, Sauvignon Blanc, Chardonnay"},
    {"Grapes", "Raisin grape", "Sultana, Merbein Seedless, Selma Pete"},
    {"Berries", "Blueberry", "Duke, Legacy, Ventura, Snowchaser, Emerald"},
    {"Berries", "Strawberry", "Albion, Camarosa, Festival, San Andreas"},
    {"Berries", "Raspberry", "Heritage, Maravilla, Autumn Bliss"},
    {"Vegetables", "Tomato", "Roma, Heinz 1370, Cherry"},
    {"Vegetables", "Potato", "Mondial, Sifra, Up-to-Date"},
    {"Vegetables", "Onion", "Texas Grano, Australian Brown"},
    {"Vegetables", "Cabbage", "Conquistador, Green Star"},
    {"Field crops", "Maize", "White, Yellow"},
    {"Field crops", "Wheat", "Winter, Spring"},
    {"Field crops", "Soybean", "Early, Late"},
    {"Field crops", "Sunflower", "Oil, Confectionery"},
    {"Field crops", "Sugar cane", "N12, N31, N41"},
    {"Field crops", "Cotton", "Upland"},
};

struct PestNames {
    const char *name;
    const char *kind;
    const char *types;
};

#define CITRUS "Orange, Lemon, Lime, Grapefruit, Soft citrus"
#define POME "Apple, Pear, Quince"
#define STONE "Peach, Nectarine, Plum, Apricot, Cherry"
#define GRAPE "Table grape, Wine grape, Raisin grape"

constexpr PestNames Pests[] = {
    {"Red scale", "P", CITRUS},
    {"Citrus thrips", "P", CITRUS},
    {"Citrus psylla", "P", CITRUS},
    {"Citrus bud mite", "P", "Lemon"},
    {"Citrus rust mite", "P", CITRUS},
    {"Citrus leaf miner", "P", CITRUS},
    {"Soft brown scale", "P", CITRUS ", Mango, Guava"},
    {"False codling moth", "P", CITRUS ", Avocado, Litchi, Macadamia, Pecan, Peach, Nectarine, Plum, Table grape"},
    {"Mediterranean fruit fly", "P", CITRUS ", Mango, Guava, Papaya, Apple, Pear, " STONE ", Table grape"},
    {"Mealybug", "P", CITRUS ", Mango, Guava, Banana, Apple, Pear, Plum, " GRAPE},
    {"Aphids", "P", CITRUS ", Apple, Peach, Nectarine, Plum, Cherry, Potato, Cabbage, Wheat, Cotton"},
    {"Bollworm", "P", CITRUS ", Tomato, Maize, Sunflower, Cotton, Soybean, Table grape"},
    {"Ants", "P", ""},
    {"Snails", "P", CITRUS ", " GRAPE ", Strawberry, Cabbage"},
    {"Avocado thrips", "P", "Avocado"},
    {"Avocado beetle", "P", "Avocado"},
    {"Heart-shaped scale", "P", "Avocado, Mango, Guava"},
    {"Coconut bug", "P", "Macadamia, Avocado, Guava"},
    {"Two-spotted stink bug", "P", "Macadamia"},
    {"Green stink bug", "P", "Macadamia, Avocado, Pecan, Tomato, Soybean"},
    {"Nut borer", "P", "Macadamia, Litchi"},
    {"Felted coccid", "P", "Macadamia"},
    {"Mango scale", "P", "Mango"},
    {"Mango weevil", "P", "Mango"},
    {"Litchi moth", "P", "Litchi"},
    {"Bark borer", "P", "Litchi, Pecan, Guava"},
    {"Banana weevil", "P", "Banana"},
    {"Pecan aphid", "P", "Pecan"},
    {"Navel orangeworm", "P", "Almond, Walnut, Pistachio"},
    {"Codling moth", "P", POME ", Walnut"},
    {"Woolly apple aphid", "P", "Apple"},
    {"Pear slug", "P", "Pear, Cherry"},
    {"Banded fruit weevil", "P", "Apple, Pear, Plum, Table grape"},
    {"Red spider mite", "P", "Apple, Pear, Peach, Nectarine, Plum, Strawberry, Tomato, Papaya, Cotton"},
    {"Two-spotted spider mite", "P", POME ", " STONE ", " GRAPE ", Strawberry, Raspberry, Tomato"},
    {"Oriental fruit moth", "P", "Peach, Nectarine, Apricot, Quince"},
    {"Spotted wing drosophila", "P", "Cherry, Blueberry, Raspberry, Strawberry"},
    {"Western flower thrips", "P", "Nectarine, Plum, Table grape, Strawberry, Blueberry, Tomato"},
    {"Vine weevil", "P", GRAPE ", Strawberry"},
    {"Whitefly", "P", CITRUS ", Avocado, Litchi, Tomato, Cotton"},
    {"Leaf miner", "P", "Tomato, Potato"},
    {"Potato tuber moth", "P", "Potato, Tomato"},
    {"Diamondback moth", "P", "Cabbage"},
    {"Onion thrips", "P", "Onion"},
    {"Cutworm", "P", "Maize, Tomato, Potato, Cabbage, Sunflower"},
    {"Fall armyworm", "P", "Maize, Sugar cane"},
    {"Stalk borer", "P", "Maize, Sugar cane"},
    {"Russian wheat aphid", "P", "Wheat"},
    {"Nematodes", "P", ""},
    {"Citrus black spot", "D", CITRUS},
    {"Greasy spot", "D", CITRUS},
    {"Melanose", "D", CITRUS},
    {"Scab", "D", "Lemon, Soft citrus, Apple, Pear"},
    {"Alternaria", "D", "Soft citrus, Grapefruit, Potato, Tomato"},
    {"Phytophthora root rot", "D", CITRUS ", Avocado, Macadamia, Papaya"},
    {"Anthracnose", "D", "Avocado, Mango, Litchi, Papaya, Strawberry"},
    {"Cercospora spot", "D", "Avocado, Banana"},
    {"Stem-end rot", "D", "Avocado, Mango, Litchi"},
    {"Husk rot", "D", "Macadamia"},
    {"Blossom blight", "D", "Macadamia, Litchi, Cherry, Almond"},
    {"Bacterial black spot", "D", "Mango"},
    {"Pecan scab", "D", "Pecan"},
    {"Powdery mildew", "D", "Mango, Apple, Peach, Cherry, Strawberry, Wheat, " GRAPE},
    {"Downy mildew", "D", GRAPE ", Onion, Sunflower"},
    {"Botrytis", "D", GRAPE ", Strawberry, Raspberry, Blueberry, Tomato"},
    {"Black rot", "D", GRAPE ", Cabbage"},
    {"Fire blight", "D", POME},
    {"Brown rot", "D", STONE},
    {"Leaf curl", "D", "Peach, Nectarine, Almond"},
    {"Shot hole", "D", "Peach, Nectarine, Plum, Apricot, Almond"},
    {"Bacterial spot", "D", "Peach, Nectarine, Plum, Apricot, Tomato"},
    {"Early blight", "D", "Potato, Tomato"},
    {"Late blight", "D", "Potato, Tomato"},
    {"Leaf rust", "D", "Wheat, Blueberry, Plum"},
    {"Northern leaf blight", "D", "Maize"},
    {"Smut", "D", "Maize, Wheat, Sugar cane"},
    {"Blackjack", "W", ""},
    {"Nutgrass", "W", ""},
    {"Couch grass", "W", ""},
    {"Fleabane", "W", ""},
    {"Pigweed", "W", ""},
    {"Morning glory", "W", ""},
    {"Fat hen", "W", ""},
    {"Ryegrass", "W", ""},
    {"Thistle", "W", ""},
    {"Purslane", "W", ""},
    {"Sunburn", "O", ""},
    {"Wind damage", "O", ""},
    {"Hail damage", "O", ""},
    {"Frost damage", "O", ""},
    {"Fruit drop", "O", ""},
    {"Bird damage", "O", ""},
    {"Rodent damage", "O", ""},
};

QStringList names(const char *joined)
{
    return QString::fromLatin1(joined).split(QStringLiteral(", "), Qt::SkipEmptyParts);
}

sheets::Cell textCell(const QString &text)
{
    return {text.isEmpty() ? sheets::CellKind::Blank : sheets::CellKind::Text, false, text};
}

} // namespace

const std::vector<StarterCrop> &starterCrops()
{
    static const std::vector<StarterCrop> crops = [] {
        std::vector<StarterCrop> made;
        for (const CropNames &crop : Crops) {
            for (const QString &variety : names(crop.varieties)) {
                made.push_back({QLatin1String(crop.group), QLatin1String(crop.type), variety});
            }
        }
        return made;
    }();
    return crops;
}

const std::vector<StarterPest> &starterPests()
{
    static const std::vector<StarterPest> pests = [] {
        std::vector<StarterPest> made;
        for (const PestNames &pest : Pests) {
            made.push_back({QLatin1String(pest.name), QLatin1String(pest.kind), names(pest.types)});
        }
        return made;
    }();
    return pests;
}

std::vector<GivenList> givenStarterCrops(const std::vector<StarterCrop> &ticked)
{
    std::vector<std::vector<sheets::Cell>> rows;
    for (const StarterCrop &crop : ticked) {
        rows.push_back({textCell(crop.group), textCell(crop.type), textCell(crop.variety)});
    }
    return givenCrops(rows, 0);
}

GivenList givenStarterPests(const std::vector<StarterPest> &ticked, const FarmLists &lists)
{
    const Table &table = tableOf(List::Pests);
    GivenList given{List::Pests, table.sheet, {}};
    for (const StarterPest &pest : ticked) {
        QStringList types;
        for (const Record &type : lists.records(List::CropTypes)) {
            if (pest.cropTypes.isEmpty() || pest.cropTypes.contains(lists.name(List::CropTypes, type), Qt::CaseInsensitive)) {
                types.append(lists.reference(List::CropTypes, type.key));
            }
        }
        GivenRow row;
        row.number = static_cast<int>(given.rows.size()) + 1;
        row.cells = {textCell(pest.name), textCell(pestTypeCaption(pest.kind)), textCell(types.join(QStringLiteral("; ")))};
        given.rows.push_back(std::move(row));
    }
    return given;
}

} // namespace lists
