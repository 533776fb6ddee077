// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/MonitoringWriters.h"

#include "store/SqlText.h"

namespace store
{

namespace
{

QString rowsOfPair(KeyedTable table, QStringView field, Key instruction, Key value)
{
    return sqlText(u"Select * from ", table.name, u" where ", pair(field, instruction, value));
}

} // namespace

Status MonitoringWriters::New_Add_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes,
                                          const QString &person, Int16 week, bool repeat)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 7> fields{{{u"PMMethodID", method},
                                                {u"PMTransDate", issued},
                                                {u"PMNotes", notes},
                                                {u"PMPerson", person},
                                                {u"PMTransWeek", std::int32_t{week}},
                                                {u"PMTransCom", false},
                                                {u"PMRepeat", repeat}}};
        PMTransID = addRow(database, PMTrans, fields);
    });
}

Status MonitoringWriters::New_Add_PestData(Key instruction, Key block, Key target, Int16 point, const PointValues &values)
{
    return access_.write([&](dao::Database &database) {
        addRow(database, PMData,
               selectFields(
                   {{u"PMTransID", instruction}, {u"BlockID", block}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                   sixFields(values), AllFields));
    });
}

Status MonitoringWriters::New_Add_PestDataMax(Key instruction, Key target, Key block, const TotalValues &values)
{
    return access_.write([&](dao::Database &database) {
        addRow(database, PMDataMax,
               selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"BlockID", block}}, sixFields(values),
                            AllFields));
    });
}

Status MonitoringWriters::New_Add_Pest_for_Instruction(Key target)
{
    return access_.write([&](dao::Database &database) { addRow(database, PMTPest, oneField(u"CTargetID", target)); });
}

Status MonitoringWriters::New_Add_Block_for_Instruction(Key block, Int16 points)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"BlockID", block}, {u"NoofMpoints", std::int32_t{points}}}};
        addRow(database, PMTBlock, fields);
    });
}

Status MonitoringWriters::Add_Pest_for_Trans(Key instruction, Key target)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"CTargetID", target}, {u"PMTransID", instruction}}};
        writeRow(database, rowsOfPair(PMTarTrans, u"CTargetID", instruction, target), Existing::LeaveAlone, Missing::Add, fields);
    });
}

Status MonitoringWriters::New_Add_Block_for_Transaction(Key instruction, Key block, Int16 points)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 3> fields{
            {{u"PMTransID", instruction}, {u"BlockID", block}, {u"NoofMpoints", std::int32_t{points}}}};
        writeRow(database, rowsOfPair(PMBlockTrans, u"BlockID", instruction, block), Existing::LeaveAlone, Missing::Add, fields);
    });
}

Status MonitoringWriters::New_Save_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes,
                                           const QString &person, Int16 week, std::optional<SerialDate> dateCompleted,
                                           bool completed, bool repeat)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 8> fields{
            {{u"PMMethodID", method},
             {u"PMTransDate", issued},
             {u"PMNotes", notes},
             {u"PMPerson", person},
             {u"PMTransWeek", std::int32_t{week}},
             {u"PMTransDateCom", dateCompleted ? dao::Value(*dateCompleted) : dao::Value(dao::Null{})},
             {u"PMTransCom", completed},
             {u"PMRepeat", repeat}}};
        writeRow(database, rowByKey(PMTrans, PMTransID), Existing::Edit, Missing::LeaveAlone, fields);
    });
}

Status MonitoringWriters::Save_PestData(Key &PMDataID, Key instruction, Key target, Int16 point, const PointValues &values,
                                        int selector)
{
    return access_.write([&](dao::Database &database) {
        writeRow(database, rowByKey(PMData, PMDataID), Existing::Edit, Missing::LeaveAlone,
                 selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                              sixFields(values), selector));
    });
}

Status MonitoringWriters::Save_PestDataMax(Key &PMDataMaxID, Key instruction, Key target, const TotalValues &values, int selector)
{
    return access_.write([&](dao::Database &database) {
        PMDataMaxID = writeRow(database, rowByKey(PMDataMax, PMDataMaxID), Existing::Edit, Missing::Add,
                               selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}}, sixFields(values), selector),
                               PMDataMax.key);
    });
}

Status MonitoringWriters::Delete_PestMonTrans(Key instruction)
{
    return access_.deleteFirst(PMTrans, equals(u"PMTransID", instruction));
}

Status MonitoringWriters::Delete_PMData_for_Trans(Key instruction)
{
    return access_.deleteFirst(PMData, equals(u"PMTransID", instruction));
}

Status MonitoringWriters::Delete_PMDataMax_for_Trans(Key instruction)
{
    return access_.deleteFirst(PMDataMax, equals(u"PMTransID", instruction));
}

Status MonitoringWriters::New_Delete_Block_for_Transaction(Key instruction, Key block)
{
    return access_.deleteFirst(PMBlockTrans, pair(u"BlockID", instruction, block));
}

Status MonitoringWriters::New_Delete_Pest_for_Transaction(Key instruction, Key target)
{
    return access_.deleteFirst(PMTarTrans, pair(u"CTargetID", instruction, target));
}

Status MonitoringWriters::New_Delete_Pest_for_Instruction(Key target)
{
    return access_.deleteFirst(PMTPest, equals(u"CTargetID", target));
}

Status MonitoringWriters::New_Delete_Block_for_Instruction(Key block)
{
    return access_.deleteFirst(PMTBlock, equals(u"BlockID", block));
}

} // namespace store
