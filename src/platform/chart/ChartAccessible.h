// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace chart
{

/// Lets screen readers tell the current point of every chart; called again it does nothing.
void installChartAccessibility();

} // namespace chart
