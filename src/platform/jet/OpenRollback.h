// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

namespace jet
{

struct RollbackFile;

/// The rollback file of a database that is open for writing. Its name waits for the disk once; from one change to the next the
/// file stays and only its content is replaced, so that a change waits three times for the disk and never for the folder.
/// Used under the lock that keeps other users out.
class OpenRollback
{
public:
    explicit OpenRollback(const QString &databasePath);

    /// On the disk, with its name, when it returns. Errors 3026, 3043, 3051.
    void write(const RollbackFile &rollback);
    /// The change is complete: on the disk when it returns. Error 3043.
    void clear();
    /// Failures are ignored: an empty one means nothing, and any other is used at the next opening.
    void remove();

private:
    /// Whether another user has removed the file or replaced it by one whose name may not be on the disk.
    bool isGone() const;

    QString databasePath_;
    QFile file_;
};

} // namespace jet
