// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"
#include "support/TemporaryFarm.h"

#include <QString>

/// A small farm for the tests of pest monitoring: three active blocks with 3, 0 and 2 points and one inactive, a worker and one
/// without nickname, and pests 1 to 20, of which every fourth is of kind "W".
class PestMonFarm : public TemporaryFarm
{
public:
    PestMonFarm()
    {
        addFarm(QStringLiteral("Rivier's Oord"));
        addBlock({.name = QStringLiteral("Blok A"), .points = 3});
        addBlock({.name = QStringLiteral("Blok B"), .points = 0});
        addBlock({.name = QStringLiteral("Blok C"), .points = 2});
        addBlock({.name = QStringLiteral("Blok D"), .points = 9, .active = false});
        addWorker(QStringLiteral("Anna"));
        addWorker({});
        for (int pest = 1; pest <= 20; ++pest) {
            addTarget(QStringLiteral("Pest %1").arg(pest, 2, 10, QLatin1Char('0')),
                      pest % 4 == 0 ? QStringLiteral("W") : QStringLiteral("P"));
        }
    }

    int countOf(const QString &sql) { return session.dbPest->OpenRecordset(sql).RecordCount(); }
    /// First field of the first row; -1 without one.
    int number(const QString &sql)
    {
        const dao::Recordset rows = session.dbPest->OpenRecordset(sql);
        return rows.Eof() ? -1 : rows.longValue(0);
    }
};
