// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Rows of the analyses' list: filling it and filtering it at three sizes.
void registerAnalysisBenchmarks();
/// To be called before the application object ends, since each farm has its window.
void closeAnalysisFarms();
