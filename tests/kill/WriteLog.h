// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TemporaryFarm.h"

#include <QHash>
#include <QMap>
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
    /// Removes it, as if the program wrote none.
    void removeJournal() const;

    /// Opens the files as the next start would, and returns what is not as it has to be: damage, a reported value that is
    /// missing, a step done in part. What was begun and not reported may be there or not; which, is then known. Gives the next
    /// start blocks to copy.
    QStringList faults();

private:
    QString journal() const;
    bool isOpen(QStringView kind, int key) const;
    QStringList instructionFaults();
    QStringList rowFaults(const QSet<int> &present);
    QStringList cellFaults();
    QStringList analysisFaults();
    QStringList blockFaults();
    QStringList workbookFaults();
    QStringList importFaults();
    void renamePlantings();

    TemporaryFarm farm_;
    /// Words of the line after "begin".
    std::optional<QStringList> open_;
    QHash<int, int> cells_;
    QSet<int> issued_;
    QSet<int> completed_;
    QSet<int> deleted_;
    /// How often an instruction was saved again.
    QHash<int, int> savedAgain_;
    QSet<QString> imported_;
    /// Their numbers by key.
    QMap<int, int> analyses_;
    /// Of the workbook; none before the first save.
    QString workbook_;
    /// Which names the plantings have, and their copy.
    int plantings_ = 0;
    int copiedPlantings_ = 0;
    /// Instructions that existed at the last check, and those issued and deleted since.
    qsizetype present_ = 0;
    qsizetype issues_ = 0;
    qsizetype deletions_ = 0;
};
