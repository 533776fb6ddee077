// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/ChildScreen.h"

#include <QObject>

#include <utility>

class QLineEdit;
namespace Ui
{
class frmPestMon2;
}

/// What the faces of the pest monitoring screen share: its controls and what it may ask of the main window.
class PestMonPage : public QObject
{
    Q_OBJECT
public:
    PestMonPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui) : ui_(ui), screen_(screen), host_(host) {}

protected:
    SessionContext &session() const { return host_.session(); }
    clsPestMONNew &objPestMON() const { return host_.objPestMON(); }
    ScreenHost &host() const { return host_; }
    /// How the status line names the instruction in hand.
    QString instructionName() const;

    /// As in ChildScreen, for as long as the face lives.
    template <typename Sender, typename Signal, typename Body> void on(Sender *sender, Signal signal, Body body)
    {
        screen_.on(sender, signal, this, std::move(body));
    }
    template <typename Body> bool runOrReport(const QString &what, Body &&body)
    {
        return screen_.runOrReport(what, std::forward<Body>(body));
    }
    /// From its start, however long it is.
    static void showNote(QLineEdit &note, const QString &text);
    /// A note that takes no more says so in the status line.
    void tellFullNote(QLineEdit &note);
    void showStoreFailure(const QString &what) { screen_.showStoreFailure(what); }

    Ui::frmPestMon2 &ui_;

private:
    ChildScreen &screen_;
    ScreenHost &host_;
};
