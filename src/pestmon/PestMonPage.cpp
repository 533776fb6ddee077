// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/PestMonPage.h"

#include "platform/basic/Formats.h"

#include <QLineEdit>

QString PestMonPage::instructionName() const
{
    return QStringLiteral("Instruction of %1").arg(basic::formatDate(session().CurrentPMDate, u"yyyy/MM/dd"));
}

void PestMonPage::showNote(QLineEdit &note, const QString &text)
{
    note.setText(text);
    note.setCursorPosition(0);
}

void PestMonPage::tellFullNote(QLineEdit &note)
{
    on(&note, &QLineEdit::inputRejected,
       [this, &note] { host().showFailure(QStringLiteral("The note takes %1 characters").arg(note.maxLength())); });
}
