// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "platform/dao/Database.h"
#include "store/Schema.h"
#include "support/TemporaryFarm.h"

#include <QString>

/// A small farm for the tests of pest monitoring: three active blocks with 3, 0 and 2 points and one inactive, workers, and pests
/// 1 to 20, of which every fourth is of kind "W".
class PestMonFarm
{
public:
    PestMonFarm()
    {
        run(DatabaseFile::Main, "INSERT INTO tblFarms (FarmID, Farm, isactive) VALUES (1, 'Rivier''s Oord', True)");
        for (const char *block :
             {"1, 'Blok A', 1, 3, True", "2, 'Blok B', 1, 0, True", "3, 'Blok C', 1, 2, True", "4, 'Blok D', 1, 9, False"}) {
            run(DatabaseFile::Main,
                QStringLiteral("INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active) VALUES (%1)")
                    .arg(QLatin1String(block)));
        }
        run(DatabaseFile::Main, "INSERT INTO tblWorker (WorkerID, WNickName) VALUES (1, 'Anna')");
        run(DatabaseFile::Main, "INSERT INTO tblWorker (WorkerID) VALUES (2)");
        for (int pest = 1; pest <= 20; ++pest) {
            run(DatabaseFile::Spray,
                QStringLiteral("INSERT INTO tblCTarget (CTargetID, ChemTarget, CTType) VALUES (%1, 'Pest %2', '%3')")
                    .arg(pest)
                    .arg(pest, 2, 10, QLatin1Char('0'))
                    .arg(pest % 4 == 0 ? QLatin1Char('W') : QLatin1Char('P')));
        }
    }

    SessionContext &session() { return farm_.session(); }
    int count(const QString &sql) { return session().dbPest->OpenRecordset(sql).RecordCount(); }
    int number(const QString &sql)
    {
        const dao::Recordset rows = session().dbPest->OpenRecordset(sql);
        return rows.Eof() ? -1 : rows.longValue(0);
    }

private:
    using DatabaseFile = store::DatabaseFile;
    void run(DatabaseFile file, const QString &sql)
    {
        dao::DatabaseHandle &handle = file == DatabaseFile::Main ? session().dbMain : session().dbSpray;
        handle->Execute(sql);
    }
    void run(DatabaseFile file, const char *sql) { run(file, QString::fromUtf8(sql)); }

    TemporaryFarm farm_;
};
