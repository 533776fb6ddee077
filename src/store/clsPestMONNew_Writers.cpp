// SPDX-License-Identifier: GPL-3.0-or-later
// Writers of instructions, their results and the selection work tables.
#include "store/clsPestMONNew.h"

#include "store/Rows.h"
#include "store/SqlText.h"

#include <vector>

using store::Existing;
using store::FieldValue;
using store::KeyedTable;
using store::Missing;
using store::sqlText;

namespace
{

using Key = clsPestMONNew::Key;

constexpr KeyedTable PMTrans{u"tblPMTrans", u"PMTransID"};
constexpr KeyedTable PMData{u"tblPMData", u"PMDataID"};
constexpr KeyedTable PMDataMax{u"tblPMDataMax", u"PMDataMaxID"};
constexpr KeyedTable PMTarTrans{u"tblPMTarTrans", u"PMTarTransID"};
constexpr KeyedTable PMBlockTrans{u"tblPMBlockTrans", {}};
constexpr KeyedTable PMTPest{u"tblPMTPest", u"PMTPestID"};
constexpr KeyedTable PMTBlock{u"tblPMTBlock", u"PMTBlockID"};
constexpr KeyedTable PMTempPest{u"tblPMTempPest", u"PMTempPestID"};
constexpr KeyedTable PMTempBlock{u"tblPMTempBlock", u"PMTempBlockID"};

/// The six fields of a detail or total row in the order of the selector.
std::array<FieldValue, 6> sixFields(const clsPestMONNew::PointValues &values)
{
    return {{{u"PMCount", std::int32_t{values.PMCount}},
             {u"PMCountUnder", std::int32_t{values.PMCountUnder}},
             {u"PMCountUpper", std::int32_t{values.PMCountUpper}},
             {u"PMYes", values.PMYes},
             {u"PMYesUnder", values.PMYesUnder},
             {u"PMYesUpper", values.PMYesUpper}}};
}

std::array<FieldValue, 6> sixFields(const clsPestMONNew::TotalValues &values)
{
    return {{{u"PMCountMax", std::int32_t{values.PMCountMax}},
             {u"PMCountUnderMax", std::int32_t{values.PMCountUnderMax}},
             {u"PMCountUpperMax", std::int32_t{values.PMCountUpperMax}},
             {u"PMYesMax", std::int32_t{values.PMYesMax}},
             {u"PMYesUnderMax", std::int32_t{values.PMYesUnderMax}},
             {u"PMYesUpperMax", std::int32_t{values.PMYesUpperMax}}}};
}

/// The key fields, and of the six others all for selector 0, one for 1 to 6, none for any other.
std::vector<FieldValue> selectFields(std::initializer_list<FieldValue> keys, const std::array<FieldValue, 6> &six, int selector)
{
    std::vector<FieldValue> fields;
    fields.reserve(keys.size() + six.size());
    fields.assign(keys);
    if (selector == clsPestMONNew::AllFields) {
        fields.insert(fields.end(), six.begin(), six.end());
    } else if (selector >= 1 && selector <= static_cast<int>(six.size())) {
        fields.push_back(six[static_cast<std::size_t>(selector - 1)]);
    }
    return fields;
}

std::array<FieldValue, 1> oneField(QStringView name, Key value)
{
    return {{{name, value}}};
}

QString equals(QStringView field, Key value)
{
    return sqlText(field, u" =", value);
}

/// The rows of an instruction that name one block or target.
QString pair(QStringView field, Key instruction, Key value)
{
    return sqlText(u"PMTransID =", instruction, u" and ", field, u" =", value);
}

QString rowsOfPair(KeyedTable table, QStringView field, Key instruction, Key value)
{
    return sqlText(u"Select * from ", table.name, u" where ", pair(field, instruction, value));
}

} // namespace

clsPestMONNew::Status clsPestMONNew::New_Add_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes,
                                                     const QString &person, Int16 week, bool repeat)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 7> fields{{{u"PMMethodID", method},
                                                {u"PMTransDate", issued},
                                                {u"PMNotes", notes},
                                                {u"PMPerson", person},
                                                {u"PMTransWeek", std::int32_t{week}},
                                                {u"PMTransCom", false},
                                                {u"PMRepeat", repeat}}};
        PMTransID = store::addRow(database, PMTrans, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Add_PMTrans(Key &PMTransID, Key block, Key method, SerialDate issued, const QString &notes,
                                                 const QString &person, Int16 points, Int16 week, bool completed, bool repeat)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 9> fields{{{u"BlockID", block},
                                                {u"PMMethodID", method},
                                                {u"PMTransDate", issued},
                                                {u"PMNotes", notes},
                                                {u"PMPerson", person},
                                                {u"NoofMpoints", std::int32_t{points}},
                                                {u"PMTransWeek", std::int32_t{week}},
                                                {u"PMTransCom", completed},
                                                {u"PMRepeat", repeat}}};
        PMTransID = store::addRow(database, PMTrans, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::New_Add_PestData(Key instruction, Key block, Key target, Int16 point,
                                                      const PointValues &values)
{
    return write([&](dao::Database &database) {
        store::addRow(
            database, PMData,
            selectFields(
                {{u"PMTransID", instruction}, {u"BlockID", block}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                sixFields(values), AllFields));
    });
}

clsPestMONNew::Status clsPestMONNew::Add_PestData(Key instruction, Key target, Int16 point, const PointValues &values)
{
    return write([&](dao::Database &database) {
        store::addRow(database, PMData,
                      selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                                   sixFields(values), AllFields));
    });
}

clsPestMONNew::Status clsPestMONNew::New_Add_PestDataMax(Key instruction, Key target, Key block, const TotalValues &values)
{
    return write([&](dao::Database &database) {
        store::addRow(database, PMDataMax,
                      selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"BlockID", block}}, sixFields(values),
                                   AllFields));
    });
}

clsPestMONNew::Status clsPestMONNew::Add_PestDataMax(Key instruction, Key target, const TotalValues &values)
{
    return write([&](dao::Database &database) {
        store::addRow(database, PMDataMax,
                      selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}}, sixFields(values), AllFields));
    });
}

// The four selection tables and the pairs of an instruction: the table, its fields, and nothing else differs.

clsPestMONNew::Status clsPestMONNew::New_Add_Pest_for_Instruction(Key target)
{
    return write([&](dao::Database &database) { store::addRow(database, PMTPest, oneField(u"CTargetID", target)); });
}

clsPestMONNew::Status clsPestMONNew::New_Add_Block_for_Instruction(Key block, Int16 points)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"BlockID", block}, {u"NoofMpoints", std::int32_t{points}}}};
        store::addRow(database, PMTBlock, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Add_Pest_for_Report(Key target)
{
    return write([&](dao::Database &database) { store::addRow(database, PMTempPest, oneField(u"CTargetID", target)); });
}

clsPestMONNew::Status clsPestMONNew::Add_Block_for_Report(Key block)
{
    return write([&](dao::Database &database) { store::addRow(database, PMTempBlock, oneField(u"BlockID", block)); });
}

clsPestMONNew::Status clsPestMONNew::Add_Pest_for_Trans(Key instruction, Key target)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"CTargetID", target}, {u"PMTransID", instruction}}};
        store::writeRow(database, rowsOfPair(PMTarTrans, u"CTargetID", instruction, target), Existing::LeaveAlone, Missing::Add,
                        fields);
    });
}

clsPestMONNew::Status clsPestMONNew::New_Add_Block_for_Transaction(Key instruction, Key block, Int16 points)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 3> fields{
            {{u"PMTransID", instruction}, {u"BlockID", block}, {u"NoofMpoints", std::int32_t{points}}}};
        store::writeRow(database, rowsOfPair(PMBlockTrans, u"BlockID", instruction, block), Existing::LeaveAlone, Missing::Add,
                        fields);
    });
}

clsPestMONNew::Status clsPestMONNew::New_Save_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes,
                                                      const QString &person, Int16 week, std::optional<SerialDate> dateCompleted,
                                                      bool completed, bool repeat)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 8> fields{
            {{u"PMMethodID", method},
             {u"PMTransDate", issued},
             {u"PMNotes", notes},
             {u"PMPerson", person},
             {u"PMTransWeek", std::int32_t{week}},
             {u"PMTransDateCom", dateCompleted ? dao::Value(*dateCompleted) : dao::Value(dao::Null{})},
             {u"PMTransCom", completed},
             {u"PMRepeat", repeat}}};
        store::writeRow(database, store::rowByKey(PMTrans, PMTransID), Existing::Edit, Missing::LeaveAlone, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Pest_for_Trans(Key PMTarTransID, Key target, Key instruction)
{
    return write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"CTargetID", target}, {u"PMTransID", instruction}}};
        store::writeRow(database, store::rowByKey(PMTarTrans, PMTarTransID), Existing::Edit, Missing::LeaveAlone, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Save_PestData(Key &PMDataID, Key instruction, Key target, Int16 point,
                                                   const PointValues &values, int selector)
{
    return write([&](dao::Database &database) {
        store::writeRow(database, store::rowByKey(PMData, PMDataID), Existing::Edit, Missing::LeaveAlone,
                        selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                                     sixFields(values), selector));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_PestDataMax(Key &PMDataMaxID, Key instruction, Key target, const TotalValues &values,
                                                      int selector)
{
    return write([&](dao::Database &database) {
        PMDataMaxID = store::writeRow(
            database, store::rowByKey(PMDataMax, PMDataMaxID), Existing::Edit, Missing::Add,
            selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}}, sixFields(values), selector), PMDataMax.key);
    });
}

clsPestMONNew::Status clsPestMONNew::Delete_PestMonTrans(Key instruction)
{
    return deleteFirst(PMTrans, equals(u"PMTransID", instruction));
}

clsPestMONNew::Status clsPestMONNew::Delete_PMData_for_Trans(Key instruction)
{
    return deleteFirst(PMData, equals(u"PMTransID", instruction));
}

clsPestMONNew::Status clsPestMONNew::Delete_PMDataMax_for_Trans(Key instruction)
{
    return deleteFirst(PMDataMax, equals(u"PMTransID", instruction));
}

clsPestMONNew::Status clsPestMONNew::New_Delete_Block_for_Transaction(Key instruction, Key block)
{
    return deleteFirst(PMBlockTrans, pair(u"BlockID", instruction, block));
}

clsPestMONNew::Status clsPestMONNew::New_Delete_Pest_for_Transaction(Key instruction, Key target)
{
    return deleteFirst(PMTarTrans, pair(u"CTargetID", instruction, target));
}

clsPestMONNew::Status clsPestMONNew::Delete_Pest_for_Trans(Key instruction, Key target)
{
    return New_Delete_Pest_for_Transaction(instruction, target);
}

clsPestMONNew::Status clsPestMONNew::New_Delete_Pest_for_Instruction(Key target)
{
    return deleteFirst(PMTPest, equals(u"CTargetID", target));
}

clsPestMONNew::Status clsPestMONNew::New_Delete_Block_for_Instruction(Key block)
{
    return deleteFirst(PMTBlock, equals(u"BlockID", block));
}

clsPestMONNew::Status clsPestMONNew::New_Delete_All_Pests_for_Instruction()
{
    return deleteFirst(PMTPest, {});
}

clsPestMONNew::Status clsPestMONNew::New_Delete_All_Blocks_for_Instruction()
{
    return deleteFirst(PMTBlock, {});
}

clsPestMONNew::Status clsPestMONNew::Delete_Pest_for_Report(Key target)
{
    return deleteFirst(PMTempPest, equals(u"CTargetID", target));
}

clsPestMONNew::Status clsPestMONNew::Delete_Block_for_Report(Key block)
{
    return deleteFirst(PMTempBlock, equals(u"BlockID", block));
}
