// SPDX-License-Identifier: GPL-3.0-or-later
#include "Check.h"
#include "DemoFarm.h"
#include "Import.h"
#include "Output.h"
#include "Progress.h"
#include "Staging.h"

#include "common/FarmLock.h"
#include "platform/basic/RunTimeError.h"
#include "store/BackupFolder.h"
#include "store/Backups.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <functional>
#include <vector>

namespace
{

QString folderOf(const QString &argument)
{
    return QDir(argument).absolutePath();
}

bool create(const QStringList &arguments)
{
    Staging staging(arguments[0]);
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        store::createDatabaseFile(file, staging.path(file));
    }
    staging.moveIn();
    printLine(QStringLiteral("Three empty databases were made in %1.").arg(folderOf(arguments[0])));
    return true;
}

bool demo(const QStringList &arguments)
{
    Staging staging(arguments[0]);
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        store::createDatabaseFile(file, staging.path(file));
    }
    fillDemoFarm(staging.folder());
    staging.moveIn();
    printLine(QStringLiteral("A demonstration farm was made in %1.").arg(folderOf(arguments[0])));
    return true;
}

bool import(const QStringList &arguments)
{
    importFarm(folderOf(arguments[0]), arguments[1]);
    return true;
}

bool check(const QStringList &arguments)
{
    return checkFarm(arguments[0]);
}

bool backup(const QStringList &arguments)
{
    const QString folder = folderOf(arguments[0]);
    QString copy;
    {
        Progress progress(QStringLiteral("Copying"), 100);
        copy = store::backUpNow(folder, [&](int percent) { progress.show(percent); });
    }
    printLine(QStringLiteral("Copied to %1.").arg(copy));
    for (const store::Backup &one : store::BackupFolder(folder).copies()) {
        printLine(QStringLiteral("  %1  %2").arg(one.day.toString(Qt::ISODate), one.path));
    }
    return true;
}

bool restore(const QStringList &arguments)
{
    const QString folder = folderOf(arguments[0]);
    const FarmLock::Attempt attempt = FarmLock::tryLock(folder);
    if (!attempt.lock) {
        throw basic::RunTimeError(
            basic::ErrorNumber::PermissionDenied,
            QStringLiteral("%1 has the farm open; close the program, then restore again. Nothing was changed.")
                .arg(attempt.holder->text()));
    }
    // A plain name is searched for among the copies.
    const QString inBackups = folder + QStringLiteral("/Backups/") + arguments[1];
    const QString file = !QFileInfo::exists(arguments[1]) && QFileInfo::exists(inBackups) ? inBackups : arguments[1];
    QString replaced;
    {
        Progress progress(QStringLiteral("Checking the copy"), 100);
        replaced = store::restoreBackup(folder, QFileInfo(file).absoluteFilePath(), [&](int percent) { progress.show(percent); });
    }
    printLine(QStringLiteral("Restored %1.").arg(file));
    if (!replaced.isEmpty()) {
        printLine(QStringLiteral("The replaced file was moved to %1.").arg(replaced));
    }
    return true;
}

struct Command {
    QString name;
    QStringList arguments;
    QString help;
    std::function<bool(const QStringList &)> run;
};

const std::vector<Command> &commands()
{
    static const std::vector<Command> all{
        {"create", {"DIR"}, "makes three empty databases", create},
        {"demo", {"DIR"}, "makes the databases of an invented farm office with two seasons of work", demo},
        {"import", {"FROM", "DIR"}, "makes the databases from the suite's three Jet files in the folder FROM", import},
        {"check", {"DIR"}, "reads everything and reports faults; changes nothing", check},
        {"backup", {"DIR"}, "makes a dated copy of PestMon.mdb; those of ten days are retained", backup},
        {"restore", {"DIR", "FILE"}, "restores PestMon.mdb from a copy; the replaced file is moved to Backups", restore},
    };
    return all;
}

void printHelp()
{
    printLine(QStringLiteral("farmdata makes, fills, imports, checks and backs up a Databases folder.\n\nUsage:"));
    for (const Command &command : commands()) {
        printLine(QStringLiteral("  farmdata %1 %2\n      %3").arg(command.name, command.arguments.join(u' '), command.help));
    }
    printLine(
        QStringLiteral("\nDIR is the Databases folder. Existing databases are never overwritten. The exit status is 0 only on "
                       "success."));
}

/// 0 done, 1 failed, 2 called the wrong way.
int run(const QStringList &arguments)
{
    if (arguments.contains("--help") || arguments.contains("-h")) {
        printHelp();
        return 0;
    }
    const auto found = std::find_if(commands().begin(), commands().end(), [&](const Command &command) {
        return !arguments.isEmpty() && command.name == arguments.front();
    });
    if (found == commands().end() || arguments.size() - 1 != found->arguments.size()) {
        printError(QStringLiteral("farmdata: %1")
                       .arg(found == commands().end()
                                ? QStringLiteral("no such command; see farmdata --help")
                                : QStringLiteral("usage: farmdata %1 %2").arg(found->name, found->arguments.join(u' '))));
        return 2;
    }
    try {
        return found->run(arguments.mid(1)) ? 0 : 1;
    } catch (const basic::RunTimeError &error) {
        printError(QStringLiteral("farmdata: %1").arg(error.description()));
        return 1;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return run(QCoreApplication::arguments().mid(1));
}
