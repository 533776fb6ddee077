// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace dao
{

class Connection;

/// A copy of an open file, made in small steps on another thread while the program works with the file. A write waits for one
/// step at most, and the copy is the state of one moment. Made on the thread of the database; everything else may happen on
/// another thread, as long as the database stays open.
class FileCopy
{
public:
    virtual ~FileCopy() = default;
    FileCopy(const FileCopy &) = delete;
    FileCopy &operator=(const FileCopy &) = delete;

    /// Copies up to a megabyte. False when the copy is complete. Whatever hinders it raises the data layer's error, which names
    /// the copy or, on a damaged page, the source.
    virtual bool step() = 0;
    virtual int percent() const = 0;
    /// After the last step: waits until the copy is on the disk.
    virtual void finish() = 0;
    /// After finish(): reads the copy and returns what is wrong with its pages.
    virtual QStringList check() = 0;
    /// From any thread: a check in progress ends with an error.
    virtual void interrupt() {}

    /// Of an SQLite file; `path` is an empty file. Writes of `source` meanwhile are copied too, so the state is that of the last
    /// step. Writes by other programs make it begin anew.
    static std::unique_ptr<FileCopy> ofSqlite(const Connection &source, const QString &path);

protected:
    FileCopy() = default;
};

} // namespace dao
