// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"
#include "platform/controls/Dialogs.h"

/// The text in which the graph screens report an error: number, " - ", description.
inline void showGraphError(controls::Dialogs &dialogs, const basic::RunTimeError &error)
{
    dialogs.message(QStringLiteral("%1 - %2").arg(error.number()).arg(error.description()), {}, controls::BoxIcon::None);
}
