// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"
#include "screens/ScreenHost.h"

#include <QWidget>

#include <type_traits>
#include <utility>

/// Base of the screens that the main window shows one at a time in its client area.
///
/// The main window calls activateScreen() when the screen is shown and when the window is entered again from another window,
/// never when a box or dialog of the program closes. A screen ends by closeScreen(); the main window then unloads it and, once
/// MenuRestore is true, opens its menu again.
class ChildScreen : public QWidget
{
    Q_OBJECT
public:
    explicit ChildScreen(ScreenHost &host, QWidget *parent = nullptr);

    /// Fills the screen from the session. A screen may postpone it while input is open.
    virtual void activateScreen() = 0;
    virtual QString screenTitle() const = 0;

    /// The kind of record, set by the menu before the screen is shown.
    const QString &Tag() const { return tag_; }
    void setTag(const QString &tag) { tag_ = tag; }

    /// Focuses the first control in Tab order, unless one has the focus already. A screen that starts elsewhere passes the focus
    /// on.
    void focusFirstControl();

    void closeScreen() { Q_EMIT closeRequested(); }

    /// Runs a slot and shows its unhandled error in a box. No exception may pass through the toolkit.
    template <typename Body> void guarded(Body &&body)
    {
        try {
            body();
        } catch (const basic::RunTimeError &error) {
            host_.showError(error);
        }
    }

    /// Connects a signal to a guarded body, which takes the signal's arguments or none, for as long as `context` lives.
    template <typename Sender, typename Signal, typename Body>
    void on(Sender *sender, Signal signal, const QObject *context, Body body)
    {
        connect(sender, signal, context, [this, body](auto &&...arguments) -> void {
            if constexpr (std::is_invocable_v<const Body &, decltype(arguments)...>) {
                guarded([&] { body(std::forward<decltype(arguments)>(arguments)...); });
            } else {
                guarded(body);
            }
        });
    }
    template <typename Sender, typename Signal, typename Body> void on(Sender *sender, Signal signal, Body body)
    {
        on(sender, signal, this, body);
    }

    /// Runs a body and reports its error in the status line: what failed and why. False after an error.
    template <typename Body> bool runOrReport(const QString &what, Body &&body)
    {
        try {
            body();
            return true;
        } catch (const basic::RunTimeError &error) {
            showFailure(what, error.description());
            return false;
        }
    }
    /// Reports a failure in the status line, with the last error of the data class.
    void showStoreFailure(const QString &what);

Q_SIGNALS:
    void closeRequested();
    /// The screen is too short for its title, so that it shows elsewhere; empty when the screen shows it.
    void titleMoved(const QString &title);

protected:
    ScreenHost &host() const { return host_; }
    SessionContext &session() const { return host_.session(); }
    clsPestMONNew &objPestMON() const { return host_.objPestMON(); }
    controls::Dialogs &dialogs() const { return host_.dialogs(); }

    void resizeEvent(QResizeEvent *event) override;

private:
    void fitTitle();
    void showFailure(const QString &what, const QString &why);

    ScreenHost &host_;
    QString tag_;
};
