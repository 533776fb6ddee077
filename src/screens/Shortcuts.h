// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

class QWidget;

/// One line of the table of keys, such as "Alt+V" and "Saves the instruction".
struct KeyLine {
    QString keys;
    QString action;
};

enum class KeyProgram { Monitoring, MainModule };

/// The keys of one screen, or of one part of it. The owner is the screen's class name, or "Everywhere" and "Grid", which hold in
/// both programs.
struct KeyGroup {
    KeyProgram program = KeyProgram::Monitoring;
    QString owner;
    QString heading;
    std::vector<KeyLine> lines;
};

/// The table of all keys, resources/keys.txt, in its order.
std::vector<KeyGroup> keyGroups();

/// Adds the key of each button below the widget to its tool tip, "Add (Alt+A)", unless the tip names it.
void nameKeysInTips(QWidget &widget);
