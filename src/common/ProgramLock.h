// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/FileLock.h"

#include <QString>

#include <memory>

/// The lock by which a user runs one copy of a program: a file in the user's folder for running programs, named after the
/// program's folder. Nothing when another copy has it. Error 75 when it cannot be created.
std::unique_ptr<basic::FileLock> tryProgramLock(const QString &programFolder);
