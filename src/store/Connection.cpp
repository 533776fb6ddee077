// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Connection.h"

#include "common/SessionContext.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QFileInfo>

namespace
{

void open(dao::DatabaseHandle &handle, const QString &file, bool readOnly)
{
    try {
        const QString path = basic::findPath(file).value_or(file);
        handle.set(dao::Workspace::OpenDatabase(path, false, readOnly, store::connectText()));
    } catch (const basic::RunTimeError &error) {
        const QString advice =
            QStringLiteral("%1 The program's databases are in %2; \"farmdata check\" checks them, and \"farmdata restore\" "
                           "restores a copy of the pest database.");
        handle.setFailure(QFileInfo(file).fileName(), advice.arg(error.description(), QFileInfo(file).path()));
        throw;
    }
}

} // namespace

void openDatabases(SessionContext &session)
{
    session.MainDBFile = session.DatabasePath + store::fileName(store::DatabaseFile::Main);
    session.PestDBFile = session.DatabasePath + store::fileName(store::DatabaseFile::Pest);
    const QString sprayFile = session.DatabasePath + store::fileName(store::DatabaseFile::Spray);
    const bool readOnly = !session.ViewOnlyReason.isEmpty();
    open(session.dbMain, session.MainDBFile, readOnly);
    open(session.dbPest, session.PestDBFile, readOnly);
    open(session.dbSpray, sprayFile, readOnly);
}
