// SPDX-License-Identifier: GPL-3.0-or-later
#include "BigFarm.h"

#include "RawSqlite.h"
#include "store/Schema.h"

#include <QDir>

namespace
{

QString databaseFile(const QTemporaryDir &folder, store::DatabaseFile file)
{
    return folder.filePath(QStringLiteral("Databases/") + store::fileName(file));
}

constexpr auto Numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ";

void fill(RawSqlite &file, int rows, const QByteArray &insert)
{
    const QString sql = QString::fromLatin1(insert);
    const qsizetype select = sql.indexOf(QLatin1String("SELECT"));
    file.run(qPrintable(sql.left(select) + QString::fromLatin1(Numbers).arg(rows) + sql.mid(select)));
}

void fillMain(RawSqlite &file)
{
    file.run("BEGIN");
    fill(file, 1, "INSERT INTO tblFarms (FarmID, Farm, isactive) SELECT i, 'Farm', -1 FROM n");
    fill(file, 500,
         "INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active) SELECT i, 'Block ' || i, 1, 20, -1 FROM n");
    fill(file, 5000,
         "INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, PBActive, CrVaID) SELECT i, 1 + i % 500, 'Planting ' || i, -1, 1 "
         "FROM n");
    file.run("COMMIT");
}

void fillPest(RawSqlite &file, int instructions)
{
    file.run("BEGIN");
    // Eight years in days since 1899-12-30; 43000 is in September 2017. The weeks are those that a start would write.
    const QByteArray day = "i * 2857 / " + QByteArray::number(instructions);
    fill(file, instructions,
         "INSERT INTO tblPMTrans (PMTransID, PMMethodID, PMTransDate, PMTransDateCom, PMTransWeek, PMNotes, PMPerson, "
         "PMTransCom, PMRepeat) "
         "SELECT i, 1, 43000 + "
             + day + ", CASE WHEN i % 4 THEN 43002 + " + day
             + " END, 1, 'Scout before the spray', 'Anna', "
               "CASE WHEN i % 4 THEN -1 ELSE 0 END, -1 FROM n");
    fill(file, instructions, "INSERT INTO tblPMBlockTrans (PMTransID, BlockID, NoofMpoints) SELECT i, 1 + i % 500, 20 FROM n");
    fill(file, 5 * instructions, "INSERT INTO tblPMTarTrans (PMTransID, CTargetID) SELECT 1 + i / 5, 1 + i % 5 FROM n");
    fill(file, 100 * instructions,
         "INSERT INTO tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount, PMCountUnder, PMCountUpper, PMYes, PMYesUnder, "
         "PMYesUpper) "
         "SELECT 1 + (i - 1) / 100, 1 + (1 + (i - 1) / 100) % 500, 1 + i % 5, 1 + ((i - 1) / 5) % 20, i % 9, 0, 0, 0, 0, 0 FROM "
         "n");
    // A total row for each detail row; only the first row of a pest holds its total.
    fill(
        file, 100 * instructions,
        "INSERT INTO tblPMDataMax (PMTransID, BlockID, CTargetID, PMCountMax, PMCountUnderMax, PMCountUpperMax, PMYesMax, "
        "PMYesUnderMax, PMYesUpperMax) "
        "SELECT 1 + (i - 1) / 100, 1 + (1 + (i - 1) / 100) % 500, 1 + i % 5, CASE WHEN (i - 1) % 100 < 5 THEN i % 90 ELSE 0 END, "
        "0, 0, 0, 0, 0 FROM n");
    file.run("COMMIT");
}

void fillSpray(RawSqlite &file)
{
    file.run("BEGIN");
    fill(file, 45, "INSERT INTO tblCTarget (CTargetID, ChemTarget, CTType) SELECT i, 'Target ' || i, 'P' FROM n");
    file.run("COMMIT");
}

} // namespace

BigFarm::BigFarm(int instructions)
    : instructions_(instructions), folder_(QDir::current().filePath(QStringLiteral("bigfarm-XXXXXX")))
{
    QDir(folder_.path()).mkpath(QStringLiteral("Databases"));
    const auto make = [this](store::DatabaseFile file, const auto &fillFile) {
        const QString path = databaseFile(folder_, file);
        store::createDatabaseFile(file, path);
        RawSqlite raw(path);
        fillFile(raw);
    };
    make(store::DatabaseFile::Main, fillMain);
    make(store::DatabaseFile::Pest, [instructions](RawSqlite &file) { fillPest(file, instructions); });
    make(store::DatabaseFile::Spray, fillSpray);
}

QString BigFarm::pestFile() const
{
    return databaseFile(folder_, store::DatabaseFile::Pest);
}
