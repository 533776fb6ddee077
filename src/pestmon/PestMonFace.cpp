// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/PestMonFace.h"

#include "store/clsPestMONNew.h"

void PestMonFace::showFailure(const QString &what, const QString &why)
{
    host_.showFailure(why.isEmpty() ? what : QStringLiteral("%1: %2").arg(what, why));
}

void PestMonFace::showStoreFailure(const QString &what)
{
    const auto &error = objPestMON().lastError();
    showFailure(what, error ? error->description() : QString());
}
