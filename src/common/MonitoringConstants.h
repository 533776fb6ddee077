// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>

/// Keys and names of tblPMMethod: whether an instruction counts its pests, or notes for each whether it was there. The key 0 is
/// no method.
inline constexpr std::int32_t CountMethod = 1;
inline constexpr std::int32_t YesNoMethod = 2;
inline constexpr QLatin1String CountMethodName("Count");
inline constexpr QLatin1String YesNoMethodName("Yes/No");

/// Monitoring points where none are stated or known.
inline constexpr std::int16_t DefaultPoints = 5;
