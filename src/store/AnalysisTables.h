// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Rows.h"

#include <array>

/// Leaf, fruit and soil analyses: five tables of the pest file that differ in names and in the number of values. The schema
/// and the writers both read them from here.
namespace store
{

/// A field and the position of its value among the arguments of the writer, counted from 0.
struct AnalysisValueField {
    QStringView name;
    std::size_t argument;
};

/// The fields in the order of the file, which is also the order of writing: key, planting, date, part, season, values, texture.
struct AnalysisTable {
    KeyedTable table;
    QStringView date;
    std::span<const AnalysisValueField> values;
    /// Empty where the table lacks the field; part and season belong to plants, texture to soil.
    QStringView part = {};
    QStringView season = {};
    QStringView texture = {};
};

/// A value of the leaf and of the fruit analysis.
struct PlantField {
    QStringView leaf;
    QStringView fruit;
    std::size_t argument;
};
inline constexpr std::array<PlantField, 11> PlantFields{{{u"LA_N", u"FA_N", 0},
                                                         {u"LA_P", u"FA_P", 1},
                                                         {u"LA_K", u"FA_K", 2},
                                                         {u"LA_Mg", u"FA_Mg", 4},
                                                         {u"LA_Na", u"FA_Na", 5},
                                                         {u"LA_Mn", u"FA_Mn", 6},
                                                         {u"LA_Fe", u"FA_Fe", 7},
                                                         {u"LA_Cu", u"FA_Cu", 8},
                                                         {u"LA_Zn", u"FA_Zn", 9},
                                                         {u"LA_B", u"FA_B", 10},
                                                         {u"LA_Ca", u"FA_Ca", 3}}};

constexpr std::array<AnalysisValueField, PlantFields.size()> plantValues(QStringView PlantField::*name)
{
    std::array<AnalysisValueField, PlantFields.size()> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = {PlantFields[i].*name, PlantFields[i].argument};
    }
    return values;
}

inline constexpr auto LeaveValues = plantValues(&PlantField::leaf);
inline constexpr auto FruitValues = plantValues(&PlantField::fruit);
inline constexpr std::array<AnalysisValueField, 7> SoilBasicValues{
    {{u"SBDepth", 0}, {u"SBpHWater", 1}, {u"SBpHSuur", 2}, {u"SBConduct", 3}, {u"SBKUV", 4}, {u"SBClay", 5}, {u"SBOrganic", 6}}};
inline constexpr std::array<AnalysisValueField, 6> SoilMicroValues{
    {{u"MicroZn", 0}, {u"MicroB", 2}, {u"MicroCu", 1}, {u"MicroMn", 3}, {u"MicroFe", 4}, {u"MicroMo", 5}}};
inline constexpr std::array<AnalysisValueField, 11> SoilExtractionValues{{{u"SEDepth", 0},
                                                                          {u"SEPBray", 1},
                                                                          {u"SEPB2", 10},
                                                                          {u"SEPAcid", 2},
                                                                          {u"SE_K", 3},
                                                                          {u"SE_Ca", 4},
                                                                          {u"SE_Na", 5},
                                                                          {u"SE_Mg", 6},
                                                                          {u"SE_Cl", 7},
                                                                          {u"SE_S", 8},
                                                                          {u"SE_Al", 9}}};

inline constexpr AnalysisTable LeaveAnalysis{
    {u"tblLeaveAnalysis", u"LeaveAnalysisID"}, u"LADate", LeaveValues, u"LAPart", u"LASeason"};
inline constexpr AnalysisTable FruitAnalysis{
    {u"tblFruitAnalysis", u"FruitAnalysisID"}, u"FADate", FruitValues, u"FAPart", u"FASeason"};
inline constexpr AnalysisTable SoilBasicAnalysis{
    {u"tblSoilBasic", u"SoilBasicID"}, u"SBDate", SoilBasicValues, {}, {}, u"SBTexture"};
inline constexpr AnalysisTable SoilMicroAnalysis{{u"tblSoilMicro", u"MicroID"}, u"MicroDate", SoilMicroValues};
inline constexpr AnalysisTable SoilExtractionAnalysis{{u"tblSoilExtraction", u"SEExtractionID"}, u"SEDate", SoilExtractionValues};

} // namespace store
