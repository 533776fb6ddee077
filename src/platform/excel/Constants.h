// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The numbers of the spreadsheet engine's properties.
namespace excel
{

inline constexpr int xlGeneral = 1;
inline constexpr int xlCenter = -4108;
inline constexpr int xlLeft = -4131;
inline constexpr int xlRight = -4152;
inline constexpr int xlJustify = -4130;
inline constexpr int xlTop = -4160;
inline constexpr int xlBottom = -4107;

/// No line, no fill, no underline.
inline constexpr int xlNone = -4142;
inline constexpr int xlAutomatic = -4105;
inline constexpr int xlSolid = 1;
inline constexpr int xlContinuous = 1;

inline constexpr int xlHairline = 1;
inline constexpr int xlThin = 2;
inline constexpr int xlMedium = -4138;
inline constexpr int xlThick = 4;

inline constexpr int xlUnderlineStyleSingle = 2;
inline constexpr int xlUnderlineStyleDouble = -4119;

inline constexpr int xlPortrait = 1;
inline constexpr int xlLandscape = 2;
inline constexpr int xlPaperA4 = 9;

/// File formats of SaveAs.
inline constexpr int xlOpenXMLWorkbook = 51;
inline constexpr int xlExcel8 = 56;

/// Limits of both formats; a .xls is also limited to 65,536 rows, 256 columns and 4,000 formats.
inline constexpr int MaxSheetNameLength = 31;
inline constexpr int MaxTextLength = 32767;

} // namespace excel
