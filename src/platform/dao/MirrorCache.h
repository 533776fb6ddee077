// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dao
{

class Connection;

/// The mirror of a large Jet file between two runs: a file in the user's own cache folder that no other user can read. It is
/// found by what the Jet file holds, so a file that has changed in any byte has none.
class MirrorCache
{
public:
    /// Bytes from which on a Jet file has a cached mirror; reading a smaller one takes no longer.
    static constexpr qint64 SmallestFile = 16 * 1024 * 1024;

    /// For the file as it is now; nothing for a small file, or where there is no folder for it.
    static std::optional<MirrorCache> of(const QString &jetFile);

    /// Fills an empty mirror; false when nothing is stored, or nothing valid.
    bool load(Connection &mirror) const;
    /// Replaces what is stored for this file. Failures are ignored: the mirror is then made anew the next time.
    void save(const Connection &mirror) const;

private:
    MirrorCache(QString folder, QString file, QString content);
    /// What is stored for the file, of whatever content.
    QStringList stored(const QString &content) const;

    QString folder_;
    /// Which Jet file, and what it holds.
    QString file_;
    QString content_;
};

} // namespace dao
