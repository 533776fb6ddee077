// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QString>

#include <cstdint>
#include <variant>

namespace dao
{

struct Null {
    bool operator==(const Null &) const = default;
};

/// What a field holds. Integer and Long come as int32, Single and Double as double (a Single already rounded to 32 bits),
/// Boolean as bool, whatever SQLite stores.
using Value = std::variant<Null, bool, std::int32_t, double, QString, basic::SerialDate>;

enum class FieldType { Boolean, Integer, Long, Single, Double, Date, Text };

} // namespace dao
