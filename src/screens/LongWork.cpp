// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/LongWork.h"

#include "screens/ProgressPicture.h"
#include "screens/ScreenHost.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <array>

namespace
{

bool isInput(QEvent::Type type)
{
    constexpr std::array input{QEvent::KeyPress,           QEvent::KeyRelease,
                               QEvent::Shortcut,           QEvent::ShortcutOverride,
                               QEvent::InputMethod,        QEvent::MouseButtonPress,
                               QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                               QEvent::MouseMove,          QEvent::Wheel,
                               QEvent::ContextMenu,        QEvent::TouchBegin,
                               QEvent::TouchUpdate,        QEvent::TouchEnd,
                               QEvent::TouchCancel,        QEvent::TabletPress,
                               QEvent::TabletMove,         QEvent::TabletRelease,
                               QEvent::NativeGesture,      QEvent::DragEnter,
                               QEvent::DragMove,           QEvent::Drop};
    return std::find(input.begin(), input.end(), type) != input.end();
}

/// Discards all input of the program.
class InputGate : public QObject
{
public:
    InputGate() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (QApplication::activeModalWidget()) {
            return false;
        }
        if (event->type() == QEvent::Close && event->spontaneous()) {
            event->ignore();
            return true;
        }
        return isInput(event->type());
    }
};

} // namespace

LongWork::LongWork() : inputGate_(std::make_unique<InputGate>()) {}

LongWork::~LongWork()
{
    // Input that is still queued is discarded here.
    QCoreApplication::processEvents();
}

void LongWork::letRepaint()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

LongWorkWithProgress::LongWorkWithProgress(ScreenHost &host) : host_(host)
{
    ProgressPicture &picture = host_.Picture4();
    picture.Cls();
    picture.setCaption(QString());
    picture.show();
    letRepaint();
}

LongWorkWithProgress::~LongWorkWithProgress()
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
