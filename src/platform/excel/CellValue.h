// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// The number of a text that consists of an optional sign, digits and at most one point; nothing for any other text and for one
/// of more than 15 digits, which a double cannot hold.
std::optional<double> plainNumber(const QString &text);

/// Whether a style shows whatever is typed as text ("@").
bool isTextFormat(const model::StyleTable &styles, std::uint32_t style);

/// The content of a cell as text; a number in its shortest form.
QString textOf(const model::Book &book, const model::Cell &cell);

/// The content as displayed under the cell's number format, with the decimals and zeros of formats such as "#0.00".
QString shownText(const model::Book &book, const model::Cell &cell);

} // namespace excel
