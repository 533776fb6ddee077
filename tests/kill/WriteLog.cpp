// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteLog.h"

#include "CrashChild.h"

#include "platform/dao/Workspace.h"
#include "platform/excel/BiffReader.h"
#include "platform/excel/CellValue.h"
#include "platform/jet/PageCommit.h"
#include "store/AnalysisTables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <numeric>

using store::DatabaseFile;

namespace
{

using Counts = QHash<int, int>;
/// Instruction, block and pest.
using Pair = std::array<int, 3>;

constexpr int Plantings = 60;
constexpr int MaxRows =
    crashChild::Pests * std::accumulate(std::begin(crashChild::PointsOfBlock), std::end(crashChild::PointsOfBlock), 0);

Counts rowsPerInstruction(dao::Database &database, const char *table)
{
    Counts counts;
    dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select PMTransID from %1").arg(QLatin1String(table)));
    for (; !rows.Eof(); rows.MoveNext()) {
        ++counts[rows.longValue(0)];
    }
    return counts;
}

std::map<Pair, int> sums(dao::Database &database, const char *field, const char *table)
{
    std::map<Pair, int> sums;
    dao::Recordset rows = database.OpenRecordset(
        QStringLiteral("Select PMTransID, BlockID, CTargetID, %1 from %2").arg(QLatin1String(field), QLatin1String(table)));
    for (; !rows.Eof(); rows.MoveNext()) {
        sums[{rows.longValue(0), rows.longValue(1), rows.longValue(2)}] += rows.longValue(3);
    }
    return sums;
}

} // namespace

WriteLog::WriteLog()
{
    farm_.addFarm(QStringLiteral("Rivier's Oord"));
    for (const int points : crashChild::PointsOfBlock) {
        farm_.addBlock({.name = QStringLiteral("Blok %1").arg(points), .points = points});
    }
    for (int planting = 0; planting < Plantings; ++planting) {
        farm_.addPlanting({});
    }
    farm_.addWorker(crashChild::Worker);
    for (int pest = 1; pest <= crashChild::Pests; ++pest) {
        farm_.addTarget(QStringLiteral("Pest %1").arg(pest));
    }
    renamePlantings();
    farm_.close();
}

void WriteLog::renamePlantings()
{
    farm_.session.dbMain->Execute(
        QStringLiteral("Update tblBlockPlant Set PBlock = 'Planting of the year %1'").arg(++plantings_));
}

void WriteLog::note(const QString &line)
{
    QStringList words = line.split(u' ');
    const QString verb = words.takeFirst();
    if (verb == u"begin") {
        open_ = words;
        return;
    }
    if (verb != u"end" || !open_) {
        return;
    }
    const QStringList done = *open_;
    open_.reset();
    const QString &kind = done[0];
    const int key = done.value(1).toInt();
    if (kind == u"cell") {
        cells_.insert(key, done[2].toInt());
    } else if (kind == u"save") {
        issued_.insert(words.value(0).toInt());
    } else if (kind == u"resave") {
        ++savedAgain_[key];
    } else if (kind == u"delete") {
        deleted_.insert(key);
        ++deletions_;
    } else if (kind == u"complete") {
        completed_.insert(key);
    } else if (kind == u"analysis") {
        analyses_.insert(words.value(0).toInt(), key);
    } else if (kind == u"noanalysis") {
        analyses_.remove(key);
    } else if (kind == u"blocks") {
        copiedPlantings_ = plantings_;
    } else if (kind == u"workbook") {
        workbook_ = done[1];
    } else if (kind == u"import") {
        imported_.insert(done[1]);
    }
    issues_ += kind == u"save" || kind == u"complete" ? 1 : 0;
}

QString WriteLog::journal() const
{
    const QString path = farm_.filePath(DatabaseFile::Pest);
    return TemporaryFarm::kind() == dao::FileKind::Jet ? jet::rollbackPath(path) : path + QStringLiteral("-journal");
}

bool WriteLog::hotJournal() const
{
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        return jet::hasRollback(farm_.filePath(DatabaseFile::Pest));
    }
    return QFileInfo(journal()).size() > 0;
}

void WriteLog::removeJournal() const
{
    QFile::remove(journal());
}

bool WriteLog::isOpen(QStringView kind, int key) const
{
    return open_ && open_->first() == kind && open_->value(1).toInt() == key;
}

QStringList WriteLog::faults()
{
    QStringList found;
    try {
        farm_.open();
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            found += farm_.handle(file)->checkIntegrity();
        }
        found += instructionFaults() + cellFaults() + analysisFaults() + blockFaults() + workbookFaults() + importFaults();
        // A file that is marked as written halfway could only be read.
        farm_.session.dbPest->Execute(QStringLiteral("Delete from tblPMTempPest where PMTempPestID = 0"));
        renamePlantings();
    } catch (const basic::RunTimeError &error) {
        found.append(error.description());
    }
    farm_.close();
    open_.reset();
    return found;
}

/// An instruction is there with all of its rows or not at all.
QStringList WriteLog::instructionFaults()
{
    QStringList found;
    dao::Database &pest = *farm_.session.dbPest;
    QSet<int> present;
    QSet<int> completed;
    dao::Recordset rows = pest.OpenRecordset(QStringLiteral("Select PMTransID, PMTransCom from tblPMTrans"));
    for (; !rows.Eof(); rows.MoveNext()) {
        present.insert(rows.longValue(0));
        if (rows.boolean(1)) {
            completed.insert(rows.longValue(0));
        }
    }
    for (const int key : issued_ | completed_) {
        if (!present.contains(key) && !deleted_.contains(key) && !isOpen(u"delete", key)) {
            found.append(QStringLiteral("instruction %1, which was reported, is missing").arg(key));
        }
        if (completed_.contains(key) && !completed.contains(key)) {
            found.append(QStringLiteral("an instruction reported as completed is not"));
        }
    }
    // Each save has issued one, each completion a successor; the last of them may have gone either way.
    const auto more = present.size() - present_ - issues_ + deletions_;
    const bool mayIssue = openKind() == u"save" || openKind() == u"complete";
    if (more < (openKind() == u"delete" ? -1 : 0) || more > (mayIssue ? 1 : 0)) {
        found.append(QStringLiteral("%1 instructions were issued and %2 deleted, %3 are there in place of %4")
                         .arg(issues_)
                         .arg(deletions_)
                         .arg(present.size())
                         .arg(present_));
    }
    if (more < 0) {
        deleted_.insert(open_->at(1).toInt());
    }
    present_ = present.size();
    issues_ = 0;
    deletions_ = 0;
    return found + rowFaults(present);
}

/// Its rows remain when an instruction is deleted. Saving again adds all rows of results, less one of each kind.
QStringList WriteLog::rowFaults(const QSet<int> &present)
{
    QStringList found;
    dao::Database &pest = *farm_.session.dbPest;
    const Counts data = rowsPerInstruction(pest, "tblPMData");
    for (const int key : present | deleted_) {
        int &saves = savedAgain_[key];
        if (isOpen(u"resave", key) && data.value(key) != MaxRows + saves * (MaxRows - 1)) {
            ++saves;
        }
    }
    const auto wantedResults = [this](int key) { return MaxRows + savedAgain_.value(key) * (MaxRows - 1); };
    for (const auto &[table, wanted] :
         {std::pair{"tblPMBlockTrans", static_cast<int>(std::size(crashChild::PointsOfBlock))},
          std::pair{"tblPMTarTrans", crashChild::Pests}, std::pair{"tblPMData", 0}, std::pair{"tblPMDataMax", 0}}) {
        const Counts counts = rowsPerInstruction(pest, table);
        for (const int key : present | deleted_) {
            if (counts.value(key) != (wanted > 0 ? wanted : wantedResults(key))) {
                found.append(QStringLiteral("%1 holds %2 rows of instruction %3").arg(table).arg(counts.value(key)).arg(key));
            }
        }
        for (auto count = counts.begin(); count != counts.end(); ++count) {
            if (!present.contains(count.key()) && !deleted_.contains(count.key())) {
                found.append(QStringLiteral("%1 holds rows of instruction %2, which is not there").arg(table).arg(count.key()));
            }
        }
    }
    return found;
}

QStringList WriteLog::cellFaults()
{
    QStringList found;
    dao::Database &pest = *farm_.session.dbPest;
    if (open_ && open_->first() == u"cell") {
        const int key = open_->at(1).toInt();
        const int now =
            pest.OpenRecordset(QStringLiteral("Select PMCount from tblPMData where PMDataID = %1").arg(key)).longValue(0);
        if (now == open_->at(2).toInt()) {
            cells_.insert(key, now);
        }
    }
    Counts stored;
    dao::Recordset rows = pest.OpenRecordset(QStringLiteral("Select PMDataID, PMCount from tblPMData where PMCount <> 0"));
    for (; !rows.Eof(); rows.MoveNext()) {
        stored.insert(rows.longValue(0), rows.longValue(1));
    }
    if (stored != cells_) {
        found.append(QStringLiteral("the cells in the file are not those that were reported"));
    }
    // A total belongs to its cell: both or neither.
    if (sums(pest, "PMCount", "tblPMData") != sums(pest, "PMCountMax", "tblPMDataMax")) {
        found.append(QStringLiteral("a total is not the sum of its cells"));
    }
    return found;
}

/// One number is in all fields of an analysis.
QStringList WriteLog::analysisFaults()
{
    QStringList found;
    QMap<int, int> stored;
    dao::Recordset rows = farm_.session.dbPest->OpenRecordset(QStringLiteral("Select * from tblLeaveAnalysis"));
    for (; !rows.Eof(); rows.MoveNext()) {
        const int number = rows.text(store::LeaveAnalysis.season).toInt();
        stored.insert(rows.longValue(store::LeaveAnalysis.table.key), number);
        for (const store::AnalysisValueField &field : store::LeaveValues) {
            if (rows.number(field.name) != number) {
                found.append(QStringLiteral("an analysis is there by half"));
            }
        }
    }
    QMap<int, int> without = analyses_;
    if (openKind() == u"noanalysis") {
        without.remove(open_->at(1).toInt());
    }
    QMap<int, int> with = stored;
    if (openKind() == u"analysis" && stored.size() == analyses_.size() + 1) {
        with.remove(stored.key(open_->at(1).toInt()));
    }
    if (with != analyses_ && stored != without) {
        found.append(QStringLiteral("the analyses in the file are not those that were reported"));
    }
    analyses_ = stored;
    return found;
}

/// The copy is that of one state of the plantings.
QStringList WriteLog::blockFaults()
{
    QMap<QString, int> names;
    dao::Recordset rows = farm_.session.dbPest->OpenRecordset(QStringLiteral("Select tPBlock from tblTempBlockPlant"));
    for (; !rows.Eof(); rows.MoveNext()) {
        ++names[rows.text(0)];
    }
    const int copied = names.isEmpty() ? 0 : names.firstKey().section(u' ', -1).toInt();
    const bool isExpected = copied == copiedPlantings_ || (openKind() == u"blocks" && copied == plantings_);
    copiedPlantings_ = copied;
    if (!isExpected || names.size() > 1 || (!names.isEmpty() && names.first() != Plantings)) {
        return {
            QStringLiteral("the copied blocks are of the state %1, %2 of %3").arg(copied).arg(names.value({})).arg(Plantings)};
    }
    return {};
}

QStringList WriteLog::workbookFaults()
{
    const QString path = appPath() + crashChild::Workbook;
    QString stored;
    if (QFileInfo::exists(path)) {
        const auto book = excel::readXls(path);
        stored = excel::textOf(*book, *book->sheets.front()->cellIfAny(199, 7));
    }
    const bool isExpected = stored == workbook_ || (openKind() == u"workbook" && stored == open_->at(1));
    workbook_ = stored;
    return isExpected ? QStringList() : QStringList{QStringLiteral("the workbook is not the one that was reported")};
}

/// A folder that an import was to make holds three whole databases or is not there.
QStringList WriteLog::importFaults()
{
    QStringList found;
    for (const QString &name : QDir(appPath()).entryList({QStringLiteral("Imported-*")}, QDir::Dirs)) {
        const QString folder = appPath() + u'/' + name;
        if (name.contains(QStringLiteral(".new-"))) {
            QDir(folder).removeRecursively();
            continue;
        }
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            found += dao::Workspace::OpenDatabase(folder + u'/' + store::fileName(file), false, true, store::connectText())
                         ->checkIntegrity();
        }
        imported_.remove(folder);
        QDir(folder).removeRecursively();
    }
    if (!imported_.isEmpty()) {
        found.append(QStringLiteral("a folder reported as imported is missing"));
    }
    return found;
}
