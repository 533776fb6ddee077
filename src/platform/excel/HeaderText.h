// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace excel
{

/// The three parts of a header as the file formats store them: left, centre and right, each after its code.
QString joinedHeader(const std::array<QString, 3> &parts);

/// The reverse; text before any code belongs to the centre.
std::array<QString, 3> splitHeader(const QString &header);

} // namespace excel
