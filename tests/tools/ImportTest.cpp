// SPDX-License-Identifier: GPL-3.0-or-later
#include "FarmdataProcess.h"

#include "platform/dao/Workspace.h"
#include "store/Schema.h"
#include "store/Upgrades.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <cmath>

using store::DatabaseFile;

namespace
{

constexpr int PageSize = 4096;

std::unique_ptr<dao::Database> openCopy(const QString &folder, DatabaseFile file)
{
    return dao::Workspace::OpenDatabase(folder + '/' + store::fileName(file), false, true, store::connectText());
}

/// Rows of a table as the mdbtools' own program gives them: a reader that is not ours.
QList<QStringList> exported(const QString &file, const QString &table)
{
    QProcess process;
    process.setProcessEnvironment([] {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("MDBICONV", "UTF-8");
        return environment;
    }());
    process.start("mdb-export", {"-Q", "-d", "\t", "-0", "<NULL>", "-T", "%Y-%m-%d %H:%M:%S", file, table});
    if (!process.waitForFinished()) {
        return {};
    }
    QList<QStringList> rows;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty()) {
            rows.append(QString::fromUtf8(line).split('\t'));
        }
    }
    return rows;
}

bool isSame(const dao::Value &value, dao::FieldType type, const QString &expected)
{
    if (std::holds_alternative<dao::Null>(value)) {
        return expected == "<NULL>";
    }
    switch (type) {
    case dao::FieldType::Text:
        // The other reader takes zero-length text for null.
        return expected == std::get<QString>(value) || (expected == "<NULL>" && std::get<QString>(value).isEmpty());
    case dao::FieldType::Boolean:
        return expected == (std::get<bool>(value) ? "1" : "0");
    case dao::FieldType::Date: {
        const auto date = std::get<basic::SerialDate>(value);
        return QDateTime(date.date(), date.time()).toString("yyyy-MM-dd HH:mm:ss") == expected;
    }
    case dao::FieldType::Single:
        // The other reader prints eight digits.
        return std::abs(std::get<double>(value) - expected.toDouble()) <= 1e-7 * std::abs(expected.toDouble());
    default:
        return QString::number(std::get<std::int32_t>(value)) == expected;
    }
}

/// A copy of the fixtures that a case may spoil.
class Fixtures
{
public:
    Fixtures()
    {
        for (const char *name : {"ZN4.mdb", "PestMon.mdb", "ZN4_Spray.mdb"}) {
            put(name, read(QStringLiteral(JET_FIXTURES "/") + name));
        }
    }
    QString from() const { return folder_.path(); }
    QString to() const { return folder_.filePath("farm/Databases"); }
    QString file(const QString &name) const { return folder_.filePath(name); }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QString &name, const QByteArray &bytes) const
    {
        QFile out(file(name));
        if (out.open(QIODevice::WriteOnly)) {
            out.write(bytes);
        }
    }
    void remove(const QString &name) const { QFile::remove(file(name)); }
    FarmdataRun import() const { return farmdata({"import", from(), to()}); }

private:
    QTemporaryDir folder_;
};

int definitionPage(const QByteArray &file, quint32 rowCount, int after = 0)
{
    for (int page = after; page < file.size() / PageSize; ++page) {
        const char *bytes = file.constData() + page * PageSize;
        if (bytes[0] == 2 && qFromLittleEndian<quint32>(bytes + 16) == rowCount) {
            return page;
        }
    }
    return -1;
}

int dataPageOf(const QByteArray &file, int definition)
{
    for (int page = 1; page < file.size() / PageSize; ++page) {
        const char *bytes = file.constData() + page * PageSize;
        if (bytes[0] == 1 && qFromLittleEndian<quint32>(bytes + 4) == static_cast<quint32>(definition)) {
            return page;
        }
    }
    return -1;
}

} // namespace

/// The suite's files, read by the tool and judged by another reader.
class ImportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyValueComesThrough_data()
    {
        QTest::addColumn<QString>("pest");
        QTest::newRow("plain") << "PestMon.mdb";
        QTest::newRow("with secondary indexes") << "PestMon_indexed.mdb";
    }

    void everyValueComesThrough()
    {
        QFETCH(QString, pest);
        const Fixtures fixtures;
        fixtures.remove("PestMon.mdb");
        fixtures.put("pestmon.MDB", Fixtures::read(QStringLiteral(JET_FIXTURES "/") + pest));
        const FarmdataRun run = fixtures.import();
        QVERIFY2(run.status == 0, qPrintable(run.errors));
#ifdef Q_OS_WIN
        QSKIP("mdb-export does not run on Windows.");
#endif
        for (const store::SchemaTable &table : store::schema()) {
            if (table.optional) {
                continue;
            }
            const QString source = table.file == DatabaseFile::Pest ? "pestmon.MDB" : store::fileName(table.file);
            QList<QStringList> expected = exported(fixtures.file(source), table.name);
            QVERIFY2(!expected.isEmpty(), "mdb-export must be installed");
            const QStringList header = expected.takeFirst();
            const auto copy = openCopy(fixtures.to(), table.file);
            const dao::TableDef definition = copy->tableDef(table.name);
            dao::Recordset rows = copy->OpenRecordset("Select * from " + table.name);
            QVERIFY(run.output.contains(QString("%1  %2 of %2 rows").arg(table.name, -20).arg(expected.size())));
            QCOMPARE(rows.RecordCount(), static_cast<int>(expected.size()));
            for (const QStringList &row : expected) {
                for (int i = 0; i < header.size(); ++i) {
                    const dao::Field *field = definition.findField(header[i]);
                    QVERIFY2(isSame(rows.value(header[i]), field->type, row[i]),
                             qPrintable(QString("%1.%2: %3").arg(table.name, header[i], row[i])));
                }
                rows.MoveNext();
            }
        }
    }

    void whatOtherReadersGetWrongComesThrough()
    {
        const Fixtures fixtures;
        QCOMPARE(fixtures.import().status, 0);
        const auto pest = openCopy(fixtures.to(), DatabaseFile::Pest);
        dao::Recordset instructions = pest->OpenRecordset("Select * from tblPMTrans order by PMTransID");
        QCOMPARE(instructions.text("PMNotes"), QString("Eerste rondte"));
        instructions.MoveNext();
        instructions.MoveNext();
        QCOMPARE(instructions.text("PMNotes"), QString("Renée's rondte – ½ dag"));
        QCOMPARE(instructions.date("PMTransDate")->days(), 45460.4375);
        instructions.MoveNext();
        QVERIFY(instructions.isNull("PMNotes"));
        QCOMPARE(instructions.date("PMTransDateCom")->days(), 45665.656365740739);
        instructions.MoveNext();
        QVERIFY(!instructions.isNull("PMNotes"));
        QCOMPARE(instructions.text("PMNotes"), QString());
        QVERIFY(!instructions.hasField("PMRepeat"));
        QVERIFY(!pest->tableNames().contains("tblTempBlockPlant"));
        // A Single has 32 bits: the double of the nearest float, not of the decimal.
        const auto leaf = pest->OpenRecordset("Select LA_Na from tblLeaveAnalysis where LeaveAnalysisID = 1");
        QCOMPARE(leaf.number(0), static_cast<double>(-0.91F));
        QCOMPARE(leaf.text(0), QString("-0.91"));
    }

    void theNextKeyComesAfterTheLastGivenOut()
    {
        const Fixtures fixtures;
        QByteArray pest = Fixtures::read(fixtures.file("PestMon.mdb"));
        // The instruction with the highest key was deleted: the counter is beyond it.
        const int page = definitionPage(pest, 6);
        qToLittleEndian<quint32>(40, pest.data() + page * PageSize + 20);
        fixtures.put("PestMon.mdb", pest);
        QCOMPARE(fixtures.import().status, 0);
        SessionContext session;
        session.dbMain.set(openCopy(fixtures.to(), DatabaseFile::Main));
        session.dbPest.set(dao::Workspace::OpenDatabase(fixtures.to() + "/PestMon.mdb", false, false, store::connectText()));
        for (const auto &[table, key] : {std::pair{"tblPMTrans", 41}, std::pair{"tblPMTarTrans", 20}}) {
            dao::Recordset rows =
                session.dbPest->OpenRecordset(QString("Select * from %1").arg(table), dao::RecordsetType::Dynaset);
            rows.AddNew();
            QCOMPARE(rows.longValue(0), key);
            rows.CancelUpdate();
        }
        // The first start adds what the suite's file lacked.
        store::Ensure_TempBlockTable(session, [](const basic::RunTimeError &) { QFAIL("no step may fail"); });
        store::Ensure_PMRepeatField(session);
        store::Update_TempBlock(session);
        QCOMPARE(session.dbPest->OpenRecordset("Select * from tblTempBlockPlant").RecordCount(), 9);
        QVERIFY(!session.dbPest->OpenRecordset("Select * from tblPMTrans").isNull("PMRepeat"));
    }

    void movedAndDeletedRowsKeepTheOrder()
    {
        const Fixtures fixtures;
        QByteArray main = Fixtures::read(fixtures.file("ZN4.mdb"));
        const int definition = definitionPage(main, 10);
        const int data = dataPageOf(main, definition);
        QVERIFY(data > 0);
        const auto slot = [&](int number) { return main.data() + data * PageSize + 14 + 2 * number; };
        const auto begin = [&](int number) { return qFromLittleEndian<quint16>(slot(number)); };
        // The second row has outgrown the page: it is on a page of its own, and a pointer replaces it.
        const int length = begin(0) - begin(1);
        QByteArray page(PageSize, '\0');
        page[0] = 1;
        qToLittleEndian<quint32>(static_cast<quint32>(definition), page.data() + 4);
        qToLittleEndian<quint16>(1, page.data() + 12);
        const int home = PageSize - length;
        qToLittleEndian<quint16>(static_cast<quint16>(home | 0x8000), page.data() + 14);
        page.replace(home, length, main.mid(data * PageSize + begin(1), length));
        const auto newPage = static_cast<quint32>(main.size() / PageSize);
        qToLittleEndian<quint32>(newPage << 8, main.data() + data * PageSize + begin(1));
        qToLittleEndian<quint16>(static_cast<quint16>(begin(1) | 0x4000), slot(1));
        // The third is deleted, and so the definition counts nine.
        qToLittleEndian<quint16>(static_cast<quint16>(begin(2) | 0xC000), slot(2));
        qToLittleEndian<quint32>(9, main.data() + definition * PageSize + 16);
        fixtures.put("ZN4.mdb", main + page);
        const FarmdataRun run = fixtures.import();
        QVERIFY2(run.status == 0, qPrintable(run.errors));
        QStringList keys;
        const auto copy = openCopy(fixtures.to(), DatabaseFile::Main);
        for (dao::Recordset rows = copy->OpenRecordset("Select * from tblBlockPlant"); !rows.Eof(); rows.MoveNext()) {
            keys.append(rows.text("BlockPID"));
        }
        QCOMPARE(keys, (QStringList{"10", "12", "14", "15", "17", "18", "19", "21", "22"}));
    }

    void whatCannotBeImportedIsNamedAndLeavesNothing_data()
    {
        using Spoil = std::function<void(const Fixtures &)>;
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QString>("named");
        const auto row = [](const char *name, const Spoil &spoil, const QString &named) {
            QTest::newRow(name) << spoil << named;
        };
        const auto change = [](const QString &file, const std::function<void(QByteArray &)> &edit) {
            return Spoil([file, edit](const Fixtures &fixtures) {
                QByteArray bytes = Fixtures::read(fixtures.file(file));
                edit(bytes);
                fixtures.put(file, bytes);
            });
        };
        row(
            "missing file", [](const Fixtures &fixtures) { fixtures.remove("ZN4_Spray.mdb"); }, "ZN4_Spray.mdb");
        row(
            "folder of that name",
            [](const Fixtures &fixtures) {
                fixtures.remove("ZN4.mdb");
                QDir(fixtures.from()).mkdir("ZN4.mdb");
            },
            "ZN4.mdb");
        row("empty file", change("PestMon.mdb", [](QByteArray &bytes) { bytes.clear(); }), "no Jet database");
        row("cut within a page", change("PestMon.mdb", [](QByteArray &bytes) { bytes.chop(100); }), "is damaged");
        row("cut between pages", change("PestMon.mdb", [](QByteArray &bytes) { bytes.truncate(40 * PageSize); }), "PestMon.mdb");
        row(
            "another file's tables",
            [](const Fixtures &fixtures) { fixtures.put("PestMon.mdb", Fixtures::read(fixtures.file("ZN4_Spray.mdb"))); },
            "lacks the table tblPMTrans");
        row("a field of another name",
            change("ZN4.mdb",
                   [](QByteArray &bytes) { bytes.replace(QByteArray("i\0s\0a\0c\0t", 9), QByteArray("i\0s\0o\0f\0f", 9)); }),
            "the table tblFarms lacks the field isactive");
        row("a row fewer than the definition counts",
            change("PestMon.mdb",
                   [](QByteArray &bytes) {
                       qToLittleEndian<quint32>(282, bytes.data() + definitionPage(bytes, 281) * PageSize + 16);
                   }),
            "table tblPMData, 281 rows can be read, but its definition counts 282");
        row(
            "databases in the target",
            [](const Fixtures &fixtures) {
                QDir().mkpath(fixtures.to());
                fixtures.put("farm/Databases/zn4.mdb", "mine");
            },
            "exists already");
    }

    void whatCannotBeImportedIsNamedAndLeavesNothing()
    {
        using Spoil = std::function<void(const Fixtures &)>;
        QFETCH(Spoil, spoil);
        QFETCH(QString, named);
        const Fixtures fixtures;
        spoil(fixtures);
        const FarmdataRun run = fixtures.import();
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains(named), qPrintable(run.errors));
        QVERIFY(!QFile::exists(fixtures.to() + "/PestMon.mdb"));
        QStringList others = QDir(fixtures.file("farm")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        others.removeAll("Databases");
        QCOMPARE(others, QStringList());
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "ImportTest.moc"
