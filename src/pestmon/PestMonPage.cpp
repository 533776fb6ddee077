// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/PestMonPage.h"

#include "platform/basic/Formats.h"

#include <QLineEdit>

namespace pestmon
{

QString PestMonPage::instructionName() const
{
    return QStringLiteral("Instruction of %1").arg(basic::formatDate(session().CurrentPMDate, u"yyyy/MM/dd"));
}

void PestMonPage::showNote(QLineEdit &note, const QString &text)
{
    note.setText(text);
    note.setCursorPosition(0);
}

void PestMonPage::reportFullNote(QLineEdit &note)
{
    on(&note, &QLineEdit::inputRejected,
       [this, &note] { host().showFailure(QStringLiteral("The note is limited to %1 characters").arg(note.maxLength())); });
}

} // namespace pestmon
