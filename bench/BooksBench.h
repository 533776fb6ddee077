// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The rows of the workbooks: field sheets, the sheet of the records report, and that report with its queries.
void registerBooks();
