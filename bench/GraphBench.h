// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What the graphs read and list.
void registerGraphs();
