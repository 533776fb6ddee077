// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace excel
{

/// The three parts of a header as the file formats keep them: each behind its own code, left, centre, right.
QString joinedHeader(const std::array<QString, 3> &parts);

/// And back; a text before any code stands in the centre.
std::array<QString, 3> splitHeader(const QString &header);

} // namespace excel
