// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/PestTypes.h"

#include <array>

namespace
{

struct PestType {
    const char *caption;
    const char *kind;
};

constexpr std::array<PestType, 4> PestTypes{{
    {"Diseases", "D"},
    {"Pests", "P"},
    {"Weeds", "W"},
    {"Other", "O"},
}};

} // namespace

QStringList pestTypeCaptions()
{
    QStringList captions;
    for (const PestType &type : PestTypes) {
        captions.append(QLatin1String(type.caption));
    }
    return captions;
}

QString pestTypeFilter(const QString &caption)
{
    for (const PestType &type : PestTypes) {
        if (caption == QLatin1String(type.caption)) {
            return QLatin1String(type.kind);
        }
    }
    return {};
}
