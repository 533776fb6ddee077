// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace excel
{

/// The advance widths of a font, from a table of this program instead of the installed fonts, so that a column is
/// equally wide everywhere. A family that the table lacks is measured as a common sans serif font.
class FontMetrics
{
public:
    FontMetrics(const QString &family, bool bold, double points);

    /// Pixels at 96 to the inch.
    double width(QStringView text) const;
    /// Whole pixels of the widest digit; the unit of column widths.
    int digitWidth() const;

private:
    double letterWidth(char32_t letter) const;

    /// Thousandths of the font size, from the space to "~".
    const std::array<int, 95> *widths_;
    double scale_;
};

} // namespace excel
