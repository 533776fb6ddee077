// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DemoCatalogue.h"

#include <cstdint>

/// Pseudo-random numbers, the same in every run.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}
    /// From 0 up to but not including 1.
    double unit();
    int below(int limit) { return static_cast<int>(unit() * limit); }

private:
    std::uint64_t state_;
};

/// Two seasons of instructions up to the current week, the last few open, with what was found.
void writeDemoRounds(const DemoCatalogue &catalogue, SessionContext &session);
