// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QString>

#include <cstdint>

/// Working copy of one leaf, fruit or soil analysis. The eleven values have the names of the leaf analysis and mean other things
/// in the other kinds.
struct AnalysisRecord {
    /// 0 is a new record.
    std::int32_t ID = 0;
    basic::SerialDate Date;
    QString Part;
    /// Centimetres.
    float Depth = 0.0F;
    /// Season of a plant analysis, texture of a soil.
    QString Season;
    float N = 0.0F, P = 0.0F, K = 0.0F, Ca = 0.0F, Mg = 0.0F, Na = 0.0F, Mn = 0.0F, Fe = 0.0F, Cu = 0.0F, Zn = 0.0F, B = 0.0F;
};
