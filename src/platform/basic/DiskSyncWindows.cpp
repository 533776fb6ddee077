// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/DiskSync.h"

#include "platform/basic/NativePath.h"
#include "platform/basic/RunTimeError.h"

#include <QFileInfo>

#include <algorithm>
#include <io.h>
#include <windows.h>

namespace basic
{

namespace
{

/// ERROR_DISK_QUOTA_EXCEEDED, which not every compiler's headers have.
constexpr int QuotaExceeded = 1295;

HANDLE fileOf(int handle)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

} // namespace

void syncToDisk(const QString &path)
{
    // The names in a folder are in the file system's own log here; Windows has no call that waits for them.
    if (QFileInfo(path).isDir()) {
        return;
    }
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(reinterpret_cast<const wchar_t *>(nativePath(path).utf16()), GENERIC_WRITE, shared, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    const DWORD failure = FlushFileBuffers(file) ? ERROR_SUCCESS : GetLastError();
    CloseHandle(file);
    if (failure != ERROR_SUCCESS) {
        throw RunTimeError(
            ErrorNumber::DeviceError,
            QStringLiteral("%1 could not be written to the disk: %2.").arg(path, qt_error_string(static_cast<int>(failure))));
    }
}

int syncOpenFile(int handle)
{
    return FlushFileBuffers(fileOf(handle)) ? 0 : static_cast<int>(GetLastError());
}

int writeAll(int handle, const char *bytes, qint64 length)
{
    constexpr qint64 Most = 1 << 30;
    while (length > 0) {
        DWORD done = 0;
        if (!WriteFile(fileOf(handle), bytes, static_cast<DWORD>(std::min(length, Most)), &done, nullptr)) {
            return static_cast<int>(GetLastError());
        }
        bytes += done;
        length -= done;
    }
    return 0;
}

bool isFullDisk(int systemError)
{
    return systemError == ERROR_DISK_FULL || systemError == ERROR_HANDLE_DISK_FULL || systemError == QuotaExceeded
        || systemError == ERROR_FILE_TOO_LARGE;
}

} // namespace basic
