// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListHost.h"

#include <functional>
#include <optional>

namespace mainmodule
{

inline const QString WorkbookFilter = QStringLiteral("Workbooks (*.xlsx)");
inline const QString WorkbookOrCsvFilter = QStringLiteral("Workbooks (*.xlsx);;This list as separated values (*.csv)");
inline const QString ReadableFilter = QStringLiteral("Workbooks and lists (*.xlsx *.xlsm *.csv *.txt);;All files (*)");

/// Asks where to save, has the file written, and says where it is; an error is in a box. A name without ending gets that of the
/// first filter.
void saveWorkbook(ListHost &host, const QString &title, const QString &name, const QString &filter,
                  const std::function<void(const QString &path)> &write);

/// Asks for a file and reads it; nothing when the user cancels or the file cannot be read, which a box says.
struct ReadFile {
    QString path;
    sheets::Workbook book;
};
std::optional<ReadFile> openWorkbook(ListHost &host);

} // namespace mainmodule
