// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace excel::model
{

/// The properties of a cell style, all whole numbers, so that one function can change any of them.
enum class Trait : std::size_t {
    /// Index of the format record in the source file, for the properties that no other trait covers.
    BaseFormat,
    /// Index into `StyleTable::fontNames`.
    FontName,
    /// Twentieths of a point.
    FontSize,
    Bold,
    /// 0 none, 1 single, 2 double.
    Underline,
    /// 0 general, 1 left, 2 centre, 3 right, 4 fill, 5 justify, 6 across.
    Horizontal,
    /// 0 top, 1 centre, 2 bottom, 3 justify.
    Vertical,
    Wrap,
    /// Degrees from -90 to 90; 255 for stacked letters.
    Rotation,
    /// Index into `StyleTable::numberFormats`.
    NumberFormat,
    LeftLine,
    RightLine,
    TopLine,
    BottomLine,
    /// 0 none, 1 solid; files may hold others.
    Pattern,
    /// 0xRRGGBB, -1 automatic; in force while no theme colour is set.
    FillColour,
    /// 1 to 10; 0 for none.
    ThemeColour,
    /// Millionths.
    Tint,
    Count
};

/// Line styles of an edge, as numbered by the file formats.
enum LineCode : std::int32_t { NoLine = 0, ThinLine = 1, MediumLine = 2, ThickLine = 5, HairLine = 7 };

struct Style {
    std::array<std::int32_t, static_cast<std::size_t>(Trait::Count)> values{};

    std::int32_t operator[](Trait trait) const { return values[static_cast<std::size_t>(trait)]; }
    std::int32_t &operator[](Trait trait) { return values[static_cast<std::size_t>(trait)]; }
    bool operator==(const Style &) const = default;
    /// 0xRRGGBB of the fill, with theme and tint applied; -1 without one.
    std::int32_t shade() const;
};

struct StyleHash {
    std::size_t operator()(const Style &style) const;
};

/// Changes that set all four edges at once.
enum class EdgeChange : std::size_t { LineStyle = static_cast<std::size_t>(Trait::Count), Weight };

/// A list of distinct names.
class NameList
{
public:
    std::int32_t indexOf(const QString &name);
    const QString &at(std::int32_t index) const { return names_[static_cast<std::size_t>(index)]; }
    std::size_t size() const { return names_.size(); }

private:
    std::vector<QString> names_;
    QHash<QString, std::int32_t> indexes_;
};

/// The distinct styles of a workbook. Style 0 is that of an empty cell.
class StyleTable
{
public:
    StyleTable();

    std::uint32_t indexOf(const Style &style);
    const Style &at(std::uint32_t index) const { return styles_[index]; }
    std::size_t size() const { return styles_.size(); }
    /// Replaces style 0, for a workbook that was read.
    void setStandard(const Style &style);

    /// Index of the resulting style. Results are cached, since the same few changes repeat for each cell.
    std::uint32_t changed(std::uint32_t index, Trait trait, std::int32_t value);
    std::uint32_t changed(std::uint32_t index, EdgeChange change, std::int32_t value);

    NameList fontNames;
    NameList numberFormats;

private:
    std::uint32_t changedBy(std::uint32_t index, std::size_t change, std::int32_t value);

    struct Step {
        std::uint32_t from;
        std::uint32_t change;
        std::int32_t value;
        bool operator==(const Step &) const = default;
    };
    struct StepHash {
        std::size_t operator()(const Step &step) const;
    };
    std::vector<Style> styles_;
    std::unordered_map<Style, std::uint32_t, StyleHash> indexes_;
    std::unordered_map<Step, std::uint32_t, StepHash> steps_;
};

} // namespace excel::model
