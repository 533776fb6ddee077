// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/LongWork.h"

#include "shell/ProgressPicture.h"
#include "shell/ScreenHost.h"

#include <QCoreApplication>
#include <QGuiApplication>

LongWork::LongWork()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

LongWork::~LongWork()
{
    QGuiApplication::restoreOverrideCursor();
}

void LongWork::letRepaint()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

LongWorkWithPicture::LongWorkWithPicture(ScreenHost &host) : host_(host)
{
    ProgressPicture &picture = host_.Picture4();
    picture.Cls();
    picture.setCaption(QString());
    picture.show();
    letRepaint();
}

LongWorkWithPicture::~LongWorkWithPicture()
{
    host_.Picture4().hide();
}

void Show_Progress(ScreenHost &host, std::int16_t percent, const QString &text)
{
    ProgressPicture &picture = host.Picture4();
    picture.Cls();
    picture.drawBar(percent);
    picture.setCaption(QStringLiteral("%1% of ").arg(percent) + text);
    LongWork::letRepaint();
}
