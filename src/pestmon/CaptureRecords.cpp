// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureRecords.h"

#include "common/MonitoringConstants.h"
#include "platform/basic/Numbers.h"
#include "screens/ScreenHost.h"

#include <array>

namespace pestmon
{

namespace
{

/// The fields of a pest's three values, in the point and in the total rows, by method.
constexpr std::array<const char *, 3> CountFields{"PMCount", "PMCountUnder", "PMCountUpper"};
constexpr std::array<const char *, 3> YesFields{"PMYes", "PMYesUnder", "PMYesUpper"};
constexpr std::array<const char *, 3> CountTotalFields{"PMCountMax", "PMCountUnderMax", "PMCountUpperMax"};
constexpr std::array<const char *, 3> YesTotalFields{"PMYesMax", "PMYesUnderMax", "PMYesUpperMax"};

const char *field(const std::array<const char *, 3> &fields, int value)
{
    return fields[static_cast<std::size_t>(value - 1)];
}

using PointValues = clsPestMONNew::PointValues;
using TotalValues = clsPestMONNew::TotalValues;
constexpr std::array Counts{&PointValues::PMCount, &PointValues::PMCountUnder, &PointValues::PMCountUpper};
constexpr std::array Answers{&PointValues::PMYes, &PointValues::PMYesUnder, &PointValues::PMYesUpper};
constexpr std::array CountTotals{&TotalValues::PMCountMax, &TotalValues::PMCountUnderMax, &TotalValues::PMCountUpperMax};
constexpr std::array YesTotals{&TotalValues::PMYesMax, &TotalValues::PMYesUnderMax, &TotalValues::PMYesUpperMax};

/// A row with one of its three values set; the others are not written.
template <typename Row, typename Content> Row rowWith(const std::array<Content Row::*, 3> &members, int value, Content content)
{
    Row row;
    row.*members[static_cast<std::size_t>(value - 1)] = content;
    return row;
}

} // namespace

SessionContext &CaptureRecords::session() const
{
    return host_.session();
}

bool CaptureRecords::isCount() const
{
    return session().CurrentPMMethod == CountMethodName;
}

capture::CellDisplay CaptureRecords::point(const dao::Recordset &rows, int value) const
{
    return isCount() ? capture::storedPoint(basic::toInteger16(rows.longValue(field(CountFields, value))))
                     : capture::answer(rows.boolean(field(YesFields, value)));
}

capture::CellDisplay CaptureRecords::total(const dao::Recordset &rows, int value) const
{
    return capture::storedTotal(basic::toInteger16(rows.longValue(field(isCount() ? CountTotalFields : YesTotalFields, value))));
}

dao::Recordset CaptureRecords::totals(Key target) const
{
    return host_.objPestMON().New_Get_PestDataMax_for_Transaction(session().CurrentBlockID, target, session().CurrentPMTransID);
}

std::optional<capture::CellDisplay> CaptureRecords::storedPoint(Key target, std::int16_t pointNumber, int value) const
{
    const dao::Recordset rows = host_.objPestMON().New_Get_PestData_for_Transaction(
        session().CurrentPMTransID, session().CurrentBlockID, target, pointNumber);
    return rows.Eof() ? std::nullopt : std::optional(point(rows, value));
}

std::optional<capture::CellDisplay> CaptureRecords::storedTotal(Key target, int value) const
{
    const dao::Recordset rows = totals(target);
    return rows.Eof() ? std::nullopt : std::optional(total(rows, value));
}

CaptureRecords::Status CaptureRecords::savePoint(Key key, Key target, std::int16_t pointNumber, int value,
                                                 std::int16_t content) const
{
    session().CurrentCTargetID = target;
    const PointValues values = isCount() ? rowWith(Counts, value, content) : rowWith(Answers, value, content != 0);
    const int selector = (isCount() ? clsPestMONNew::Count : clsPestMONNew::Yes) + value - 1;
    return host_.objPestMON().Save_PestData(key, session().CurrentPMTransID, target, pointNumber, values, selector);
}

CaptureRecords::Status CaptureRecords::saveTotal(Key &key, Key target, int value, std::int16_t content) const
{
    session().CurrentCTargetID = target;
    const TotalValues values = rowWith(isCount() ? CountTotals : YesTotals, value, content);
    const int selector = (isCount() ? clsPestMONNew::Count : clsPestMONNew::Yes) + value - 1;
    return host_.objPestMON().Save_PestDataMax(key, session().CurrentPMTransID, target, values, selector);
}

} // namespace pestmon
