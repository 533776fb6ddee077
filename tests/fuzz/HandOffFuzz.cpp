// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/HandOffFiles.h"
#include "common/SessionContext.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

/// Waiting for a disk would be most of the work.
QString memoryFolder()
{
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("HandOffFuzz-XXXXXX"));
}

void write(const QString &path, const std::uint8_t *data, std::size_t size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)) < 0) {
        std::abort();
    }
}

} // namespace

/// The same bytes in every file. What was read must come back the same when the program has written it itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(memoryFolder());
    SessionContext session;
    session.AppPath = folder.path();
    for (const char *name : {"Findfarm.txt", "FindfarmID.txt", "Findyear.txt", "FindyearID.txt", "FindSDate.txt"}) {
        write(folder.filePath(QLatin1String(name)), data, size);
    }
    for (const auto read : {Read_FindFarm, Read_FindFarmID, Read_FindYear, Read_FindYearID}) {
        try {
            read(session);
        } catch (const basic::RunTimeError &error) {
            if (error.description().isEmpty()) {
                std::abort();
            }
        }
    }
    if (Read_FindSDate(session).isEmpty()) {
        const QString read = session.CurrentSDate;
        Write_FindSDate(session);
        if (!Read_FindSDate(session).isEmpty() || session.CurrentSDate != read) {
            std::abort();
        }
    }
    return 0;
}
