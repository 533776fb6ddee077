// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include <cstdint>

/// Red (1), green (2) or blue (3) of a colour laid out as 0x00BBGGRR, 0 to 255; -1 for another component or colour.
std::int16_t ColorComponent(std::int32_t colour, std::int16_t component);

/// The layout of the argument of ColorComponent.
std::int32_t colourNumber(const QColor &colour);
