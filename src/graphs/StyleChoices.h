// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/ChartConstants.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The choices of the style dialog. For markers and lines the list index is the style's number.
QStringList markerStyleTexts();
QStringList lineStyleTexts();

/// Of a solid or a flat chart; the list index maps to different numbers.
QStringList seriesTypeTexts(bool solid);
std::optional<chart::SeriesType> seriesTypeAt(int index, bool solid);
/// -1 for a type that the list does not have.
int seriesTypeIndex(chart::SeriesType type, bool solid);

/// The marker types for which a fill colour is offered.
bool markerShowsFillColour(int listIndex);

/// A width or size in twips as typed. Error 13 for a text that is no number, 6 beyond 16 bits, 5 below 0.
int twipsFromText(const QString &text);
