// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListHolders.h"

#include "platform/basic/TextFiles.h"
#include "platform/dao/Workspace.h"
#include "store/AnalysisTables.h"
#include "store/SqlText.h"

#include <QSet>

#include <algorithm>

namespace lists
{

using store::sqlText;

namespace
{

/// Where a table names a row of a list: by its key, or by its name as text.
struct Holder {
    List list;
    store::DatabaseFile file;
    QStringView table;
    QStringView field;
    QStringView singular;
    /// Rows that count as one when they agree in it; empty for rows that count by themselves.
    QStringView counted;
};

const std::vector<Holder> &holders()
{
    using store::DatabaseFile;
    static const std::vector<Holder> all = [] {
        std::vector<Holder> made{
            {List::Farms, DatabaseFile::Main, u"tblBlock", u"FarmID", u"block", {}},
            {List::Blocks, DatabaseFile::Main, u"tblBlockPlant", u"BlockID", u"planted block", {}},
            {List::Blocks, DatabaseFile::Pest, u"tblPMBlockTrans", u"BlockID", u"instruction", u"PMTransID"},
            {List::Blocks, DatabaseFile::Pest, u"tblPMTrans", u"BlockID", u"instruction", u"PMTransID"},
            {List::CropGroups, DatabaseFile::Main, u"tblCrType", u"CrGrID", u"crop type", {}},
            {List::CropTypes, DatabaseFile::Main, u"tblCrVariety", u"CrTyID", u"variety", {}},
            {List::CropTypes, DatabaseFile::Spray, u"tblTargetFType", u"CrTyID", u"pest", {}},
            {List::Varieties, DatabaseFile::Main, u"tblBlockPlant", u"CrVaID", u"planted block", {}},
            {List::Workers, DatabaseFile::Pest, u"tblPMTrans", u"PMPerson", u"instruction", u"PMTransID"},
            {List::Pests, DatabaseFile::Pest, u"tblPMTarTrans", u"CTargetID", u"instruction", u"PMTransID"},
            {List::Seasons, DatabaseFile::Pest, store::LeaveAnalysis.table.name, store::LeaveAnalysis.season, u"analysis", {}},
            {List::Seasons, DatabaseFile::Pest, store::FruitAnalysis.table.name, store::FruitAnalysis.season, u"analysis", {}},
        };
        for (const store::AnalysisTable &analysis : {store::LeaveAnalysis, store::FruitAnalysis, store::SoilBasicAnalysis,
                                                     store::SoilMicroAnalysis, store::SoilExtractionAnalysis}) {
            made.push_back({List::Plantings, DatabaseFile::Pest, analysis.table.name, u"BlockPID", u"analysis", {}});
        }
        return made;
    }();
    return all;
}

QString condition(const Holder &holder, const Record &record)
{
    const bool isByName = holder.list == List::Workers || holder.list == List::Seasons;
    if (!isByName) {
        return sqlText(holder.field, u" = ", record.key);
    }
    QString name = record.cell(tableOf(holder.list).nameColumn);
    return sqlText(holder.field, u" = '", name.replace(u'\'', QStringLiteral("''")), u"'");
}

QString plural(const QString &singular)
{
    if (singular.endsWith(u'y')) {
        return singular.left(singular.size() - 1) + QStringLiteral("ies");
    }
    return singular.endsWith(QLatin1String("sis")) ? singular.left(singular.size() - 2) + QStringLiteral("es") : singular + u's';
}

} // namespace

QString Holders::text() const
{
    QStringList parts;
    for (const Kind &kind : kinds) {
        parts.append(QStringLiteral("%1 %2").arg(kind.count).arg(kind.count == 1 ? kind.singular : plural(kind.singular)));
    }
    const QString last = parts.isEmpty() ? QString() : parts.takeLast();
    return parts.isEmpty() ? last : QStringLiteral("%1 and %2").arg(parts.join(QStringLiteral(", ")), last);
}

dao::Database &HolderReader::database(store::DatabaseFile file)
{
    if (file == store::DatabaseFile::Main) {
        return *session_.dbMain;
    }
    if (file == store::DatabaseFile::Spray) {
        return *session_.dbSpray;
    }
    if (session_.dbPest.isSet()) {
        return *session_.dbPest;
    }
    if (!pest_) {
        const QString path = session_.DatabasePath + store::fileName(file);
        pest_ = dao::Workspace::OpenDatabase(basic::findPath(path).value_or(path), false, true, store::connectText());
    }
    return *pest_;
}

Holders HolderReader::holdersOf(List list, const Record &record)
{
    Holders found;
    // One instruction may name a block in two tables.
    QHash<QString, QSet<std::int32_t>> counted;
    for (const Holder &holder : holders()) {
        if (holder.list != list) {
            continue;
        }
        const QString where = sqlText(u" from ", holder.table, u" where ", condition(holder, record));
        const QString singular = holder.singular.toString();
        int count = 0;
        if (holder.counted.isEmpty()) {
            count = database(holder.file).OpenRecordset(sqlText(u"Select Count(*)", where)).longValue(0);
        } else {
            QSet<std::int32_t> &keys = counted[singular];
            const qsizetype before = keys.size();
            dao::Recordset rows = database(holder.file).OpenRecordset(sqlText(u"Select distinct ", holder.counted, where));
            for (; !rows.Eof(); rows.MoveNext()) {
                keys.insert(rows.longValue(0));
            }
            count = static_cast<int>(keys.size() - before);
        }
        const auto known = std::find_if(found.kinds.begin(), found.kinds.end(),
                                        [&](const Holders::Kind &kind) { return kind.singular == singular; });
        if (count > 0 && known != found.kinds.end()) {
            known->count += count;
        } else if (count > 0) {
            found.kinds.push_back({singular, count});
        }
    }
    return found;
}

} // namespace lists
