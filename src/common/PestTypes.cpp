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

QString pestTypeCaption(const QString &kind)
{
    for (const PestType &type : PestTypes) {
        if (kind.compare(QLatin1String(type.kind), Qt::CaseInsensitive) == 0) {
            return QLatin1String(type.caption);
        }
    }
    return kind;
}

QString pestTypeKind(const QString &text)
{
    const QString word = text.trimmed();
    for (const PestType &type : PestTypes) {
        const QLatin1String caption(type.caption);
        const bool isSingular = caption.endsWith(u's') && word.compare(caption.chopped(1), Qt::CaseInsensitive) == 0;
        if (isSingular || word.compare(caption, Qt::CaseInsensitive) == 0
            || word.compare(QLatin1String(type.kind), Qt::CaseInsensitive) == 0) {
            return QLatin1String(type.kind);
        }
    }
    return word;
}
