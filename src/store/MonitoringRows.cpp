// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/MonitoringRows.h"

#include "store/SqlText.h"

namespace store
{

SixFields sixFields(const PointValues &values)
{
    return {{{u"PMCount", std::int32_t{values.PMCount}},
             {u"PMCountUnder", std::int32_t{values.PMCountUnder}},
             {u"PMCountUpper", std::int32_t{values.PMCountUpper}},
             {u"PMYes", values.PMYes},
             {u"PMYesUnder", values.PMYesUnder},
             {u"PMYesUpper", values.PMYesUpper}}};
}

SixFields sixFields(const TotalValues &values)
{
    return {{{u"PMCountMax", std::int32_t{values.PMCountMax}},
             {u"PMCountUnderMax", std::int32_t{values.PMCountUnderMax}},
             {u"PMCountUpperMax", std::int32_t{values.PMCountUpperMax}},
             {u"PMYesMax", std::int32_t{values.PMYesMax}},
             {u"PMYesUnderMax", std::int32_t{values.PMYesUnderMax}},
             {u"PMYesUpperMax", std::int32_t{values.PMYesUpperMax}}}};
}

std::vector<FieldValue> selectFields(std::initializer_list<FieldValue> keys, const SixFields &six, int selector)
{
    std::vector<FieldValue> fields;
    fields.reserve(keys.size() + six.size());
    fields.assign(keys);
    if (selector == AllFields) {
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

QString pair(QStringView field, Key instruction, Key value)
{
    return sqlText(u"PMTransID =", instruction, u" and ", field, u" =", value);
}

QString rowsWhere(QStringView table, QStringView condition, QStringView order)
{
    return sqlText(u"Select * from ", table, condition.isEmpty() ? u"" : u" where ", condition, u" order by ", order);
}

QString RowFilter::on(QStringView table) const
{
    QString condition;
    const auto clause = [&](QStringView field, std::optional<Key> value) {
        if (value) {
            condition += sqlText(condition.isEmpty() ? u"" : u" and ", table, u".", field, u" = ", *value);
        }
    };
    clause(u"PMBPunt", point);
    clause(u"CTargetID", target);
    clause(u"BlockID", block);
    clause(u"PMTransID", instruction);
    return condition;
}

QString dataRows(const RowFilter &filter, QStringView order)
{
    return rowsWhere(u"tblPMData", filter.on(u"tblPMData"), order);
}

QString totalRows(const RowFilter &filter)
{
    return rowsWhere(u"tblPMDataMax", filter.on(u"tblPMDataMax"), u"tblPMDataMax.PMDataMaxID");
}

QString pointsOf(const RowFilter &filter)
{
    return sqlText(u"Select distinct PMBPunt from tblPMData where ", filter.on(u"tblPMData"), u" order by PMBPunt");
}

} // namespace store
