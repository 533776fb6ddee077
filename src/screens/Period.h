// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{
class DatePicker;
}
class ScreenHost;
struct SessionContext;

/// Sets a screen's period: from the start kept in the session to today. An empty start becomes the first of January.
void showPeriod(ScreenHost &host, controls::DatePicker &from, controls::DatePicker &to);
/// Takes the start over from FindSDate.txt; the status line tells when the file gives no date.
void readPeriodStart(ScreenHost &host);
/// Keeps the start in the session and in FindSDate.txt.
void keepPeriodStart(SessionContext &session, const controls::DatePicker &from);
