// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/ChildScreen.h"

#include <QObject>

#include <utility>

namespace Ui
{
class frmPestMon2;
}

/// What the faces of the pest monitoring screen share: its controls and what it may ask of the main window.
class PestMonFace : public QObject
{
    Q_OBJECT
public:
    PestMonFace(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui) : ui_(ui), screen_(screen), host_(host) {}

protected:
    SessionContext &session() const { return host_.session(); }
    clsPestMONNew &objPestMON() const { return host_.objPestMON(); }
    ScreenHost &host() const { return host_; }

    /// Connects a signal to a body that may raise errors; see ChildScreen::guarded.
    template <typename Sender, typename Signal, typename Body> void on(Sender *sender, Signal signal, Body body)
    {
        connect(sender, signal, this, [this, body](auto &&...arguments) {
            screen_.guarded([&] { body(std::forward<decltype(arguments)>(arguments)...); });
        });
    }

    /// Runs a body whose errors leave it silently, but for the status line, which tells what could not be done and why.
    template <typename Body> bool silently(const QString &what, Body body)
    {
        try {
            body();
            return true;
        } catch (const basic::RunTimeError &error) {
            showFailure(what, error.description());
            return false;
        }
    }
    void showFailure(const QString &what, const QString &why);
    /// With the reason that the data class kept.
    void showStoreFailure(const QString &what);

    Ui::frmPestMon2 &ui_;

private:
    ChildScreen &screen_;
    ScreenHost &host_;
};
