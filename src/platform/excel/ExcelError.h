// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

namespace excel
{

/// An operation that the engine refuses: number 1004 and a sentence that names the file, the sheet or the value.
class ExcelError : public basic::RunTimeError
{
public:
    static constexpr int Refused = 1004;
    /// No spreadsheet program opens the file.
    static constexpr int NoProgram = 429;

    explicit ExcelError(const QString &description) : RunTimeError(Refused, description) {}
    ExcelError(int number, const QString &description) : RunTimeError(number, description) {}
};

} // namespace excel
