// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/StyleChoices.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace
{

struct TypeChoice {
    const char *text;
    chart::SeriesType type;
};

const std::vector<TypeChoice> &typeChoices(bool solid)
{
    using chart::SeriesType;
    static const std::vector<TypeChoice> solids{
        {"3D Bar", SeriesType::Bar3d},
        {"3D Line", SeriesType::Line3d},
        {"3D Area", SeriesType::Area3d},
        {"3D Step", SeriesType::Step3d},
    };
    static const std::vector<TypeChoice> flats{
        {"2D Bar", SeriesType::Bar2d},   {"2D Line", SeriesType::Line2d}, {"2D Area", SeriesType::Area2d},
        {"2D Step", SeriesType::Step2d}, {"2D XY", SeriesType::XY2d},     {"2D Pie", SeriesType::Pie2d},
    };
    return solid ? solids : flats;
}

constexpr int FirstFillColour = 10;
constexpr int LastFillColour = 15;

} // namespace

QStringList markerStyleTexts()
{
    return {QStringLiteral("Dash"),
            QStringLiteral("Plus"),
            QStringLiteral("X"),
            QStringLiteral("Star"),
            QStringLiteral("Circle"),
            QStringLiteral("Square"),
            QStringLiteral("Diamond"),
            QStringLiteral("Triangle"),
            QStringLiteral("Down Triangle"),
            QStringLiteral("Filled Circle"),
            QStringLiteral("Filled Square"),
            QStringLiteral("Filled Diamond"),
            QStringLiteral("Filled Triangle"),
            QStringLiteral("Filled Down Triangle"),
            QStringLiteral("Three-Dimensional Ball"),
            QStringLiteral("None")};
}

QStringList lineStyleTexts()
{
    return {QStringLiteral("No Line"),     QStringLiteral("Solid Line"),       QStringLiteral("Dashed Line"),
            QStringLiteral("Dotted Line"), QStringLiteral("Dash-dot Line"),    QStringLiteral("Dash-dot-dot Line"),
            QStringLiteral("Ditted Line"), QStringLiteral("Dash-ditted Line"), QStringLiteral("Dash-dit-dit Line")};
}

QStringList seriesTypeTexts(bool solid)
{
    QStringList texts;
    for (const TypeChoice &choice : typeChoices(solid)) {
        texts.append(QLatin1String(choice.text));
    }
    return texts;
}

std::optional<chart::SeriesType> seriesTypeAt(int index, bool solid)
{
    const std::vector<TypeChoice> &choices = typeChoices(solid);
    if (index < 0 || index >= static_cast<int>(choices.size())) {
        return {};
    }
    return choices[static_cast<std::size_t>(index)].type;
}

int seriesTypeIndex(chart::SeriesType type, bool solid)
{
    const std::vector<TypeChoice> &choices = typeChoices(solid);
    const auto found =
        std::find_if(choices.begin(), choices.end(), [type](const TypeChoice &choice) { return choice.type == type; });
    return found == choices.end() ? -1 : static_cast<int>(found - choices.begin());
}

bool markerShowsFillColour(int listIndex)
{
    return listIndex >= FirstFillColour && listIndex <= LastFillColour;
}

int twipsFromText(const QString &text)
{
    constexpr int largest = std::numeric_limits<std::int16_t>::max();
    const QString sentence = QStringLiteral("\"%1\" is not a width or size from 0 to %2.").arg(text, QString::number(largest));
    bool number = false;
    const double value = text.toDouble(&number);
    if (!number) {
        throw basic::RunTimeError(basic::ErrorNumber::TypeMismatch, sentence);
    }
    const int twips = basic::describing(basic::ErrorNumber::Overflow, sentence, [value] { return basic::toInteger16(value); });
    if (twips < 0) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, sentence);
    }
    return twips;
}
