// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListWriter.h"
#include "platform/dao/Workspace.h"
#include "store/Connection.h"
#include "store/lists/ListSession.h"
#include "support/TemporaryFarm.h"

#include <QFile>
#include <QTest>

using lists::List;
using store::DatabaseFile;

namespace
{

lists::Change added(List list, std::int32_t key, const QStringList &cells)
{
    return {list, std::nullopt, lists::Record{key, lists::Cells(cells.begin(), cells.end())}};
}

} // namespace

/// Changes reach the files whole, over nothing that another program has written, and can be taken back.
class ListWriterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void rowsAreAddedChangedAndDeleted();
    void changeOfAnotherProgramIsAConflict();
    void rowDeletedElsewhereIsAConflict();
    void keyTakenElsewhereIsAConflict();
    void keysAreNeverUsedAgain();
    void rowInUseIsNotDeleted();
    void inactiveWorkerCannotBePicked();
    void olderFileGetsWhatItLacks();
    void cropTypesOfAPestFollow();
    void seasonsHaveNoKey();
    void undoAndRedo();
    void undoDoesNotDeleteWhatIsInUse();
    void nothingIsWrittenWhenOneFileCannotBe();

private:
    lists::Change changed(List list, std::int32_t key, int column, const QString &cell) const;
    lists::Change deleted(List list, std::int32_t key) const;
    QStringList blocks() const;
    void write(const std::vector<lists::Change> &changes);

    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<lists::ListSession> session_;
};

void ListWriterTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->addBlock({QStringLiteral("Dam"), 1, 8, true});
    farm_->addBlock({QStringLiteral("Hill"), 1, 5, true});
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Orange"), QStringLiteral("Valencia"));
    session_ = std::make_unique<lists::ListSession>(farm_->session);
    session_->reload();
}

void ListWriterTest::cleanup()
{
    session_.reset();
    farm_.reset();
}

lists::Change ListWriterTest::changed(List list, std::int32_t key, int column, const QString &cell) const
{
    const lists::Record before = *session_->lists().find(list, key);
    lists::Record after = before;
    after.set(column, cell);
    return {list, before, after};
}

lists::Change ListWriterTest::deleted(List list, std::int32_t key) const
{
    return {list, *session_->lists().find(list, key), std::nullopt};
}

QStringList ListWriterTest::blocks() const
{
    return farm_->rows(DatabaseFile::Main, QStringLiteral("Select BlockID, Block, NoofMpoints from tblBlock order by BlockID"));
}

void ListWriterTest::write(const std::vector<lists::Change> &changes)
{
    const std::vector<lists::Conflict> conflicts = session_->write(changes);
    QVERIFY2(conflicts.empty(), conflicts.empty() ? "" : qPrintable(conflicts.front().reason));
}

void ListWriterTest::rowsAreAddedChangedAndDeleted()
{
    write({added(List::Blocks, 3, {QStringLiteral("1"), QStringLiteral("O'Connor"), QStringLiteral("12"), QStringLiteral("0")}),
           changed(List::Blocks, 1, 2, QString()), deleted(List::Blocks, 2)});
    QCOMPARE(blocks(), QStringList({QStringLiteral("1|Dam|NULL"), QStringLiteral("3|O'Connor|12")}));
    QCOMPARE(farm_->count(QStringLiteral("tblBlock"), QStringLiteral("active <> 0")), 1);
    lists::FarmLists read;
    read.read(farm_->session);
    QCOMPARE(read.records(List::Blocks), session_->lists().records(List::Blocks));
}

void ListWriterTest::changeOfAnotherProgramIsAConflict()
{
    farm_->session.dbMain->Execute(QStringLiteral("UPDATE tblBlock SET NoofMpoints = 9 where BlockID = 1"));
    const std::vector<lists::Conflict> conflicts = session_->write(
        {changed(List::Blocks, 2, 1, QStringLiteral("Hillside")), changed(List::Blocks, 1, 1, QStringLiteral("Weir"))});
    QCOMPARE(conflicts.size(), std::size_t(1));
    QVERIFY2(conflicts.front().reason.contains(QLatin1String("changed the block \"Dam\"")), qPrintable(conflicts.front().reason));
    QCOMPARE(blocks(), QStringList({QStringLiteral("1|Dam|9"), QStringLiteral("2|Hill|5")}));
    // What is stored shows now, and the change can be made over it.
    QCOMPARE(session_->lists().find(List::Blocks, 1)->cell(2), QStringLiteral("9"));
    QVERIFY(!session_->canUndo());
    write({changed(List::Blocks, 1, 1, QStringLiteral("Weir"))});
    QCOMPARE(blocks().front(), QStringLiteral("1|Weir|9"));
}

void ListWriterTest::rowDeletedElsewhereIsAConflict()
{
    farm_->session.dbMain->Execute(QStringLiteral("DELETE FROM tblBlock where BlockID = 2"));
    const auto conflicts = session_->write({changed(List::Blocks, 2, 1, QStringLiteral("Hillside"))});
    QCOMPARE(conflicts.size(), std::size_t(1));
    QVERIFY(conflicts.front().reason.contains(QLatin1String("deleted the block \"Hill\"")));
    QVERIFY(!session_->lists().find(List::Blocks, 2));
}

void ListWriterTest::keyTakenElsewhereIsAConflict()
{
    farm_->addBlock({QStringLiteral("Elsewhere"), 1, 5, true});
    const auto conflicts = session_->write(
        {added(List::Blocks, 3, {QStringLiteral("1"), QStringLiteral("Mine"), QStringLiteral("5"), QStringLiteral("1")})});
    QCOMPARE(conflicts.size(), std::size_t(1));
    QVERIFY2(conflicts.front().reason.contains(QLatin1String("\"Elsewhere\"")), qPrintable(conflicts.front().reason));
    QCOMPARE(farm_->count(QStringLiteral("tblBlock")), 3);
    QCOMPARE(session_->lists().lastKey(List::Blocks), 3);
}

void ListWriterTest::keysAreNeverUsedAgain()
{
    write({deleted(List::Blocks, 2)});
    lists::FarmLists read;
    read.read(farm_->session);
    QCOMPARE(read.lastKey(List::Blocks), 2);
    write({added(List::Blocks, 3, {QStringLiteral("1"), QStringLiteral("New"), QStringLiteral("5"), QStringLiteral("1")})});
    write({deleted(List::Blocks, 3)});
    read.read(farm_->session);
    QCOMPARE(read.lastKey(List::Blocks), 3);
    QCOMPARE(farm_->count(store::LastKeysTable), 1);
}

void ListWriterTest::rowInUseIsNotDeleted()
{
    farm_->addWorker(QStringLiteral("D'Arcy"));
    farm_->addTarget(QStringLiteral("Red scale"));
    farm_->addInstruction({.person = QStringLiteral("D'Arcy"), .blocks = {{1, 1}}, .targets = {1}});
    farm_->addInstruction({.person = QStringLiteral("D'Arcy"), .blocks = {{1, 1}}, .targets = {1}});
    farm_->addPlanting({QStringLiteral("Hill a"), 2, true, 1});
    farm_->add(u"tblSoilBasic", {{u"BlockPID", 1}});
    session_->reload();
    const auto reasonFor = [&](List list, std::int32_t key) {
        const auto conflicts = session_->write({deleted(list, key)});
        return conflicts.empty() ? QString() : conflicts.front().reason;
    };
    QVERIFY(reasonFor(List::Blocks, 1).contains(QLatin1String("2 instructions refer to it")));
    QVERIFY(reasonFor(List::Blocks, 2).contains(QLatin1String("1 planted block refers to it")));
    QVERIFY(reasonFor(List::Plantings, 1).contains(QLatin1String("1 analysis refers to it")));
    QVERIFY(reasonFor(List::Workers, 1).contains(QLatin1String("2 instructions")));
    QVERIFY(reasonFor(List::Pests, 1).contains(QLatin1String("2 instructions")));
    QVERIFY(reasonFor(List::Farms, 1).contains(QLatin1String("2 blocks")));
    QVERIFY(reasonFor(List::CropGroups, 1).contains(QLatin1String("1 crop type")));
    QVERIFY(reasonFor(List::CropTypes, 1).contains(QLatin1String("1 variety")));
    QVERIFY(reasonFor(List::Varieties, 1).contains(QLatin1String("1 planted block")));
    QCOMPARE(farm_->count(QStringLiteral("tblBlock")), 2);
}

void ListWriterTest::inactiveWorkerCannotBePicked()
{
    farm_->addWorker(QStringLiteral("Anna"));
    farm_->addWorker(std::nullopt);
    session_->reload();
    QCOMPARE(session_->lists().find(List::Workers, 2)->cells, (lists::Cells{QString(), QStringLiteral("0")}));
    write({changed(List::Workers, 1, 1, QStringLiteral("0"))});
    const QString sql = QStringLiteral("Select WNickName, WInactive from tblWorker where WorkerID = 1");
    QCOMPARE(farm_->rows(DatabaseFile::Main, sql), QStringList(QStringLiteral("NULL|Anna")));
    session_->reload();
    QCOMPARE(session_->lists().find(List::Workers, 1)->cells, (lists::Cells{QStringLiteral("Anna"), QStringLiteral("0")}));
    write({changed(List::Workers, 1, 1, QStringLiteral("1"))});
    QCOMPARE(farm_->rows(DatabaseFile::Main, sql), QStringList(QStringLiteral("Anna|NULL")));
}

/// Files of earlier versions have neither the table of last keys nor the name of an inactive worker.
void ListWriterTest::olderFileGetsWhatItLacks()
{
    farm_->close();
    QVERIFY(QFile::remove(farm_->filePath(DatabaseFile::Main)));
    {
        const auto database =
            dao::Workspace::CreateDatabase(farm_->filePath(DatabaseFile::Main), store::connectText(), TemporaryFarm::kind());
        for (const store::SchemaTable &table : store::schema()) {
            if (table.file != DatabaseFile::Main || table.optional) {
                continue;
            }
            store::SchemaTable older = table;
            std::erase_if(older.fields, [&](const dao::Field &field) { return store::isOptionalField(table, field.name); });
            database->Append(older.definition());
        }
    }
    farm_->open();
    farm_->addWorker(QStringLiteral("Anna"));
    farm_->addWorker(QStringLiteral("Busi"));
    session_->reload();
    const lists::Change inactive = changed(List::Workers, 1, 1, QStringLiteral("0"));
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        // A Jet file takes no further text field.
        QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, session_->write({inactive}));
        QCOMPARE(farm_->count(QStringLiteral("tblWorker"), QStringLiteral("WNickName = 'Anna'")), 1);
    } else {
        write({inactive});
    }
    write({deleted(List::Workers, 2)});
    lists::FarmLists read;
    read.read(farm_->session);
    QCOMPARE(read.find(List::Workers, 1)->cell(0), QStringLiteral("Anna"));
    QCOMPARE(read.lastKey(List::Workers), 2);
}

void ListWriterTest::cropTypesOfAPestFollow()
{
    farm_->addVariety(QStringLiteral("Citrus"), QStringLiteral("Lemon"), QStringLiteral("Eureka"));
    session_->reload();
    write({added(List::Pests, 1, {QStringLiteral("Red scale"), QStringLiteral("P"), QStringLiteral("1")})});
    write({changed(List::Pests, 1, 2, QStringLiteral("2"))});
    const QString sql = QStringLiteral("Select CrTyID, CTargetID from tblTargetFType");
    QCOMPARE(farm_->rows(DatabaseFile::Spray, sql), QStringList(QStringLiteral("2|1")));
    // A change of the crop types alone, by another program, is noticed too.
    farm_->add(u"tblTargetFType", {{u"CrTyID", 1}, {u"CTargetID", 1}});
    QCOMPARE(session_->write({changed(List::Pests, 1, 0, QStringLiteral("Scale"))}).size(), std::size_t(1));
    write({deleted(List::Pests, 1)});
    QVERIFY(farm_->rows(DatabaseFile::Spray, sql).isEmpty());
}

void ListWriterTest::seasonsHaveNoKey()
{
    for (const char *year : {"2025", "2026", "2026"}) {
        farm_->add(u"tblYear", {{u"FYear", QString::fromLatin1(year)}});
    }
    session_->reload();
    write({changed(List::Seasons, 1, 0, QStringLiteral("2024/2025")), deleted(List::Seasons, 3),
           added(List::Seasons, 4, {QStringLiteral("2027")})});
    QCOMPARE(farm_->rows(DatabaseFile::Main, QStringLiteral("Select FYear from tblYear order by FYear")),
             QStringList({QStringLiteral("2024/2025"), QStringLiteral("2026"), QStringLiteral("2027")}));
}

void ListWriterTest::undoAndRedo()
{
    const QStringList atFirst = blocks();
    write({changed(List::Blocks, 1, 1, QStringLiteral("Weir")),
           added(List::Blocks, 3, {QStringLiteral("1"), QStringLiteral("New"), QStringLiteral("5"), QStringLiteral("1")})});
    const QStringList afterFirst = blocks();
    write({deleted(List::Blocks, 2)});
    const QStringList afterSecond = blocks();
    QVERIFY(session_->undo().empty());
    QCOMPARE(blocks(), afterFirst);
    QVERIFY(session_->undo().empty());
    QCOMPARE(blocks(), atFirst);
    QVERIFY(!session_->canUndo());
    QVERIFY(session_->redo().empty());
    QVERIFY(session_->redo().empty());
    QCOMPARE(blocks(), afterSecond);
    QVERIFY(!session_->canRedo());
    // A step over what another program has written meanwhile is dropped, and says so.
    QVERIFY(session_->undo().empty());
    farm_->session.dbMain->Execute(QStringLiteral("UPDATE tblBlock SET Block = 'Lake' where BlockID = 1"));
    QCOMPARE(session_->undo().size(), std::size_t(1));
    QCOMPARE(farm_->count(QStringLiteral("tblBlock"), QStringLiteral("Block = 'Lake'")), 1);
    QVERIFY(!session_->canUndo());
}

void ListWriterTest::undoDoesNotDeleteWhatIsInUse()
{
    write({added(List::Blocks, 3, {QStringLiteral("1"), QStringLiteral("New"), QStringLiteral("5"), QStringLiteral("1")})});
    farm_->addInstruction({.blocks = {{3, 1}}});
    QCOMPARE(session_->undo().size(), std::size_t(1));
    QCOMPARE(farm_->count(QStringLiteral("tblBlock")), 3);
}

void ListWriterTest::nothingIsWrittenWhenOneFileCannotBe()
{
    farm_->handle(DatabaseFile::Spray)
        .set(dao::Workspace::OpenDatabase(farm_->filePath(DatabaseFile::Spray), false, true, store::connectText()));
    session_->reload();
    QVERIFY(session_->lists().isReadOnly(List::Pests) && !session_->lists().isReadOnly(List::Blocks));
    QVERIFY_THROWS_EXCEPTION(
        basic::RunTimeError,
        session_->write({changed(List::Blocks, 1, 1, QStringLiteral("Weir")),
                         added(List::Pests, 1, {QStringLiteral("Red scale"), QStringLiteral("P"), QString()})}));
    QCOMPARE(blocks().front(), QStringLiteral("1|Dam|8"));
    QVERIFY(!session_->canUndo());
}

QTEST_GUILESS_MAIN(ListWriterTest)
#include "ListWriterTest.moc"
