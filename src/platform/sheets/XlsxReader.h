// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/sheets/Workbook.h"

namespace sheets
{

class ZipArchive;

/// The worksheets of an Office Open XML workbook, in its order. SheetError when the archive is no such workbook, is damaged, or
/// holds macros.
Workbook readXlsx(ZipArchive &archive);

} // namespace sheets
