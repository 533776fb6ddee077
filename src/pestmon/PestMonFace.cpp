// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/PestMonFace.h"

#include "platform/basic/Formats.h"

QString PestMonFace::instructionName() const
{
    return QStringLiteral("Instruction of %1").arg(basic::formatDate(session().CurrentPMDate, u"yyyy/MM/dd"));
}
