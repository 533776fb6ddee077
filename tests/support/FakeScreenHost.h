// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fakes/QueuedDialogs.h"
#include "fakes/RecordingLauncher.h"
#include "platform/basic/RunTimeError.h"
#include "screens/ProgressPicture.h"
#include "screens/ScreenHost.h"
#include "store/clsPestMONNew.h"

#include <QString>

/// The main window of a screen under test: records status texts and answers boxes from a queue.
class FakeScreenHost : public ScreenHost
{
public:
    explicit FakeScreenHost(SessionContext &session) : session_(session), store_(session) {}

    SessionContext &session() override { return session_; }
    clsPestMONNew &objPestMON() override { return store_; }
    QueuedDialogs &dialogs() override { return dialogs_; }
    void showStatus(const QString &text) override { status = text; }
    void showFailure(const QString &text) override { failure = text; }
    void showNote(const QString &text) override { note = text; }
    void showError(const basic::RunTimeError &error) override { errors.append(error.description()); }
    ProgressPicture &Picture4() override { return picture_; }
    RecordingLauncher &launcher() override { return launcher_; }
    std::optional<excel::Application> &excelApplication() override { return excelApplication_; }

    QString status;
    QString failure;
    QString note;
    QStringList errors;

private:
    SessionContext &session_;
    clsPestMONNew store_;
    QueuedDialogs dialogs_;
    RecordingLauncher launcher_;
    ProgressPicture picture_;
    std::optional<excel::Application> excelApplication_;
};
