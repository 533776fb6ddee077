// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A plain number with two decimals and a point in every locale; other text, also empty text, unchanged.
QString withTwoDecimals(const QString &text);

/// The leading number of a text, or 0. Error 6 beyond a 32-bit float.
float leadingSingle(const QString &text);
