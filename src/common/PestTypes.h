// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Captions of the lists "Type of pest", in their order; a list may have one more for all.
QStringList pestTypeCaptions();

/// Kind of target in the catalogue for a caption: "D", "P", "W", "O"; empty, meaning all, for any other word.
QString pestTypeFilter(const QString &caption);
