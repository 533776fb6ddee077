// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{
class DatePicker;
}
class ScreenHost;
struct SessionContext;

/// Sets a screen's period: from the session's start date to today. An empty start becomes the first of January.
void showPeriod(ScreenHost &host, controls::DatePicker &from, controls::DatePicker &to);
/// Reads the start from FindSDate.txt; the status line reports a file without a date.
void readPeriodStart(ScreenHost &host);
/// Stores the start in the session and in FindSDate.txt.
void storePeriodStart(SessionContext &session, const controls::DatePicker &from);
