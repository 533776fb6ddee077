// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace excel
{

/// The advance widths of a font, from a table of this program: no machine's own fonts take part, so that a column comes out
/// equally wide everywhere. A family that the table lacks is measured as the common sans serif.
class FontMetrics
{
public:
    FontMetrics(const QString &family, bool bold, double points);

    /// Pixels at 96 to the inch.
    double width(QStringView text) const;
    /// Pixels of the widest digit, whole; the unit of column widths.
    int digitWidth() const;

private:
    double letterWidth(char32_t letter) const;

    /// Thousandths of the font size, from the blank to "~".
    const std::array<int, 95> *widths_;
    double scale_;
};

} // namespace excel
