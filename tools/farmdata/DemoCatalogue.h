// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"

#include <QString>

#include <cstdint>
#include <vector>

/// Keys of the fruit types of the demonstration farm.
enum class DemoType : int { Orange = 1, Lemon, Grapefruit, SoftCitrus, Avocado, Litchi, Macadamia };

struct DemoBlock {
    int key = 0;
    QString name;
    int farm = 0;
    int points = 0;
    bool active = true;
    DemoType type = DemoType::Orange;
};

struct DemoPlanting {
    int key = 0;
    int block = 0;
    QString name;
    bool active = true;
    int variety = 0;
};

/// A target with its course through the year: most is found around the peak week.
struct DemoTarget {
    int key = 0;
    QString name;
    QString kind;
    std::vector<DemoType> types;
    int peakWeek = 0;
    int spreadWeeks = 0;
    /// Mean count per point at the peak.
    double level = 0.0;
};

/// The invented farm office's master data.
struct DemoCatalogue {
    std::vector<DemoBlock> blocks;
    std::vector<DemoPlanting> plantings;
    std::vector<DemoTarget> targets;
    QStringList workers;
};

DemoCatalogue demoCatalogue();
/// Writes it to the main database and the catalogue of targets.
void writeDemoCatalogue(const DemoCatalogue &catalogue, SessionContext &session);
