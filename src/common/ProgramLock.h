// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

class QLockFile;

/// Held by the process that works on a farm's folder: the program while it runs, a tool while it replaces files. Released when
/// the process ends, also when it is killed.
class ProgramLock
{
public:
    /// Nothing when another living process holds the lock of this folder, which is the program's. Error 75 when no lock can be
    /// created.
    static std::unique_ptr<ProgramLock> tryLock(const QString &appPath);
    ~ProgramLock();

private:
    explicit ProgramLock(std::unique_ptr<QLockFile> file);
    std::unique_ptr<QLockFile> file_;
};
