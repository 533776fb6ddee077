// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Where the program looks for its own things.
struct ProgramPlaces {
    /// The folder of the running program.
    QString program;
    /// The folder kept for this user, in his data directory.
    QString user;
    /// Templates as they were installed, to be copied for the user.
    QString templates;

    /// Of this program as it runs.
    static ProgramPlaces ofThisProgram();
};

/// The folder of Databases, Templates and Reports: the program's own when it holds Databases, else the user's.
QString programFolder(const ProgramPlaces &places);

/// Makes the folder and copies the templates that are not in it; those that are there are kept, an office may have put its logo
/// on them. Error 75 when a folder or file cannot be made.
void makeProgramFolder(const QString &folder, const QString &templates);

bool holdsDatabases(const QString &folder);

/// What the user reads when the folder holds no databases: where they belong and which command brings them there.
QString firstFarmText(const QString &folder);
