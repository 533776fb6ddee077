// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace basic
{

/// Finds the stored path for a path in any letter case and with "\" or "/" between folders, each part compared without regard to
/// case; nothing when some part does not exist.
std::optional<QString> findPath(const QString &path);

/// The path to write to: the existing entry when one matches without regard to case, else the path itself with "/".
QString pathForWriting(const QString &path);

/// Windows-1252, unless the bytes are well-formed UTF-8 (with or without byte order mark).
QString decodeText(const QByteArray &bytes);

/// First item of a text file in the list-input manner: leading blanks skipped; a quoted text runs to its closing quote,
/// commas included; any other text ends at a comma or line end. Error 53 without the file, 62 when the file is empty, 75
/// when it cannot be read.
QString readFirstItem(const QString &path);
/// The same, read as a 32-bit number: error 13 for text, 6 beyond the range. An empty item is 0.
std::int32_t readFirstLong(const QString &path);

/// Replaces the file by `line` and a line end, UTF-8, written to a temporary file and renamed. Error 75 when that fails.
void writeLine(const QString &path, const QString &line);

} // namespace basic
