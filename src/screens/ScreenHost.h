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

/// What a screen may ask of the main window.
class ScreenHost
{
public:
    virtual ~ScreenHost() = default;
    virtual SessionContext &session() = 0;
    virtual clsPestMONNew &objPestMON() = 0;
    virtual controls::Dialogs &dialogs() = 0;
    /// What was written last, or what could not be written. Only after the store has answered.
    virtual void showStatus(const QString &text) = 0;
    virtual void showFailure(const QString &text) = 0;
    /// An error that no handler took: a box with number and description; the screen stays.
    virtual void showError(const basic::RunTimeError &error) = 0;
    /// The box of the main window in which long work shows how far it is.
    virtual ProgressPicture &Picture4() = 0;
    /// Who takes finished workbooks.
    virtual excel::Launcher &launcher() = 0;
    /// The one spreadsheet application of the session: nothing before its first use and after each report.
    virtual std::optional<excel::Application> &excelApplication() = 0;
};
