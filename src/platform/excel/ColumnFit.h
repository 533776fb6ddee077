// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// Sets the widths of the columns from their widest texts.
void fitColumns(model::Sheet &sheet, int first, int last);

/// The width in a file, 256ths of a character with the margins of a cell, for a width in characters; and back.
int fileWidth(const model::Book &book, double characters);
double characterWidth(const model::Book &book, int fileWidth);

/// Height in twips for the largest font of a row's cells; nothing when the standard height is enough.
std::optional<int> heightForFonts(const model::Sheet &sheet, const model::Row &row);

} // namespace excel
