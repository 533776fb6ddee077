// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TemporaryFarm.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

/// What the crash children of one farm reported as written, and the check for it.
class WriteLog
{
public:
    /// Makes the farm that the crash children expect, and leaves its files closed.
    WriteLog();

    QString appPath() const { return farm_.appPath(); }
    /// Takes a line of a crash child.
    void note(const QString &line);
    /// Whether something was begun and not reported as written.
    bool writeIsOpen() const { return open_.has_value(); }
    QString openKind() const { return open_ ? open_->first() : QString(); }
    /// A journal that a killed program left for the pest database.
    bool hotJournal() const;

    /// Opens the files as the next start would, and returns what is not as it has to be: damage, a reported value that is
    /// missing, a step done in part. What was begun and not reported may be there or not; which, is then known.
    QStringList faults();

private:
    QStringList instructionFaults();
    QStringList cellFaults();
    QStringList importFaults();

    TemporaryFarm farm_;
    /// Words of the line after "begin".
    std::optional<QStringList> open_;
    QHash<int, int> cells_;
    QSet<int> issued_;
    QSet<int> completed_;
    QSet<QString> imported_;
    /// Instructions that existed at the last check, and those issued since.
    qsizetype present_ = 0;
    qsizetype issues_ = 0;
};
