// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Constants.h"

#include <QString>

#include <memory>

namespace excel
{
class Font;
class Borders;
class Interior;

namespace model
{
struct Book;
struct Sheet;
} // namespace model

/// A rectangle of cells, both ends included, counted from 0.
struct Area {
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;

    int rows() const { return bottom - top + 1; }
    int columns() const { return right - left + 1; }
    bool holds(int row, int column) const { return row >= top && row <= bottom && column >= left && column <= right; }
    bool meets(const Area &other) const
    {
        return top <= other.bottom && other.top <= bottom && left <= other.right && other.left <= right;
    }
    bool operator==(const Area &) const = default;
};

/// Handle to a rectangle of cells, cheap to copy, that keeps its workbook alive. A property `X` of the engine is read by
/// `X()` and set by `setX()`; on overlapping ranges the last setting wins. Reading returns the value of the
/// top left cell. A value that the engine refuses raises ExcelError and leaves the cells as they were; an empty handle raises
/// error 91, one whose sheet was deleted 1004.
class Range
{
public:
    Range() = default;
    Range(std::shared_ptr<model::Book> book, model::Sheet *sheet, const Area &area);

    /// Sets every cell of the range; in a merged range only the top left cell. A text that is a plain decimal
    /// number of at most 15 digits becomes a number; no text becomes a date or a formula. An empty text clears the cell.
    /// Error 1004 above 32,767 characters.
    void setValue(const QString &value);
    void setValue(double value);
    /// The text of the cell; a number in its shortest form with a decimal point.
    QString value() const;
    bool isNumber() const;

    /// True merges the range into one cell with the value of its first cell; false splits every merged area that it touches. A
    /// single cell cannot be merged.
    void setMergeCells(bool merged);
    bool MergeCells() const;
    void setWrapText(bool wrap);
    bool WrapText() const;
    /// Points, 0 to 409.5, of every row in the range.
    void setRowHeight(double points);
    double RowHeight() const;
    /// xlGeneral, xlLeft, xlCenter, xlRight, xlJustify, 5 (fill), 7 (across); 2 counts as left.
    void setHorizontalAlignment(int alignment);
    int HorizontalAlignment() const;
    /// xlTop, xlCenter, xlBottom, xlJustify.
    void setVerticalAlignment(int alignment);
    int VerticalAlignment() const;
    /// Degrees from -90 to 90, upward is positive.
    void setOrientation(int degrees);
    int Orientation() const;
    /// A format code such as "0.00" or "@" (text), 1 to 255 characters.
    void setNumberFormat(const QString &format);
    QString NumberFormat() const;

    excel::Font Font() const;
    excel::Borders Borders() const;
    excel::Interior Interior() const;

    const Area &area() const { return area_; }

private:
    friend class excel::Font;
    friend class excel::Borders;
    friend class excel::Interior;
    model::Sheet &sheet() const;

    std::shared_ptr<model::Book> book_;
    model::Sheet *sheet_ = nullptr;
    Area area_;
};

/// The font of a range's cells.
class Font
{
public:
    explicit Font(Range range) : range_(std::move(range)) {}

    /// Name of a font family, 1 to 31 characters; it need not be installed.
    void setName(const QString &name);
    QString Name() const;
    /// Points, 1 to 409.
    void setSize(double points);
    double Size() const;
    void setBold(bool bold);
    bool Bold() const;
    /// True, 1 or xlUnderlineStyleSingle; xlUnderlineStyleDouble; false, 0 or xlNone.
    void setUnderline(int underline);
    int Underline() const;

private:
    Range range_;
};

/// All four edges of every cell in the range. An edge shared with a cell outside is set there too when that cell has a line.
class Borders
{
public:
    explicit Borders(Range range) : range_(std::move(range)) {}

    /// xlContinuous or xlNone. A new line is thin.
    void setLineStyle(int style);
    int LineStyle() const;
    /// xlHairline, xlThin, xlMedium, xlThick; adds the line where there is none.
    void setWeight(int weight);
    int Weight() const;

private:
    Range range_;
};

/// The shading of a range's cells. Theme colours are stored as the resulting plain colour.
class Interior
{
public:
    explicit Interior(Range range) : range_(std::move(range)) {}

    /// xlSolid or xlNone.
    void setPattern(int pattern);
    int Pattern() const;
    /// xlAutomatic alone: a solid fill shows no pattern colour.
    void setPatternColorIndex(int index);
    /// 1 (white) to 10.
    void setThemeColor(int colour);
    /// -1 (black) to 1 (white); 0 leaves the theme colour as it is.
    void setTintAndShade(double tint);
    /// Accepted, without effect under a solid fill.
    void setPatternTintAndShade(double tint);
    /// 0xRRGGBB of the fill; -1 without one.
    int Color() const;

private:
    Range range_;
};

} // namespace excel
