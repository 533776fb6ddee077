// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisKinds.h"

#include <algorithm>

namespace
{

using controls::CellAlignment;
using Store = clsPestMONNew;
using Key = AnalysisKind::Key;
using Status = AnalysisKind::Status;

/// The order of the values differs from writer to writer.
Store::PlantValues plantValues(const AnalysisRecord &r)
{
    return {r.N, r.P, r.K, r.Ca, r.Mg, r.Na, r.Mn, r.Fe, r.Cu, r.Zn, r.B};
}

Status writeBasic(Store &store, Key &key, Key planting, const AnalysisRecord &r)
{
    return store.Save_Soil_Analysis_Basic(key, planting, r.Date, {r.Depth, r.Ca, r.N, r.P, r.K, r.Mg, r.Na}, r.Season);
}

Status writeExtraction(Store &store, Key &key, Key planting, const AnalysisRecord &r)
{
    return store.Save_Soil_Analysis_Extraction(key, planting, r.Date,
                                               {r.Depth, r.N, r.K, r.Ca, r.Mg, r.Na, r.Mn, r.Fe, r.Cu, r.Zn, r.P});
}

Status writeMicro(Store &store, Key &key, Key planting, const AnalysisRecord &r)
{
    return store.Save_Soil_Analysis_Micro(key, planting, r.Date, {r.N, r.P, r.K, r.Ca, r.Mg, r.Na});
}

constexpr std::array<AnalysisValueColumn, 11> LeafValues{{{u"N", u"N", u"LA_N"},
                                                          {u"P", u"P", u"LA_P"},
                                                          {u"K", u"K", u"LA_K"},
                                                          {u"Ca", u"Ca", u"LA_Ca"},
                                                          {u"Mg", u"Mg", u"LA_Mg"},
                                                          {u"Na", u"Na", u"LA_Na"},
                                                          {u"Mn", u"Mn", u"LA_Mn"},
                                                          {u"Fe", u"Fe", u"LA_Fe"},
                                                          {u"Cu", u"Cu", u"LA_Cu"},
                                                          {u"Zn", u"Zn", u"LA_Zn"},
                                                          {u"B", u"B", u"LA_B"}}};
constexpr std::array<AnalysisValueColumn, 11> FruitValues{{{u"N", u"N", u"FA_N"},
                                                           {u"P", u"P", u"FA_P"},
                                                           {u"K", u"K", u"FA_K"},
                                                           {u"Ca", u"Ca", u"FA_Ca"},
                                                           {u"Mg", u"Mg", u"FA_Mg"},
                                                           {u"Na", u"Na", u"FA_Na"},
                                                           {u"Mn", u"Mn", u"FA_Mn"},
                                                           {u"Fe", u"Fe", u"FA_Fe"},
                                                           {u"Cu", u"Cu", u"FA_Cu"},
                                                           {u"Zn", u"Zn", u"FA_Zn"},
                                                           {u"B", u"B", u"FA_B"}}};
/// Klip(%) is stored in SBpHWater; existing data depends on that.
constexpr std::array<AnalysisValueColumn, 6> BasicValues{{{u"pH(KCL)", u"pH(KCL)", u"SBpHSuur"},
                                                          {u"Conduct", u"Conductivity", u"SBConduct"},
                                                          {u"KUV", u"KUV", u"SBKUV"},
                                                          {u"Klip(%)", u"Klip (%)", u"SBpHWater"},
                                                          {u"Clay content(%)", u"Clay content(%)", u"SBClay"},
                                                          {u"Organic content(%)", u"Organic content(%)", u"SBOrganic"}}};
constexpr std::array<AnalysisValueColumn, 10> ExtractionValues{{{u"P (B1)", u"P(B1)", u"SEPBray"},
                                                                {u"P (B2)", u"P(B2)", u"SEPB2"},
                                                                {u"P (Ohlson)", u"P(Ohlson)", u"SEPAcid"},
                                                                {u"K", u"K", u"SE_K"},
                                                                {u"Ca", u"Ca", u"SE_Ca"},
                                                                {u"Na", u"Na", u"SE_Na"},
                                                                {u"Mg", u"Mg", u"SE_Mg"},
                                                                {u"Cl", u"Cl", u"SE_Cl"},
                                                                {u"S", u"S", u"SE_S"},
                                                                {u"Al", u"Al", u"SE_Al"}}};
constexpr std::array<AnalysisValueColumn, 6> MicroValues{{{u"Zn", u"Zn", u"MicroZn"},
                                                          {u"Cu", u"Cu", u"MicroCu"},
                                                          {u"B", u"B", u"MicroB"},
                                                          {u"Mn", u"Mn", u"MicroMn"},
                                                          {u"Fe", u"Fe", u"MicroFe"},
                                                          {u"Mo", u"Mo", u"MicroMo"}}};

constexpr std::array<QStringView, 1> LeafParts{u"Stem"};
constexpr std::array<QStringView, 3> FruitParts{u"Kernel", u"Meat", u"Skin"};
constexpr std::array<QStringView, 3> Seasons{u"Post Harvest", u"Blossom", u"Nov-Dec"};
constexpr std::array<QStringView, 2> Textures{u"Coarse", u"Fine"};

constexpr int UsualBoxStep = 960;
constexpr int WideBoxStep = 1300;

const std::array<AnalysisKind, 5> Kinds{{
    {.mode = u"Leaf",
     .formCaption = u"Leaf analisys",
     .frameCaption = u"Leaf Analisys",
     .name = u"Leaf analysis",
     .icon = u"leaf",
     .keyField = u"LeaveAnalysisID",
     .dateField = u"LADate",
     .partOrDepth = {u"Part", u"LAPart", 700, CellAlignment::Default},
     .season = {u"Season", u"LASeason", 1000, CellAlignment::Left},
     .values = LeafValues,
     .valueWidth = 460,
     .secondCaption = u"Leaf Pa&rt",
     .secondEntry = AnalysisSecondEntry::Part,
     .parts = LeafParts,
     .fourthCaption = u"Seas&on",
     .seasons = Seasons,
     .boxStep = UsualBoxStep,
     .sheetTitle = u"Leaf Analysis",
     .sheetHeading = u"Leaf part",
     .list = &Store::Get_MonLeave_for_Period,
     .add =
         [](Store &store, Key &key, Key planting, const AnalysisRecord &r) {
             return store.Add_Leave_Analysis(key, planting, r.Date, r.Part, r.Season, plantValues(r));
         },
     .save =
         [](Store &store, Key &key, Key planting, const AnalysisRecord &r) {
             return store.Save_Leave_Analysis(key, planting, r.Date, r.Part, r.Season, plantValues(r));
         },
     .remove = &Store::Delete_Leave_Analysis},
    {.mode = u"Fruit",
     .formCaption = u"Fruit analisys",
     .frameCaption = u"Fruit Analisys",
     .name = u"Fruit analysis",
     .icon = u"fruit",
     .keyField = u"FruitAnalysisID",
     .dateField = u"FADate",
     .partOrDepth = {u"Part", u"FAPart", 700, CellAlignment::Left},
     .season = {u"Season", u"FASeason", 1000, CellAlignment::Left},
     .values = FruitValues,
     .valueWidth = 460,
     .secondCaption = u"Fruit Pa&rt",
     .secondEntry = AnalysisSecondEntry::Part,
     .parts = FruitParts,
     .fourthCaption = u"Seas&on",
     .seasons = Seasons,
     .boxStep = UsualBoxStep,
     .sheetTitle = u"Fruit Analysis",
     .sheetHeading = u"Fruit part",
     .list = &Store::Get_MonFruit_for_Period,
     .add =
         [](Store &store, Key &key, Key planting, const AnalysisRecord &r) {
             return store.Add_Fruit_Analysis(key, planting, r.Date, r.Part, r.Season, plantValues(r));
         },
     .save =
         [](Store &store, Key &key, Key planting, const AnalysisRecord &r) {
             return store.Save_Fruit_Analysis(key, planting, r.Date, r.Part, r.Season, plantValues(r));
         },
     .remove = &Store::Delete_Fruit_Analysis},
    {.mode = u"Basic",
     .formCaption = u"Soil analisys:Basic",
     .frameCaption = u"Soil Analisys",
     .name = u"Basic soil analysis",
     .icon = u"soil-basic",
     .keyField = u"SoilBasicID",
     .dateField = u"SBDate",
     .partOrDepth = {u"Depth(cm)", u"SBDepth", 1000, CellAlignment::Left},
     .season = {u"Texture", u"SBTexture", 1000, CellAlignment::Left},
     .values = BasicValues,
     .valueWidth = 800,
     .secondCaption = u"Depth (c&m)",
     .secondEntry = AnalysisSecondEntry::Depth,
     .parts = {},
     .fourthCaption = u"Textu&re",
     .seasons = Textures,
     .boxStep = WideBoxStep,
     .sheetTitle = u"Soil Analysis:Basic",
     .sheetHeading = u"Depth(cm)",
     .list = &Store::Get_MonSoilBasic_for_Period,
     .add = writeBasic,
     .save = writeBasic,
     .remove = &Store::Delete_Soil_Analysis_Basic},
    {.mode = u"Ex",
     .formCaption = u"Soil analisys:Extraction",
     .frameCaption = u"Soil Analisys",
     .name = u"Extraction soil analysis",
     .icon = u"soil-extraction",
     .keyField = u"SEExtractionID",
     .dateField = u"SEDate",
     .partOrDepth = {u"Depth (cm)", u"SEDepth", 900, CellAlignment::Left},
     .season = {u"", u"", 0, CellAlignment::Left},
     .values = ExtractionValues,
     .valueWidth = 600,
     .secondCaption = u"Depth (c&m)",
     .secondEntry = AnalysisSecondEntry::Depth,
     .parts = {},
     .fourthCaption = u"",
     .seasons = {},
     .boxStep = UsualBoxStep,
     .sheetTitle = u"Soil Analysis:Extraction",
     .sheetHeading = u"Depth(cm)",
     .list = &Store::Get_MonSoilExtract_for_Period,
     .add = writeExtraction,
     .save = writeExtraction,
     .remove = &Store::Delete_Soil_Analysis_Extract},
    // Delete does nothing for trace elements; their rows remain.
    {.mode = u"Micro",
     .formCaption = u"Soil analisys:Micro elements",
     .frameCaption = u"Soil Analisys",
     .name = u"Micro elements soil analysis",
     .icon = u"soil-micro",
     .keyField = u"MicroID",
     .dateField = u"MicroDate",
     .partOrDepth = {u"", u"", 0, CellAlignment::Left},
     .season = {u"", u"", 0, CellAlignment::Left},
     .values = MicroValues,
     .valueWidth = 460,
     .secondCaption = u"",
     .secondEntry = AnalysisSecondEntry::None,
     .parts = {},
     .fourthCaption = u"",
     .seasons = {},
     .boxStep = UsualBoxStep,
     .sheetTitle = u"Soil Analysis:Micro elements",
     .sheetHeading = u"",
     .list = &Store::Get_MonSoilMicro_for_Period,
     .add = writeMicro,
     .save = writeMicro,
     .remove = nullptr},
}};

} // namespace

const AnalysisKind *analysisKind(QStringView mode)
{
    const auto found = std::find_if(Kinds.begin(), Kinds.end(), [mode](const AnalysisKind &kind) { return kind.mode == mode; });
    return found == Kinds.end() ? nullptr : &*found;
}

std::span<const AnalysisKind> analysisKinds()
{
    return Kinds;
}
