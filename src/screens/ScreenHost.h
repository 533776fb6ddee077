// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "platform/excel/Application.h"

#include <QString>

#include <optional>

class clsPestMONNew;
class ProgressPicture;

namespace basic
{
class RunTimeError;
}
namespace controls
{
class Dialogs;
}

/// The main window as the screens see it.
class ScreenHost
{
public:
    virtual ~ScreenHost() = default;
    virtual SessionContext &session() = 0;
    virtual clsPestMONNew &objPestMON() = 0;
    virtual controls::Dialogs &dialogs() = 0;
    /// The last change that was stored, or a failure; shown only after the store has returned.
    virtual void showStatus(const QString &text) = 0;
    virtual void showFailure(const QString &text) = 0;
    /// What the user may need to know, when nothing was stored and nothing failed.
    virtual void showNote(const QString &text) = 0;
    /// An unhandled error: a box with number and description; the screen remains.
    virtual void showError(const basic::RunTimeError &error) = 0;
    /// The main window's progress box for long work.
    virtual ProgressPicture &Picture4() = 0;
    /// Opens finished workbooks.
    virtual excel::Launcher &launcher() = 0;
    /// The session's spreadsheet application: nothing before its first use and after each report.
    virtual std::optional<excel::Application> &excelApplication() = 0;
};
