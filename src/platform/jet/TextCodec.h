// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

#include <QByteArray>
#include <QString>

namespace jet
{

/// Text of a column: UTF-16, or behind the mark FF FE runs of one byte a character and of two, a zero byte between them. Half a
/// character at the end is left out.
void decodeText(Bytes bytes, QString &text);
QString decodeText(Bytes bytes);
/// Compressed where that is asked for, possible and shorter.
QByteArray encodeText(const QString &text, bool compress);

} // namespace jet
