// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableDefinition.h"

#include <optional>
#include <string>
#include <vector>

namespace jet
{

/// Bytes of an index whose order, byte by byte, is that of the values: for each column a byte for null or not, then the value
/// big-endian with its sign turned round.
using KeyBytes = std::string;

/// Why entries of this index cannot be made, as "an index on the Text column Name"; empty when they can. `isCatalogue` allows the
/// names of the catalogue, whose order is known for letters, digits, space and underscore.
QString unsupportedIndex(const TableDefinition &table, const IndexDefinition &index, bool isCatalogue);

/// Whether a name can be put in the order of the catalogue.
bool hasKnownOrder(const QString &name);

/// The key of a row. Nothing for a row that the index leaves out. A Fault for a text whose order is not known.
std::optional<KeyBytes> indexKey(const TableDefinition &table, const IndexDefinition &index, const std::vector<Value> &values);

/// How many columns of the key are null. A Boolean never is.
std::size_t nullsInKey(const IndexDefinition &index, const std::vector<Value> &values);

} // namespace jet
