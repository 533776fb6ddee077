// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/NativePath.h"

#ifdef Q_OS_WIN
#include <QDir>
#include <QFileInfo>
#endif

namespace basic
{

#ifdef Q_OS_WIN

QString nativePath(const QString &path)
{
    // Leaves space for what SQLite appends to a name.
    constexpr qsizetype Longest = 240;
    const QString absolute = QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (absolute.size() <= Longest || absolute.startsWith(QStringLiteral(R"(\\?\)"))) {
        return path;
    }
    return absolute.startsWith(QStringLiteral(R"(\\)")) ? QStringLiteral(R"(\\?\UNC)") + absolute.mid(1)
                                                        : QStringLiteral(R"(\\?\)") + absolute;
}

#else

QString nativePath(const QString &path)
{
    return path;
}

#endif

} // namespace basic
