// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Rows.h"
#include "store/StoreAccess.h"

#include <array>
#include <initializer_list>
#include <optional>
#include <vector>

/// Instructions, their detail and total rows and the selection tables, as the queries and the writers name them.
namespace store
{

inline constexpr KeyedTable PMTrans{u"tblPMTrans", u"PMTransID"};
inline constexpr KeyedTable PMData{u"tblPMData", u"PMDataID"};
inline constexpr KeyedTable PMDataMax{u"tblPMDataMax", u"PMDataMaxID"};
inline constexpr KeyedTable PMTarTrans{u"tblPMTarTrans", u"PMTarTransID"};
inline constexpr KeyedTable PMBlockTrans{u"tblPMBlockTrans", {}};
inline constexpr KeyedTable PMTPest{u"tblPMTPest", u"PMTPestID"};
inline constexpr KeyedTable PMTBlock{u"tblPMTBlock", u"PMTBlockID"};
inline constexpr KeyedTable PMTempPest{u"tblPMTempPest", u"PMTempPestID"};
inline constexpr KeyedTable PMTempBlock{u"tblPMTempBlock", u"PMTempBlockID"};

/// Six values of a detail row: count, in, out, and the same three as Yes/No.
struct PointValues {
    Int16 PMCount = 0, PMCountUnder = 0, PMCountUpper = 0;
    bool PMYes = false, PMYesUnder = false, PMYesUpper = false;
};
/// Six values of a total row; the Yes values count answers.
struct TotalValues {
    Int16 PMCountMax = 0, PMCountUnderMax = 0, PMCountUpperMax = 0;
    Int16 PMYesMax = 0, PMYesUnderMax = 0, PMYesUpperMax = 0;
};
/// Which of the six fields a save writes; any other number writes none of them.
enum FieldSelector : int { AllFields = 0, Count = 1, CountUnder, CountUpper, Yes, YesUnder, YesUpper };

using SixFields = std::array<FieldValue, 6>;
/// The six fields of a detail or total row in the order of the selector.
SixFields sixFields(const PointValues &values);
SixFields sixFields(const TotalValues &values);
/// The key fields, and of the six others all for selector 0, one for 1 to 6, none for any other.
std::vector<FieldValue> selectFields(std::initializer_list<FieldValue> keys, const SixFields &six, int selector);

std::array<FieldValue, 1> oneField(QStringView name, Key value);
/// "field =value".
QString equals(QStringView field, Key value);
/// Condition on the rows of an instruction that name one block or target.
QString pair(QStringView field, Key instruction, Key value);

/// All fields of the rows that meet the condition (all rows when it is empty), in the given order.
QString rowsWhere(QStringView table, QStringView condition, QStringView order);

/// Condition on detail or total rows; a clause is left out where its key is not given.
struct RowFilter {
    std::optional<Key> target;
    std::optional<Key> block;
    std::optional<Key> instruction;
    std::optional<Key> point;

    QString on(QStringView table) const;
};
QString dataRows(const RowFilter &filter, QStringView order);
QString totalRows(const RowFilter &filter);
/// The points that have detail rows, each once.
QString pointsOf(const RowFilter &filter);

} // namespace store
