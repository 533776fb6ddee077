// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

#include <memory>

namespace jet
{

/// A user's slot in the lock file next to a database: an entry with the computer's name, and a lock that lasts as long as the
/// object, or until its process ends in whatever way. The last user to leave removes the file. The layout and the locks are
/// those that other programs use for these files.
class LockFile
{
public:
    /// Users at most.
    static constexpr int Slots = 255;

    /// NAME.ldb for NAME.mdb.
    static QString pathFor(const QString &databasePath);

    /// Takes a slot; waits up to two seconds while another user writes. Error 3045 when there is none, 3051 when the file cannot
    /// be made.
    explicit LockFile(const QString &databasePath);
    ~LockFile();
    LockFile(const LockFile &) = delete;
    LockFile &operator=(const LockFile &) = delete;

    /// While a user has locked out all others, two seconds at most; without becoming a user.
    static void awaitWriter(const QString &databasePath);

    /// From 0.
    int slot() const { return slot_; }
    /// Whether another user is present in a slot.
    bool isTaken(int slot) const;

    /// Locks out all other users for its lifetime.
    class Exclusive
    {
    public:
        explicit Exclusive(LockFile &file) : file_(file) {}
        ~Exclusive() { file_.unlockOthers(); }
        Exclusive(const Exclusive &) = delete;
        Exclusive &operator=(const Exclusive &) = delete;

    private:
        LockFile &file_;
    };
    enum class Wait { No, Briefly };
    /// Error 3045 when another user is present, naming the computers. A program that only reads is present for a moment when it
    /// finds a change half-way; waiting briefly, a second at most, lets it go.
    std::unique_ptr<Exclusive> lockOthers(Wait wait = Wait::Briefly);

private:
    bool takeSlot();
    bool isStillThere() const;
    bool tryLockOthers();
    void unlockOthers();
    QString othersPresent() const;

    QString databasePath_;
    mutable QFile file_;
    int slot_ = -1;
};

} // namespace jet
