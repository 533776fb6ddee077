// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Connection.h"

#include "common/SessionContext.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QFileInfo>

#include <algorithm>

namespace
{

/// The mirror of a Jet file gets the indexes that the queries need; the file itself has little more than primary keys.
void addMirrorIndexes(dao::Database &database, store::DatabaseFile file)
{
    const QStringList present = database.tableNames();
    for (const store::SchemaTable &table : store::schema()) {
        if (table.file != file || !present.contains(table.name, Qt::CaseInsensitive)) {
            continue;
        }
        const dao::TableDef existing = database.tableDef(table.name);
        const dao::TableDef needed = table.definition();
        for (const dao::Index &wanted : needed.Indexes()) {
            const auto sameFields = [&wanted](const dao::Index &index) { return index.fields == wanted.fields; };
            const auto exists = [&existing](const QString &field) { return existing.findField(field) != nullptr; };
            if (!wanted.primary && std::none_of(existing.Indexes().begin(), existing.Indexes().end(), sameFields)
                && std::all_of(wanted.fields.begin(), wanted.fields.end(), exists)) {
                database.Append(table.name, wanted);
            }
        }
    }
}

enum class Access { Read, Write };

void open(dao::DatabaseHandle &handle, const QString &requested, store::DatabaseFile file, Access access)
{
    try {
        const QString path = basic::findPath(requested).value_or(requested);
        const bool readOnly = access == Access::Read;
        auto database = dao::Workspace::OpenDatabase(path, false, readOnly, store::connectText());
        if (database->isMirrored()) {
            addMirrorIndexes(*database, file);
        }
        handle.set(std::move(database));
    } catch (const basic::RunTimeError &error) {
        const QString advice =
            QStringLiteral("%1 The program's databases are in %2; \"farmdata check\" checks them, and \"farmdata restore\" "
                           "restores a copy of the pest database.");
        handle.setFailure(QFileInfo(requested).fileName(), advice.arg(error.description(), QFileInfo(requested).path()));
        throw;
    }
}

} // namespace

void openDatabases(SessionContext &session)
{
    session.MainDBFile = session.DatabasePath + store::fileName(store::DatabaseFile::Main);
    session.PestDBFile = session.DatabasePath + store::fileName(store::DatabaseFile::Pest);
    const QString sprayFile = session.DatabasePath + store::fileName(store::DatabaseFile::Spray);
    const bool viewOnly = !session.ViewOnlyReason.isEmpty();
    // Jet files of the suite belong to its main module; the monitoring only reads them.
    const auto masterAccess = [viewOnly](const QString &file) {
        const bool isJet = dao::Workspace::fileKind(basic::findPath(file).value_or(file)) == dao::FileKind::Jet;
        return viewOnly || isJet ? Access::Read : Access::Write;
    };
    open(session.dbMain, session.MainDBFile, store::DatabaseFile::Main, masterAccess(session.MainDBFile));
    open(session.dbPest, session.PestDBFile, store::DatabaseFile::Pest, viewOnly ? Access::Read : Access::Write);
    open(session.dbSpray, sprayFile, store::DatabaseFile::Spray, masterAccess(sprayFile));
}

void openListDatabases(SessionContext &session)
{
    session.MainDBFile = session.DatabasePath + store::fileName(store::DatabaseFile::Main);
    const QString sprayFile = session.DatabasePath + store::fileName(store::DatabaseFile::Spray);
    // Each by itself: with one of them the other's lists can still be worked on, and the handle has the reason.
    basic::runOrIgnore([&] { open(session.dbMain, session.MainDBFile, store::DatabaseFile::Main, Access::Write); });
    basic::runOrIgnore([&] { open(session.dbSpray, sprayFile, store::DatabaseFile::Spray, Access::Write); });
}
