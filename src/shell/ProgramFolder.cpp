// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ProgramFolder.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

using basic::ErrorNumber;
using basic::RunTimeError;

namespace
{

void copyTemplate(const QString &from, const QString &to)
{
    if (basic::findPath(to)) {
        return;
    }
    if (!QFile::copy(from, to)) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The template %1 could not be made.").arg(to));
    }
    // The installed file may be read-only; the office may change its copy.
    basic::followFolder(to);
}

/// Permissions do not tell on every system, and a read-only disk has them too.
bool isWritable(const QString &folder)
{
    return !basic::UnfinishedFile(folder + QStringLiteral("/XXXXXX")).path().isEmpty();
}

} // namespace

ProgramFolders ProgramFolders::ofThisProgram()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString name = QStringLiteral("/farm-monitoring");
    const QString installed = QDir::cleanPath(program + QStringLiteral("/../share") + name + QStringLiteral("/Templates"));
    return {.program = program,
            .user = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + name,
            .templates = basic::findPath(program + QStringLiteral("/Templates")).value_or(installed)};
}

QString programFolder(const ProgramFolders &folders)
{
    const bool isUnpacked = basic::findPath(folders.program + QStringLiteral("/Templates")).has_value();
    return holdsDatabases(folders.program) || (isUnpacked && isWritable(folders.program)) ? folders.program : folders.user;
}

void makeProgramFolder(const QString &folder, const QString &templates)
{
    const QString own = basic::pathForWriting(folder + QStringLiteral("/Templates"));
    if (!basic::makeFolder(own)) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The folder %1 could not be made.").arg(own));
    }
    const QStringList names = QDir(templates).entryList({QStringLiteral("*.xls")}, QDir::Files);
    for (const QString &name : names) {
        copyTemplate(templates + u'/' + name, own + u'/' + name);
    }
}

bool holdsDatabases(const QString &folder)
{
    return basic::findPath(folder + QStringLiteral("/Databases")).has_value();
}

QString firstFarmText(const QString &folder)
{
    const QString text = QStringLiteral("There is no farm here yet. The program looks for its databases in\n%1\n\n"
                                        "An office that has a farm already brings it in with a command in a terminal:\n\n"
                                        "Import the databases of the suite from their folder:\n"
                                        "farmdata import FOLDER \"%1\"\n\n"
                                        "Try the program with an invented farm:\n"
                                        "farmdata demo \"%1\"\n\n"
                                        "A new office begins in the Main Module. Do you want to open it?");
    return text.arg(QDir::toNativeSeparators(folder + QStringLiteral("/Databases")));
}
