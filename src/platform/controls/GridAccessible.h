// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{

/// Makes every grid a table for screen readers. Further calls do nothing.
void installGridAccessibility();

} // namespace controls
