// SPDX-License-Identifier: GPL-3.0-or-later
#include "ForeignReader.h"

#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QProcess>

#include <algorithm>

namespace foreignReader
{

namespace
{

std::optional<QStringList> linesOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return std::nullopt;
    }
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

std::optional<QStringList> jetRows(const QString &file, const QString &table, const QStringList &columns)
{
    std::optional<QStringList> lines =
        linesOf(QStringLiteral("mdb-export"), {QStringLiteral("-Q"), QStringLiteral("-d"), QStringLiteral("|"), file, table});
    if (!lines || lines->isEmpty()) {
        return std::nullopt;
    }
    const QStringList header = lines->takeFirst().split(u'|');
    for (QString &line : *lines) {
        const QStringList cells = line.split(u'|');
        QStringList chosen;
        for (const QString &column : columns) {
            chosen.append(cells.value(header.indexOf(column)));
        }
        line = chosen.join(u'|');
    }
    return lines;
}

QStringList ownRows(const QString &file, const QString &table, const QStringList &columns)
{
    const auto database = dao::Workspace::OpenDatabase(file, false, true, store::connectText());
    QStringList lines;
    dao::Recordset rows = database->OpenRecordset(QStringLiteral("Select * from %1").arg(table));
    for (; !rows.Eof(); rows.MoveNext()) {
        QStringList cells;
        for (const QString &column : columns) {
            cells.append(QString::number(rows.longValue(column)));
        }
        lines.append(cells.join(u'|'));
    }
    lines.sort();
    return lines;
}

} // namespace

std::optional<QStringList> rows(const QString &file, const QString &table, const QStringList &columns)
{
    const bool isJet = dao::Workspace::fileKind(file) == dao::FileKind::Jet;
    const QString sql = QStringLiteral("SELECT %1 FROM %2").arg(columns.join(u','), table);
    std::optional<QStringList> lines =
        isJet ? jetRows(file, table, columns) : linesOf(QStringLiteral("sqlite3"), {QStringLiteral("-readonly"), file, sql});
    if (lines) {
        lines->sort();
    }
    return lines;
}

QString disagreement(const QString &file)
{
    const std::pair<QString, QStringList> tables[] = {
        {QStringLiteral("tblPMTrans"), {QStringLiteral("PMTransID"), QStringLiteral("PMMethodID")}},
        {QStringLiteral("tblPMBlockTrans"), {QStringLiteral("PMTransID"), QStringLiteral("BlockID")}},
        {QStringLiteral("tblPMTarTrans"), {QStringLiteral("PMTransID"), QStringLiteral("CTargetID")}},
        {QStringLiteral("tblPMData"), {QStringLiteral("PMDataID"), QStringLiteral("PMTransID"), QStringLiteral("PMCount")}},
        {QStringLiteral("tblPMDataMax"),
         {QStringLiteral("PMDataMaxID"), QStringLiteral("PMTransID"), QStringLiteral("PMCountMax")}},
    };
    for (const auto &[table, columns] : tables) {
        const std::optional<QStringList> other = rows(file, table, columns);
        if (!other) {
            return QStringLiteral("another program cannot read %1").arg(table);
        }
        if (const QStringList own = ownRows(file, table, columns); own != *other) {
            return QStringLiteral("another program reads %1 rows of %2, this one %3")
                .arg(other->size())
                .arg(table)
                .arg(own.size());
        }
    }
    return {};
}

} // namespace foreignReader
