// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A plain number with two decimals and a point, whatever the locale; a text that is no such number, the empty one too, as it is.
QString withTwoDecimals(const QString &text);

/// The number that a text begins with, 0 without one. Error 6 beyond a 32-bit float.
float leadingSingle(const QString &text);
