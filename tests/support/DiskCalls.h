// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFlags>
#include <QString>

#include <vector>

/// Sits between a test program and the calls of the system by which it and its libraries change files: counts them, records
/// them, lets them fail or ends the process at one of them. A program that links this defines those functions of the C library
/// itself. Files outside the watched folder are left alone. Shared memory and copies inside the file system are not seen.
namespace diskCalls
{

enum class Kind {
    Create = 1,
    Read = 2,
    Write = 4,
    Truncate = 8,
    Sync = 16,
    SyncFolder = 32,
    Remove = 64,
    Rename = 128,
    Link = 256,
    MakeFolder = 512,
    /// A line of the test itself.
    Note = 1024,
};
Q_DECLARE_FLAGS(Kinds, Kind)
Q_DECLARE_OPERATORS_FOR_FLAGS(Kinds)
/// All that change what is on the disk.
inline constexpr Kinds Changes = Kinds(Kind::Create) | Kind::Write | Kind::Truncate | Kind::Sync | Kind::SyncFolder | Kind::Remove
    | Kind::Rename | Kind::Link | Kind::MakeFolder;

struct Call {
    Kind kind;
    /// The name that the file has at the time of the call; the text of a note.
    QByteArray path;
    /// New name of Rename and Link.
    QByteArray target = {};
    /// Of Write; the new length of Truncate.
    qint64 offset = 0;
    QByteArray bytes = {};
};

enum class Effect {
    /// The process is killed before the call, or in the middle of a write.
    Kill,
    KillHalfway,
    /// The call fails: an error of the device, a full disk.
    Fail,
    FailFull,
    /// Half of the bytes are written or read, which is no error.
    Short,
};
enum class Duration { Once, FromNowOn };

/// The folder that the following functions are about; empty for none. Forgets everything else.
void watch(const QString &folder);

/// Has the effect at the call of this number, from 1, counted from now over calls of these kinds; 0 for none.
void failAt(int number, Effect effect, Kinds kinds = Changes, Duration duration = Duration::Once);
/// Such calls since then.
int calls();
/// Whether the effect has taken place.
bool hasFailed();

/// Records the changes from now on; takeRecord ends that.
void record();
std::vector<Call> takeRecord();
/// Adds a line to the record.
void note(const QByteArray &text);

} // namespace diskCalls
