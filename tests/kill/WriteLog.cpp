// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteLog.h"

#include "CrashChild.h"

#include "platform/dao/Workspace.h"
#include "platform/jet/PageCommit.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <numeric>

using store::DatabaseFile;

namespace
{

using Counts = QHash<int, int>;
/// Instruction, block and pest.
using Pair = std::array<int, 3>;

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
    farm_.addWorker(crashChild::Worker);
    for (int pest = 1; pest <= crashChild::Pests; ++pest) {
        farm_.addTarget(QStringLiteral("Pest %1").arg(pest));
    }
    farm_.close();
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
    if (done[0] == u"cell") {
        cells_.insert(done[1].toInt(), done[2].toInt());
    } else if (done[0] == u"save") {
        issued_.insert(words.value(0).toInt());
    } else if (done[0] == u"complete") {
        completed_.insert(done[1].toInt());
    }
    issues_ += done[0] == u"save" || done[0] == u"complete" ? 1 : 0;
    if (done[0] == u"import") {
        imported_.insert(done[1]);
    }
}

bool WriteLog::hotJournal() const
{
    const QString path = farm_.filePath(DatabaseFile::Pest);
    const bool isJet = TemporaryFarm::kind() == dao::FileKind::Jet;
    return QFileInfo(isJet ? jet::rollbackPath(path) : path + QStringLiteral("-journal")).size() > 0;
}

QStringList WriteLog::faults()
{
    QStringList found;
    try {
        farm_.open();
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            found += farm_.handle(file)->checkIntegrity();
        }
        found += instructionFaults() + cellFaults() + importFaults();
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
    for (const auto &[table, wanted] :
         {std::pair{"tblPMBlockTrans", static_cast<int>(std::size(crashChild::PointsOfBlock))},
          std::pair{"tblPMTarTrans", crashChild::Pests}, std::pair{"tblPMData", MaxRows}, std::pair{"tblPMDataMax", MaxRows}}) {
        const Counts counts = rowsPerInstruction(pest, table);
        for (const int key : present) {
            if (counts.value(key) != wanted) {
                found.append(QStringLiteral("%1 holds %2 rows of instruction %3").arg(table).arg(counts.value(key)).arg(key));
            }
        }
        for (auto count = counts.begin(); count != counts.end(); ++count) {
            if (!present.contains(count.key())) {
                found.append(QStringLiteral("%1 holds rows of instruction %2, which is not there").arg(table).arg(count.key()));
            }
        }
    }
    if (!present.contains(issued_)) {
        found.append(QStringLiteral("an instruction reported as saved is missing"));
    }
    if (!completed.contains(completed_)) {
        found.append(QStringLiteral("an instruction reported as completed is not"));
    }
    // Each save has issued one, each completion a successor; the last of them may have gone either way.
    const auto more = present.size() - present_ - issues_;
    if (more < 0 || more > (open_ && (openKind() == u"save" || openKind() == u"complete") ? 1 : 0)) {
        found.append(QStringLiteral("%1 instructions were issued, %2 are new").arg(issues_).arg(present.size() - present_));
    }
    present_ = present.size();
    issues_ = 0;
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
