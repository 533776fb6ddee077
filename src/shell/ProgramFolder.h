// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The folders that the program may use.
struct ProgramFolders {
    /// The folder of the running program.
    QString program;
    /// This user's folder, in the data directory.
    QString user;
    /// The installed templates, to be copied for the user; those next to the program where it is unpacked.
    QString templates;

    static ProgramFolders ofThisProgram();
};

/// The folder of Databases, Templates and Reports: the program's own when it holds Databases or, unpacked where this user can
/// write, Templates; else the user's.
QString programFolder(const ProgramFolders &folders);

/// Makes the folder and copies the templates that it lacks; existing ones may have the office's logo. Error 75 when a folder or
/// file cannot be made.
void makeProgramFolder(const QString &folder, const QString &templates);

bool holdsDatabases(const QString &folder);

/// The question when the folder has no databases: where they belong, which commands bring them in, and whether to open the main
/// module for a new office.
QString firstFarmText(const QString &folder);
