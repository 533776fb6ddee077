// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"

#include <memory>
#include <vector>

namespace chart
{

/// The shapes of a chart from back to front: wide ones first, of two areas the larger first, so that none hides another.
std::vector<std::unique_ptr<Shape>> shapesOf(const Chart &chart, const PlotColours &plotColours);

} // namespace chart
