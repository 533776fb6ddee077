// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/HandOffFiles.h"

#include "common/SessionContext.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QFileInfo>

#include <limits>
#include <optional>

namespace
{

constexpr auto PeriodStartFile = "\\FindSDate.txt";

std::optional<QString> existingFile(const SessionContext &session, const char *name)
{
    const auto path = basic::findPath(session.AppPath + QLatin1String(name));
    // A folder of that name is no file.
    return path && QFileInfo(*path).isFile() ? path : std::nullopt;
}

QString readText(const SessionContext &session, const char *name)
{
    const auto path = existingFile(session, name);
    return path ? basic::readFirstItem(*path) : QString();
}

} // namespace

void Read_FindFarm(SessionContext &session)
{
    session.CurrentFarm = readText(session, "\\Findfarm.txt");
}

void Read_FindFarmID(SessionContext &session)
{
    const auto path = existingFile(session, "\\FindfarmID.txt");
    session.CurrentFarmID = path ? basic::readFirstLong(*path) : 0;
}

void Read_FindYear(SessionContext &session)
{
    session.CurrentYear = readText(session, "\\Findyear.txt");
}

void Read_FindYearID(SessionContext &session)
{
    if (const auto path = existingFile(session, "\\FindyearID.txt")) {
        session.CurrentYearID = basic::readFirstLong(*path);
    } else {
        session.CurrentFarmID = 0;
    }
}

QString Read_FindSDate(SessionContext &session)
{
    session.CurrentSDate.clear();
    const auto path = existingFile(session, PeriodStartFile);
    if (!path) {
        return {};
    }
    QString reason;
    try {
        const QString item = basic::readFirstItem(*path);
        if (const QDate start = basic::dateFromText(item); start.isValid()) {
            // As the program writes it itself: a quoted text may hold what would not come back the same.
            session.CurrentSDate = basic::formatDate(start, u"yyyy/MM/dd");
            return {};
        }
        reason = QStringLiteral("\"%1\" is not a date").arg(item);
    } catch (const basic::RunTimeError &error) {
        reason = error.description();
    }
    return QStringLiteral("The period start in %1 was not used: %2").arg(*path, reason);
}

void Write_FindSDate(const SessionContext &session)
{
    if (!session.ViewOnlyReason.isEmpty()) {
        return;
    }
    basic::writeLine(basic::pathForWriting(session.AppPath + QLatin1String(PeriodStartFile)), session.CurrentSDate);
}

void Write_FindFarm(const SessionContext &session)
{
    basic::writeLine(basic::pathForWriting(session.AppPath + QLatin1String("\\FindFarm.txt")), session.CurrentFarm);
}

std::int32_t seasonKey(const QString &season)
{
    const double number = basic::Val(season);
    return number > 0 && number <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(number) : 0;
}

void Write_HandOff(const SessionContext &session)
{
    const auto write = [&session](const char *name, const QString &item) {
        basic::writeLine(basic::pathForWriting(session.AppPath + QLatin1String(name)), item);
    };
    // A reader takes a text up to its first comma, unless it is quoted.
    const auto item = [](const QString &text) { return text.contains(u',') ? QStringLiteral("\"%1\"").arg(text) : text; };
    write("\\Findfarm.txt", item(session.CurrentFarm));
    write("\\FindfarmID.txt", QString::number(session.CurrentFarmID));
    write("\\Findyear.txt", item(session.CurrentYear));
    write("\\FindyearID.txt", QString::number(session.CurrentYearID));
}
