// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct SessionContext;

/// Opens the main, the pest and the spray database in this order, for reading only when the farm is only shown. The first one
/// that fails ends it with its error; using that handle then raises an error with the file and the reason, and the handles after
/// it stay empty.
void openDatabases(SessionContext &session);

/// Opens the main and the spray database for writing the farm lists. A file that fails leaves its reason in its handle; the pest
/// database, which only the monitoring writes, stays closed.
void openListDatabases(SessionContext &session);
