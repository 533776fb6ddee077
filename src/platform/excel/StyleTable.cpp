// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/StyleTable.h"

#include <algorithm>
#include <cmath>

namespace excel::model
{

namespace
{
constexpr std::array Edges{Trait::LeftLine, Trait::RightLine, Trait::TopLine, Trait::BottomLine};

/// The standard theme in the engine's order: 1 background, 2 text.
constexpr std::array<std::int32_t, 10> ThemeColours{0xFFFFFF, 0x000000, 0xEEECE1, 0x1F497D, 0x4F81BD,
                                                    0xC0504D, 0x9BBB59, 0x8064A2, 0x4BACC6, 0xF79646};

std::int32_t tinted(std::int32_t colour, double tint)
{
    std::int32_t result = 0;
    for (const int shift : {16, 8, 0}) {
        const double channel = (colour >> shift) & 0xFF;
        const double moved = tint < 0 ? channel * (1 + tint) : channel + (255 - channel) * tint;
        result |= static_cast<std::int32_t>(std::lround(moved)) << shift;
    }
    return result;
}

bool isContinuous(std::int32_t line)
{
    return line == ThinLine || line == MediumLine || line == ThickLine || line == HairLine;
}

void apply(Style &style, std::size_t change, std::int32_t value)
{
    if (change < style.values.size()) {
        style.values[change] = value;
        return;
    }
    for (const Trait edge : Edges) {
        if (static_cast<EdgeChange>(change) == EdgeChange::Weight || value == NoLine) {
            style[edge] = value;
        } else if (!isContinuous(style[edge])) {
            style[edge] = ThinLine;
        }
    }
}
} // namespace

std::int32_t Style::shade() const
{
    if ((*this)[Trait::Pattern] == 0) {
        return -1;
    }
    const std::int32_t theme = (*this)[Trait::ThemeColour];
    if (theme > 0) {
        return tinted(ThemeColours[static_cast<std::size_t>(theme - 1)], (*this)[Trait::Tint] / 1e6);
    }
    return (*this)[Trait::FillColour] < 0 ? 0xFFFFFF : (*this)[Trait::FillColour];
}

std::size_t StyleHash::operator()(const Style &style) const
{
    std::size_t hash = 0;
    for (const std::int32_t value : style.values) {
        hash = hash * 0x9E3779B97F4A7C15ULL + static_cast<std::uint32_t>(value);
        hash ^= hash >> 29;
    }
    return hash;
}

std::size_t StyleTable::StepHash::operator()(const Step &step) const
{
    std::size_t hash = (static_cast<std::size_t>(step.from) << 32) | static_cast<std::uint32_t>(step.value);
    hash = (hash ^ (static_cast<std::size_t>(step.change) << 24)) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 31);
}

std::int32_t NameList::indexOf(const QString &name)
{
    const auto found = indexes_.constFind(name);
    if (found != indexes_.constEnd()) {
        return *found;
    }
    const auto index = static_cast<std::int32_t>(names_.size());
    names_.push_back(name);
    indexes_.insert(name, index);
    return index;
}

StyleTable::StyleTable()
{
    Style standard;
    standard[Trait::BaseFormat] = 15;
    // Column widths are in digits of this font, so it must exist, or have a match of the same metrics, on every computer.
    standard[Trait::FontName] = fontNames.indexOf(QStringLiteral("Arial"));
    standard[Trait::FontSize] = 10 * 20;
    standard[Trait::Vertical] = 2;
    standard[Trait::NumberFormat] = numberFormats.indexOf(QStringLiteral("General"));
    standard[Trait::FillColour] = -1;
    indexOf(standard);
}

void StyleTable::setStandard(const Style &style)
{
    styles_.clear();
    indexes_.clear();
    steps_.clear();
    indexOf(style);
}

std::uint32_t StyleTable::indexOf(const Style &style)
{
    const auto [entry, isNew] = indexes_.try_emplace(style, static_cast<std::uint32_t>(styles_.size()));
    if (isNew) {
        styles_.push_back(style);
    }
    return entry->second;
}

std::uint32_t StyleTable::changed(std::uint32_t from, Trait trait, std::int32_t value)
{
    return at(from)[trait] == value ? from : changedBy(from, static_cast<std::size_t>(trait), value);
}

std::uint32_t StyleTable::changed(std::uint32_t from, EdgeChange change, std::int32_t value)
{
    return changedBy(from, static_cast<std::size_t>(change), value);
}

std::uint32_t StyleTable::changedBy(std::uint32_t from, std::size_t change, std::int32_t value)
{
    const Step step{from, static_cast<std::uint32_t>(change), value};
    const auto known = steps_.find(step);
    if (known != steps_.end()) {
        return known->second;
    }
    Style style = at(from);
    apply(style, change, value);
    const std::uint32_t result = indexOf(style);
    steps_.emplace(step, result);
    return result;
}

} // namespace excel::model
