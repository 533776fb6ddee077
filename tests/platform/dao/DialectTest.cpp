// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThingsFile.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>

using namespace dao;
using basic::RunTimeError;

namespace
{

struct TableText {
    const char *name;
    /// Letter after the name: a autonumber, k key, l Long, i Integer, b Boolean, t Text, d Date.
    const char *fields;
};

constexpr std::array Tables{
    TableText{"tblFarms", "FarmID:k Farm:t isactive:b"},
    TableText{"tblBlock", "BlockID:k Block:t FarmID:l NoofMpoints:i active:b"},
    TableText{"tblBlockPlant", "BlockPID:k BlockID:l PBlock:t PBActive:b CrVaID:l"},
    TableText{"tblCrVariety", "CrVaID:k CrTyID:l Variety:t"},
    TableText{"tblCrType", "CrTyID:k CrGrID:l Type:t"},
    TableText{"tblCrGroup", "CrGrID:k Group:t"},
    TableText{"tblCTarget", "CTargetID:k ChemTarget:t CTType:t"},
    TableText{"tblTargetFType", "CrTyID:l CTargetID:l"},
    TableText{"tblPMTrans",
              "PMTransID:a BlockID:l PMMethodID:l PMTransDate:d PMTransDateCom:d PMTransWeek:i PMTransCom:b PMRepeat:b"},
    TableText{"tblPMBlockTrans", "PMTransID:l BlockID:l NoofMpoints:i"},
    TableText{"tblPMTarTrans", "PMTarTransID:a PMTransID:l CTargetID:l"},
    TableText{"tblPMData", "PMDataID:a PMTransID:l BlockID:l CTargetID:l PMBPunt:i PMCount:i"},
    TableText{"tblPMDataMax", "PMDataMaxID:a PMTransID:l BlockID:l CTargetID:l PMCountMax:i PMYesMax:i"},
    TableText{"tblSoilBasic", "SoilBasicID:a BlockPID:l SBDate:d"},
    TableText{"tblTempBlockPlant", "tBlockPID:l tPBlock:t tBlockID:l tBlock:t tFlag:b PBActive:b"},
};

TableDef definitionOf(const TableText &text)
{
    const QMap<char, FieldType> types{{'a', FieldType::Long},    {'k', FieldType::Long},    {'l', FieldType::Long},
                                      {'i', FieldType::Integer}, {'b', FieldType::Boolean}, {'t', FieldType::Text},
                                      {'d', FieldType::Date}};
    TableDef definition(QString::fromLatin1(text.name));
    for (const QString &part : QString::fromLatin1(text.fields).split(u' ')) {
        const char kind = part.back().toLatin1();
        Field field = TableDef::CreateField(part.chopped(2), types.value(kind), kind == 't' ? 50 : 0);
        field.autoIncrement = kind == 'a';
        if (kind == 'k') {
            definition.Append(Index{QStringLiteral("PrimaryKey"), {field.name}, true, true});
        }
        definition.Append(field);
    }
    return definition;
}

/// All rows as text: fields parted by commas, rows by semicolons, dates as days.
QString rowsOf(Recordset set)
{
    QStringList rows;
    for (; !set.Eof(); set.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < set.fieldCount(); ++i) {
            const Value value = set.value(i);
            const auto *date = std::get_if<basic::SerialDate>(&value);
            fields.push_back(date != nullptr ? QString::number(date->days()) : set.text(i));
        }
        rows.push_back(fields.join(u','));
    }
    return rows.join(u';');
}

} // namespace

class DialectTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void queriesOfTheScreens_data();
    void queriesOfTheScreens();
    void errorsHaveTheirNumber_data();
    void errorsHaveTheirNumber();
    void changesAreUnderstood_data();
    void changesAreUnderstood();

private:
    QTemporaryDir folder_;
    std::unique_ptr<Database> database_;
};

void DialectTest::initTestCase()
{
    database_ = Workspace::CreateDatabase(folder_.filePath("Dialect.mdb"), ";pwd=secret", ThingsFile::kind());
    for (const TableText &table : Tables) {
        database_->Append(definitionOf(table));
    }
    const std::array statements{
        "INSERT INTO tblFarms (FarmID, Farm, isactive) VALUES (1, 'Rietvlei', True)",
        "INSERT INTO tblFarms (FarmID, Farm, isactive) VALUES (2, 'O''Brien', False)",
        "INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active) VALUES (10, 'B2', 1, 20, True)",
        "INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active) VALUES (11, 'A1', 1, 10, True)",
        "INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active) VALUES (12, 'C3', 2, 5, False)",
        "INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, PBActive, CrVaID) VALUES (100, 10, 'p1', True, 31)",
        "INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, PBActive, CrVaID) VALUES (101, 11, 'P0', False, 31)",
        "INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, PBActive, CrVaID) VALUES (102, 99, 'lost', True, 31)",
        "INSERT INTO tblCrVariety (CrVaID, CrTyID, Variety) VALUES (31, 21, 'Hass')",
        "INSERT INTO tblCrType (CrTyID, CrGrID, Type) VALUES (21, 5, 'Avocado')",
        "INSERT INTO tblCrGroup (CrGrID, [Group]) VALUES (5, 'Subtropical')",
        "INSERT INTO tblCTarget (CTargetID, ChemTarget, CTType) VALUES (7, 'Thrips', 'P')",
        "INSERT INTO tblCTarget (CTargetID, ChemTarget, CTType) VALUES (8, 'Aphid', 'p')",
        "INSERT INTO tblTargetFType (CrTyID, CTargetID) VALUES (21, 7)",
        "INSERT INTO tblTargetFType (CrTyID, CTargetID) VALUES (22, 8)",
        "INSERT INTO tblPMTrans (PMMethodID, PMTransDate, PMTransDateCom, PMTransCom) VALUES (1, #03/02/2026#, #03/05/2026#, "
        "True)",
        "INSERT INTO tblPMTrans (PMMethodID, PMTransDate, PMTransCom) VALUES (2, #03/02/2026#, False)",
        "INSERT INTO tblPMTrans (PMMethodID, PMTransDate, PMTransDateCom, PMTransCom) VALUES (1, #03/01/2025#, #03/01/2025#, "
        "True)",
        "INSERT INTO tblPMDataMax (PMTransID, BlockID, CTargetID, PMCountMax) VALUES (1, 11, 8, 30000)",
        "INSERT INTO tblPMDataMax (PMTransID, BlockID, CTargetID, PMCountMax) VALUES (1, 10, 7, 30000)",
        "INSERT INTO tblPMDataMax (PMTransID, BlockID, CTargetID, PMCountMax) VALUES (3, 10, 7, 4)",
        "INSERT INTO tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount) VALUES (1, 10, 7, 2, 5)",
        "INSERT INTO tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount) VALUES (1, 10, 7, 1, 6)",
        "INSERT INTO tblSoilBasic (BlockPID, SBDate) VALUES (100, #12/31/2025#)",
        "INSERT INTO tblTempBlockPlant (tBlockPID, tPBlock, PBActive) VALUES (100, 'p1', True)",
        "INSERT INTO tblPMBlockTrans (PMTransID, BlockID, NoofMpoints) VALUES (1, 10, 20)",
    };
    for (const char *statement : statements) {
        QCOMPARE(database_->Execute(QString::fromLatin1(statement)), 1);
    }
}

void DialectTest::queriesOfTheScreens_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char *name, const char *sql, const char *rows) {
        QTest::newRow(name) << QString::fromUtf8(sql) << QString::fromUtf8(rows);
    };
    row("true in lower case", "Select * from tblFarms where isactive=true", "1,Rietvlei,True");
    row("number against Boolean",
        " SELECT tblBlock.BlockID, tblBlock.Block, tblBlock.NoofMPoints FROM tblBlock  WHERE active <> 0 order by Block asc",
        "11,A1,10;10,B2,20");
    row("names and key words in any case", "SELECT * FROM TBLPMTARTRANS WHERE pmtransid = 1", "");
    row("from-list join with an alias",
        "Select *, tblBlockPlant.BlockID as TTT from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = tblBlock.BlockID",
        "100,10,p1,True,31,10,B2,1,20,True,10;101,11,P0,False,31,11,A1,1,10,True,11");
    row("five tables",
        "Select tblBlock.BlockID as BlockIDD, tblCrGroup.Group from tblBlockPlant, tblBlock, tblCrVariety, tblCrType, tblCrGroup"
        " where tblBlockPlant.CrVaID = tblCrVariety.CrVaID and tblCrVariety.CrTyID = tblCrType.CrTyID"
        " and tblCrGroup.CrGrID = tblCrType.CrGrID and tblBlock.BlockID = tblBlockPlant.BlockID"
        " and tblBlock.BlockID =10 and tblBlockPlant.PBActive = True order by tblCrVariety.Variety",
        "10,Subtropical");
    row("nested subqueries",
        "Select * from tblCrGroup where CrGrID in (Select CrGrID from tblCrType where CrTyID in (Select CrTyID from "
        " tblCrVariety where CrVaID in (Select CrVaID from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = "
        " tblBlock.BlockID and tblBlock.FarmID = 1)))",
        "5,Subtropical");
    row("condition after a subquery",
        "Select * from tblCrType where CrTyID in (Select CrTyID from tblCrVariety where CrVaID in (Select CrVaID"
        " from tblBlockPlant, tblBlock where tblBlockPlant.BlockID =  tblBlock.BlockID and tblBlock.FarmID = 1)) and "
        "tblCrType.CrGrID =6",
        "");
    row("reserved word as a field", "Select Group from tblCrGroup where Group = 'SUBTROPICAL'", "Subtropical");
    row("field called Type", "Select * from tblCrType where tblCrType.Type = 'avocado' ", "21,5,Avocado");
    row("text without regard to case",
        "Select CTargetID from tblCTarget where tblCTarget.CTType ='P' order by tblCTarget.ChemTarget asc", "8;7");
    row("two quotes", "Select FarmID from tblFarms where Farm = 'O''Brien'", "2");
    row("two quotes find nothing else", "Select FarmID from tblFarms where Farm = 'x'' or 1=1 or ''a'", "");
    row("first month then day",
        "Select PMTransID from tblPMTrans where PMTransCom = True  and tblPMTrans.PMTransDate >= #03/01/2026# and "
        "tblPMTrans.PMTransDate <= "
        "#12/31/2026# order by PMTransDate asc",
        "1");
    row("equal dates come by key", "Select PMTransID from tblPMTrans order by PMTransDate desc", "1;2;3");
    row("not null", "Select PMTransID from tblPMTrans where PMMethodID = 1 and  PMTransDateCom is not null", "1;3");
    row("year of a date",
        "Select PMTransID from tblPMTrans where Datepart('yyyy', tblPMTrans.PMTransDate) =2025 order by PMTransDate asc", "3");
    row("distinct over the product", "Select distinct PMBPunt from tblPMData, tblPMTrans where tblPMData.PMTransID = 1", "1;2");
    row("plain name means the first table",
        "Select distinct BlockID from tblPMDataMax, tblPMTrans Where tblPMDataMax.PMTransID = tblPMTrans.PMTransID", "10;11");
    row("largest", "Select MAX(PMBPunt) from tblPMData where tblPMData.CTargetID = 7", "2");
    row("largest of nothing", "Select MAX(PMBPunt) from tblPMData where tblPMData.CTargetID = 99", "");
    row("ranking, ties by key",
        "SELECT tblPMDataMax.CTargetID, Sum(tblPMDataMax.PMCountMax) AS SumOfPMCountMax FROM tblPMTrans INNER JOIN tblPMDataMax "
        "ON "
        "tblPMTrans.PMTransID = tblPMDataMax.PMTransID Where tblPMTrans.PMMethodID = 1 And tblPMTrans.PMTransCom = True and "
        "tblPMTrans.PMTransDateCom >=#01/01/2026# and tblPMTrans.PMTransDateCom <=#12/31/2026# GROUP BY tblPMDataMax.CTargetID "
        "ORDER BY "
        "Sum(tblPMDataMax.PMCountMax) DESC",
        "7,30000;8,30000");
    row("inner join",
        "SELECT tblPMData.PMBPunt FROM tblPMTrans INNER JOIN tblPMData ON tblPMTrans.PMTransID = tblPMData.PMTransID WHERE "
        "tblPMTrans.PMTransDateCom>=#01/01/2026# AND tblPMTrans.PMTransCom=True AND tblPMData.BlockID=10 order by "
        "tblPMTrans.PMTransDateCom, tblPMTrans.PMTransID,tblPMData.PMBPunt",
        "1;2");
    row("joins in brackets",
        "SELECT d.PMBPunt FROM (tblPMTrans INNER JOIN tblPMData AS d ON (tblPMTrans.PMTransID = d.PMTransID)) INNER JOIN "
        "tblPMBlockTrans b ON b.PMTransID = d.PMTransID WHERE b.NoofMpoints = 20",
        "2;1");
    row("exclamation mark",
        "SELECT tblSoilBasic.*, tblTempBlockPlant.tPBlock FROM tblTempBlockPlant INNER JOIN tblSoilBasic ON "
        "tblTempBlockPlant.tBlockPID = tblSoilBasic.BlockPID  where tblSoilBasic.SBDate >= #12/31/2025# and tblSoilBasic.SBDate "
        "<= "
        "#12/31/2025# and tblTempBlockPlant.PBActive = -1 order by tblTempBlockPlant!tPBlock, tblsoilBasic.SBDate",
        "1,100,46022,p1");
    row("second alias of a field",
        "Select *, tblPMBlockTrans.PMTransID as PMTransIDD from tblPMTrans, tblPMBlockTrans where "
        "tblPMBlockTrans.BlockID = 10 and tblPMBlockTrans.PMtransID = tblPMTrans.PMTransID and tblPMTrans.PMMethodID = 1",
        "1,,1,46083,46086,,True,False,1,10,20,1");
}

void DialectTest::queriesOfTheScreens()
{
    QFETCH(QString, sql);
    QTEST(rowsOf(database_->OpenRecordset(sql)), "rows");
}

void DialectTest::errorsHaveTheirNumber_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("number");
    QTest::newRow("unknown field") << "Select * from tblFarms where Colour = 1" << 3061;
    QTest::newRow("unknown field of a table") << "Select tblFarms.Colour from tblFarms" << 3061;
    QTest::newRow("table that is not in the list") << "Select * from tblFarms where tblBlock.BlockID = 1" << 3061;
    QTest::newRow("unknown table") << "Select * from tblTractors" << 3078;
    QTest::newRow("table of the layer itself") << "Select * from dao_Access" << 3078;
    QTest::newRow("stray quote") << "Select * from tblFarms where Farm = 'O'Brien'" << 3075;
    QTest::newRow("second statement") << "Select * from tblFarms; Delete from tblFarms" << 3075;
    QTest::newRow("comment") << "Select * from tblFarms where FarmID = 1 --and" << 3075;
    QTest::newRow("no date") << "Select * from tblPMTrans where PMTransDate = #13/32/2026#" << 3075;
    QTest::newRow("missing value") << "Select * from tblFarms where FarmID =" << 3075;
    QTest::newRow("missing bracket") << "Select * from tblFarms where (FarmID = 1" << 3075;
    QTest::newRow("nothing selected") << "Select from tblFarms" << 3075;
    QTest::newRow("empty") << "" << 3075;
    QTest::newRow("deleting in a query") << "Delete from tblFarms" << 3075;
    QTest::newRow("unknown part of a date") << "Select Datepart('zz', PMTransDate) from tblPMTrans" << 3075;
}

void DialectTest::errorsHaveTheirNumber()
{
    QFETCH(QString, sql);
    int number = 0;
    try {
        database_->OpenRecordset(sql);
    } catch (const RunTimeError &error) {
        number = error.number();
    }
    QTEST(number, "number");
}

void DialectTest::changesAreUnderstood_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("count");
    QTest::newRow("all rows") << "UPDATE tblPMTrans SET PMRepeat = False" << 0 << 3;
    QTest::newRow("some rows") << "update tblPMTrans set PMRepeat = True, tblPMTrans.PMTransWeek = 5 where PMTransID in (1, 3)"
                               << 0 << 2;
    QTest::newRow("number beyond the field") << "UPDATE tblPMTrans SET PMTransWeek = 99999" << 6 << 0;
    QTest::newRow("text beyond the field") << QString("UPDATE tblFarms SET Farm = '%1'").arg(QString(51, u'x')) << 3163 << 0;
    QTest::newRow("unknown field") << "UPDATE tblFarms SET Colour = 1" << 3061 << 0;
    QTest::newRow("key that is there") << "INSERT INTO tblFarms (FarmID) VALUES (1)" << 3022 << 0;
    QTest::newRow("rows of another table")
        << "INSERT INTO tblTargetFType (CrTyID, CTargetID) SELECT 21, CTargetID FROM tblCTarget" << 0 << 2;
    QTest::newRow("deleting some") << "DELETE FROM tblTargetFType WHERE CTargetID = 7" << 0 << 1;
    QTest::newRow("deleting with a star") << "DELETE * FROM tblTargetFType" << 0 << 2;
    QTest::newRow("a query") << "SELECT * FROM tblFarms" << 3075 << 0;
    QTest::newRow("another statement of SQLite") << "DROP TABLE tblFarms" << 3075 << 0;
}

void DialectTest::changesAreUnderstood()
{
    QFETCH(QString, sql);
    int number = 0;
    int count = 0;
    // Rolled back, so that each row finds the same tables.
    CommitScope scope(*database_);
    try {
        count = database_->Execute(sql);
    } catch (const RunTimeError &error) {
        number = error.number();
    }
    scope.rollback();
    QTEST(number, "error");
    QTEST(count, "count");
}

QTEST_GUILESS_MAIN(DialectTest)
#include "DialectTest.moc"
