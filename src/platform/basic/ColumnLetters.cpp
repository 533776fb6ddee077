// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/ColumnLetters.h"

namespace basic
{

QString columnLetters(int column)
{
    QString letters;
    for (int rest = column; rest >= 0; rest = rest / 26 - 1) {
        letters.prepend(QChar(u'A' + rest % 26));
    }
    return letters;
}

} // namespace basic
