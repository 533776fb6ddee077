// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Shortcuts.h"

#include "platform/basic/RunTimeError.h"

#include <QAbstractButton>
#include <QFile>

using basic::ErrorNumber;
using basic::RunTimeError;

namespace
{

/// Before the owner of a part of the main module.
const QString MainModuleMark = QStringLiteral("MainModule:");

/// A caption without the sign before its access key.
QString plainCaption(QString text)
{
    return text.remove(u'&').trimmed();
}

} // namespace

std::vector<KeyGroup> keyGroups()
{
    QFile file(QStringLiteral(":/farm/keys.txt"));
    if (!file.open(QIODevice::ReadOnly)) {
        throw RunTimeError(ErrorNumber::FileNotFound, QStringLiteral("The table of keys is not built in."));
    }
    std::vector<KeyGroup> groups;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const qsizetype bar = line.indexOf(u'|');
        const qsizetype bracket = line.indexOf(u']');
        if (line.startsWith(u'[')) {
            const QString owner = line.mid(1, bracket - 1);
            const bool isMainModule = owner.startsWith(MainModuleMark);
            groups.push_back({isMainModule ? KeyProgram::MainModule : KeyProgram::Monitoring,
                              isMainModule ? owner.mid(MainModuleMark.size()) : owner,
                              line.mid(bracket + 1).trimmed(),
                              {}});
        } else if (bar > 0 && !groups.empty()) {
            groups.back().lines.push_back({line.left(bar), line.mid(bar + 1)});
        }
    }
    return groups;
}

void nameKeysInTips(QWidget &widget)
{
    for (QAbstractButton *button : widget.findChildren<QAbstractButton *>()) {
        const QString key = button->shortcut().toString(QKeySequence::NativeText);
        if (key.isEmpty() || !button->isEnabled() || button->toolTip().contains(key)) {
            continue;
        }
        const QString tip = button->toolTip().isEmpty() ? plainCaption(button->text()) : button->toolTip();
        button->setToolTip(QStringLiteral("%1 (%2)").arg(tip, key));
    }
}
