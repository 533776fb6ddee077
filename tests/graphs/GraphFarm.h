// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"
#include "support/TemporaryFarm.h"

#include <QDate>

/// A farm with two blocks (3 points and 0) and pests 1 to 7, and helpers that add findings.
class GraphFarm : public TemporaryFarm
{
public:
    GraphFarm()
    {
        addFarm(QStringLiteral("Rivier's Oord"));
        addBlock({.name = QStringLiteral("Blok A"), .points = 3});
        addBlock({.name = QStringLiteral("Blok B"), .points = 0});
        for (int pest = 1; pest <= 7; ++pest) {
            addTarget(QStringLiteral("Pest %1").arg(pest));
        }
    }

    struct Found {
        int week = 1;
        std::optional<QDate> completed = QDate(2026, 3, 15);
        int method = 1;
        int block = 1;
        int pest = 1;
        std::optional<int> count = 0;
        std::optional<int> yes = 0;
        bool done = true;
        QDate issued = QDate(2026, 3, 2);
        /// The zero date in place of a completion.
        bool neverCompleted = false;
    };

    /// An instruction of one block and one pest with its total row; its key.
    int found(const Found &what)
    {
        const int key =
            add(u"tblPMTrans",
                {{u"PMMethodID", what.method},
                 {u"PMTransDate", basic::SerialDate::fromDate(what.issued)},
                 {u"PMTransDateCom", what.neverCompleted ? dao::Value(basic::SerialDate()) : dateOrNull(what.completed)},
                 {u"PMTransWeek", what.week},
                 {u"PMTransCom", what.done}});
        add(u"tblPMDataMax",
            {{u"PMTransID", key},
             {u"BlockID", what.block},
             {u"CTargetID", what.pest},
             {u"PMCountMax", numberOrNull(what.count)},
             {u"PMYesMax", numberOrNull(what.yes)}});
        return key;
    }

    void foundAtPoint(int instruction, int block, int pest, int point, int count, bool yes = false)
    {
        add(u"tblPMData",
            {{u"PMTransID", instruction},
             {u"BlockID", block},
             {u"CTargetID", pest},
             {u"PMBPunt", point},
             {u"PMCount", count},
             {u"PMYes", yes}});
    }

private:
    static dao::Value dateOrNull(const std::optional<QDate> &date)
    {
        return date ? dao::Value(basic::SerialDate::fromDate(*date)) : dao::Value();
    }
    static dao::Value numberOrNull(const std::optional<int> &number)
    {
        return number ? dao::Value(std::int32_t{*number}) : dao::Value();
    }
};
