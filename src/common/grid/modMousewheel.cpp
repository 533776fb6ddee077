// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/modMousewheel.h"

#include "common/grid/WheelScroll.h"
#include "platform/controls/FlexGrid.h"

#include <QApplication>
#include <QInputDevice>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include <array>

namespace
{

/// Wheel movement not yet turned into lines; one for all windows, never reset.
std::int32_t WheelRemainder = 0;

/// Filters the events of the whole program, since a wheel event reaches the child under the pointer before its window.
class WheelHook : public QObject
{
    Q_OBJECT
public:
    WheelHook(QWidget &window, QWidget &target) : QObject(&window), window_(window), target_(&target)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Close && watched == &window_) {
            deleteLater();
        }
        const auto *under = event->type() == QEvent::Wheel ? qobject_cast<QWidget *>(watched) : nullptr;
        // Open lists are separate windows and handle their own wheel events.
        if (!under || (under != &window_ && (under->isWindow() || !window_.isAncestorOf(under)))) {
            return false;
        }
        return take(static_cast<QWheelEvent &>(*event));
    }

private:
    /// A hidden or disabled grid leaves the event to the widget under the pointer.
    bool take(QWheelEvent &event)
    {
        if (!target_ || !target_->isVisible() || !target_->isEnabled() || event.angleDelta().y() == 0) {
            return false;
        }
        event.accept();
        const int turn = isTouchpad(event) ? wholeNotches(event.angleDelta().y()) : event.angleDelta().y();
        if (turn != 0) {
            const std::uint16_t amount = wheelAmount(turn);
            Wheel_Scroll(*target_, isForward(amount), amount);
        }
        return true;
    }

    static bool isTouchpad(const QWheelEvent &event)
    {
        return event.phase() != Qt::NoScrollPhase || event.device()->type() == QInputDevice::DeviceType::TouchPad;
    }

    /// A touchpad sends dozens of small steps a second. They count as a wheel once they add up to a notch in one direction, the
    /// same distance up and down.
    int wholeNotches(int turn)
    {
        const bool turnedBack = (turn < 0) != (travel_ < 0);
        travel_ = turnedBack ? turn : travel_ + turn;
        if (std::abs(travel_) < WheelNotch) {
            return 0;
        }
        const int notch = travel_ < 0 ? -WheelNotch : WheelNotch;
        travel_ -= notch;
        return notch;
    }

    QWidget &window_;
    QPointer<QWidget> target_;
    int travel_ = 0;
};

WheelHook *hookOf(const QWidget &window)
{
    return window.findChild<WheelHook *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

void Hook_Wheel(QWidget &window, QWidget *target)
{
    if (hookOf(window) == nullptr) {
        new WheelHook(window, target != nullptr ? *target : window);
    }
}

void Unhook_Wheel(QWidget &window)
{
    delete hookOf(window);
}

void Wheel_Scroll(QWidget &target, bool up, std::uint16_t amount)
{
    const auto scroll = takeWheel(WheelRemainder, up, amount, QApplication::wheelScrollLines());
    const auto *area = qobject_cast<QAbstractScrollArea *>(&target);
    if (!scroll || area == nullptr) {
        return;
    }
    constexpr std::array actions{QAbstractSlider::SliderSingleStepSub, QAbstractSlider::SliderSingleStepAdd,
                                 QAbstractSlider::SliderPageStepSub, QAbstractSlider::SliderPageStepAdd};
    for (int time = 0; time < scroll->times; ++time) {
        area->verticalScrollBar()->triggerAction(actions[static_cast<std::size_t>(scroll->code)]);
    }
}

void serveFocusedGrid(QWidget &window, const QList<controls::FlexGrid *> &grids)
{
    for (controls::FlexGrid *grid : grids) {
        QObject::connect(grid, &controls::FlexGrid::GotFocus, &window, [&window, grid] {
            Unhook_Wheel(window);
            Hook_Wheel(window, grid);
        });
    }
}

#include "modMousewheel.moc"
