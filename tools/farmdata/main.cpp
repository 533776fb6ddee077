// SPDX-License-Identifier: GPL-3.0-or-later
#include "Check.h"
#include "DemoFarm.h"
#include "Export.h"
#include "Import.h"
#include "Lists.h"
#include "Output.h"
#include "Progress.h"

#include "common/FarmLock.h"
#include "platform/basic/RunTimeError.h"
#include "store/BackupFolder.h"
#include "store/Backups.h"
#include "store/Staging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <functional>
#include <vector>

namespace
{

const QString DryRun = QStringLiteral("--dry-run");
const QString ByName = QStringLiteral("--by-name");
const QString Jet = QStringLiteral("--jet");

QString folderOf(const QString &argument)
{
    return QDir(argument).absolutePath();
}

bool create(const QStringList &arguments)
{
    createDatabases(arguments[0], arguments.contains(Jet) ? dao::FileKind::Jet : dao::FileKind::Sqlite);
    printLine(QStringLiteral("Three empty databases were made in %1.").arg(folderOf(arguments[0])));
    return true;
}

bool demo(const QStringList &arguments)
{
    Staging staging(arguments[0]);
    staging.createEmpty();
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

bool exportAll(const QStringList &arguments)
{
    if (arguments.contains(Jet)) {
        exportToJet(folderOf(arguments[0]), arguments[1]);
    } else {
        exportToCsv(folderOf(arguments[0]), folderOf(arguments[1]));
    }
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

bool listsExport(const QStringList &arguments)
{
    exportLists(arguments[0], arguments[1]);
    return true;
}

bool listsImport(const QStringList &arguments)
{
    return importLists(arguments[0], arguments[1], {arguments.contains(DryRun), arguments.contains(ByName)});
}

struct Command {
    /// One or two words.
    QString name;
    QStringList arguments;
    QString help;
    /// Takes the arguments, and behind them the options that were given.
    std::function<bool(const QStringList &)> run;
    QStringList options = {};

    QString usage() const
    {
        QStringList words{QStringLiteral("farmdata"), name};
        for (const QString &option : options) {
            words.append(QStringLiteral("[%1]").arg(option));
        }
        return (words + arguments).join(u' ');
    }
    /// How many words of a command line are its name; 0 when they are those of another command.
    qsizetype wordsIn(const QStringList &line) const
    {
        const QStringList words = name.split(u' ');
        return line.mid(0, words.size()) == words ? words.size() : 0;
    }
};

const std::vector<Command> &commands()
{
    static const std::vector<Command> all{
        {"create", {"DIR"}, "makes three empty databases, with --jet three Jet files", create, {Jet}},
        {"demo", {"DIR"}, "makes the databases of an invented farm office with two seasons of work", demo},
        {"import", {"FROM", "DIR"}, "makes the databases from the suite's three Jet files in the folder FROM", import},
        {"export",
         {"DIR", "TO"},
         "writes each table to a .csv file in the folder TO; with --jet the databases as Jet files; counts every row",
         exportAll,
         {Jet}},
        {"check", {"DIR"}, "reads everything and reports faults; changes nothing", check},
        {"backup", {"DIR"}, "makes a dated copy of PestMon.mdb; those of ten days are retained", backup},
        {"restore", {"DIR", "FILE"}, "restores PestMon.mdb from a copy; the replaced file is moved to Backups", restore},
        {"lists export", {"DIR", "FILE"}, "writes farms, blocks, crops, workers, pests and seasons to a workbook", listsExport},
        {"lists import",
         {"DIR", "FILE"},
         "takes them from a workbook or .csv, all rows or none; a row without key is new",
         listsImport,
         {DryRun, ByName}},
    };
    return all;
}

void printHelp()
{
    printLine(QStringLiteral("farmdata makes, fills, imports, checks and backs up a Databases folder.\n\nUsage:"));
    for (const Command &command : commands()) {
        printLine(QStringLiteral("  %1\n      %2").arg(command.usage(), command.help));
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
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&](const Command &command) { return command.wordsIn(arguments) > 0; });
    if (found == commands().end()) {
        printError(QStringLiteral("farmdata: no such command; see farmdata --help"));
        return 2;
    }
    QStringList given = arguments.mid(found->wordsIn(arguments));
    QStringList options;
    for (const QString &option : found->options) {
        if (given.removeAll(option) > 0) {
            options.append(option);
        }
    }
    if (given.size() != found->arguments.size()) {
        printError(QStringLiteral("farmdata: usage: %1").arg(found->usage()));
        return 2;
    }
    try {
        return found->run(given + options) ? 0 : 1;
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
