// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A line on the output, or on the error stream, in the locale's character set.
void printLine(const QString &line);
void printError(const QString &line);
