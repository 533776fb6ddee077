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

namespace pestmon
{

/// Base of the pages of the pest monitoring screen: access to its controls and to the main window.
class PestMonPage : public QObject
{
    Q_OBJECT
public:
    PestMonPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui) : ui_(ui), screen_(screen), host_(host) {}

protected:
    SessionContext &session() const { return host_.session(); }
    clsPestMONNew &objPestMON() const { return host_.objPestMON(); }
    ScreenHost &host() const { return host_; }
    /// The current instruction's name in the status line.
    QString instructionName() const;

    /// As in ChildScreen, for the lifetime of the page.
    template <typename Sender, typename Signal, typename Body> void on(Sender *sender, Signal signal, Body body)
    {
        screen_.on(sender, signal, this, std::move(body));
    }
    template <typename Body> bool runOrReport(const QString &what, Body &&body)
    {
        return screen_.runOrReport(what, std::forward<Body>(body));
    }
    /// Shows a note from its beginning.
    static void showNote(QLineEdit &note, const QString &text);
    /// Reports in the status line when a note is full.
    void reportFullNote(QLineEdit &note);
    void showStoreFailure(const QString &what) { screen_.showStoreFailure(what); }

    Ui::frmPestMon2 &ui_;

private:
    ChildScreen &screen_;
    ScreenHost &host_;
};

} // namespace pestmon
