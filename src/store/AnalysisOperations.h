// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/StoreAccess.h"

#include <array>

namespace store
{

/// Leaf, fruit and soil analyses.
class AnalysisOperations
{
public:
    /// N, P, K, Ca, Mg, Na, Mn, Fe, Cu, Zn, B.
    using PlantValues = std::array<float, 11>;
    Status Add_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                              const PlantValues &values);
    Status Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                              const PlantValues &values);
    Status Save_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                               const PlantValues &values);
    Status Save_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                               const PlantValues &values);
    /// The three soil saves add a row when the key finds none, and hand the new key back.
    /// Depth, Klip(%), pH(KCL), conductivity, KUV, clay, organic content. Klip(%) is stored in the field SBpHWater.
    Status Save_Soil_Analysis_Basic(Key &key, Key planting, SerialDate date, const std::array<float, 7> &values,
                                    const QString &texture);
    /// Zn, Cu, B, Mn, Fe, Mo.
    Status Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date, const std::array<float, 6> &values);
    /// Depth, P (B1), P (Ohlson), K, Ca, Na, Mg, Cl, S, Al, P (B2).
    Status Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date, const std::array<float, 11> &values);
    Status Delete_Leave_Analysis(Key &key);
    Status Delete_Fruit_Analysis(Key &key);
    Status Delete_Soil_Analysis_Basic(Key &key);
    Status Delete_Soil_Analysis_Extract(Key &key);
    /// Analyses of a period with the block's name, by name then date; planting 0 is all. ShowActive of the session filters.
    Recordset Get_MonSoilBasic_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonSoilMicro_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonSoilExtract_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonLeave_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonFruit_for_Period(SerialDate from, SerialDate to, Key planting);

protected:
    explicit AnalysisOperations(StoreAccess &access) : access_(access) {}
    ~AnalysisOperations() = default;

private:
    StoreAccess &access_;
};

} // namespace store
