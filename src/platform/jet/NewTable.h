// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableDefinition.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace jet
{

struct NewColumn {
    QString name;
    ColumnType type = ColumnType::Long;
    /// For Text, 1 to 255.
    int characters = 0;
    bool isAutoNumber = false;
    /// Stored with the table when it is given.
    std::optional<bool> allowsZeroLength = std::nullopt;
};

struct NewIndex {
    QString name;
    QStringList columns;
    bool isPrimary = false;
    bool isUnique = false;
};

/// A table to be made. Names are letters A to Z, digits, blanks and underscores.
struct NewTable {
    QString name;
    std::vector<NewColumn> columns;
    std::vector<NewIndex> indexes = {};
};

} // namespace jet
