// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Captions of the lists "Type of pest", in their order; a list may have one more for all.
QStringList pestTypeCaptions();

/// Kind of target in the catalogue for a caption: "D", "P", "W", "O"; empty, meaning all, for any other word.
QString pestTypeFilter(const QString &caption);

/// Caption for a kind of target, whatever its case; a kind that none of the captions stands for is its own.
QString pestTypeCaption(const QString &kind);

/// Kind for what people write for one: a caption, its singular or the letter, whatever the case; else the text as it is.
QString pestTypeKind(const QString &text);
