// SPDX-License-Identifier: GPL-3.0-or-later
#include "Judges.h"

#include "platform/jet/Check.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

#include <bit>
#include <cmath>

using jet::Value;

namespace
{

constexpr char Null[] = "<NULL>";
constexpr char ColumnEnd[] = "\x1f";
constexpr char RowEnd[] = "\x1e";
constexpr int NotInstalled = 9;

qint64 millisecondsOf(jet::Date date)
{
    // Before the first day the time of day still counts upwards.
    const double day = std::trunc(date.days);
    const double time = std::abs(date.days - day);
    return std::llround((day - 25569.0 + time) * 86400000.0);
}

QString exportText(const Value &value)
{
    struct Text {
        static QString digits(const char *format, double number)
        {
            return (number == 0.0 && std::signbit(number) ? "-" : "") + QString::asprintf(format, number);
        }
        QString operator()(jet::Null) const { return Null; }
        QString operator()(bool flag) const { return flag ? "1" : "0"; }
        QString operator()(std::int32_t number) const { return QString::number(number); }
        QString operator()(float number) const { return digits("%.8g", static_cast<double>(number)); }
        QString operator()(double number) const { return digits("%.16g", number); }
        QString operator()(jet::Currency money) const
        {
            return QString::asprintf("%s%lld.%04lld", money.units < 0 ? "-" : "",
                                     std::abs(static_cast<long long>(money.units)) / 10000,
                                     std::abs(static_cast<long long>(money.units)) % 10000);
        }
        QString operator()(jet::Date date) const
        {
            if (date.days < 0) {
                // What mdb-export makes of every date before its first.
                return "1900-01-00 00:00:00";
            }
            const auto seconds = static_cast<qint64>(std::llround(static_cast<double>(millisecondsOf(date)) / 1000.0));
            return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString("yyyy-MM-dd HH:mm:ss");
        }
        QString operator()(const QString &text) const { return text.isEmpty() ? QString(Null) : text; }
        QString operator()(const QByteArray &bytes) const { return QString(bytes.toHex()); }
    };
    return std::visit(Text{}, value);
}

QString readerText(const Value &value)
{
    struct Text {
        static QString bits(double number) { return QString::number(std::bit_cast<quint64>(number), 16); }
        QString operator()(jet::Null) const { return Null; }
        QString operator()(bool flag) const { return flag ? "1" : "0"; }
        QString operator()(std::int32_t number) const { return bits(number); }
        QString operator()(float number) const { return bits(static_cast<double>(number)); }
        QString operator()(double number) const { return bits(number); }
        QString operator()(jet::Currency money) const { return exportText(money); }
        QString operator()(jet::Date date) const
        {
            // Before the first day it lets the time of day count backwards.
            return QString::number(date.days < 0 ? std::llround((date.days - 25569.0) * 86400000.0) : millisecondsOf(date));
        }
        QString operator()(const QString &text) const { return text.startsWith(QChar(0xFEFF)) ? text.mid(1) : text; }
        QString operator()(const QByteArray &bytes) const { return QString(bytes.toHex()); }
    };
    return std::visit(Text{}, value);
}

template <typename Text> QStringList rowsOf(const jet::Database &database, const QString &table, qsizetype columns, Text text)
{
    QStringList rows;
    database.readRows(table, [&](const jet::Row &row) {
        QStringList cells;
        for (const Value &value : row.values) {
            cells.append(text(value));
        }
        rows.append(cells.mid(0, columns).join(ColumnEnd));
    });
    rows.sort();
    return rows;
}

QString firstDifference(const QString &judge, const QString &table, const QStringList &ours, const QStringList &theirs)
{
    if (ours == theirs) {
        return {};
    }
    const auto [our, their] = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
    const QString ourRow = our == ours.end() ? QString() : *our;
    const QString theirRow = their == theirs.end() ? QString() : *their;
    const auto at = std::mismatch(ourRow.begin(), ourRow.end(), theirRow.begin(), theirRow.end()).first - ourRow.begin();
    const auto near = [&](const QString &row) { return row.mid(std::max<qsizetype>(at - 20, 0), 60); };
    return QString("%1, %2: %3 rows and %4, row %5 differs at %6: \"%7\" and \"%8\"\n")
        .arg(judge, table)
        .arg(ours.size())
        .arg(theirs.size())
        .arg(our - ours.begin())
        .arg(at)
        .arg(near(ourRow), near(theirRow));
}

} // namespace

namespace judges
{

QByteArray fixture(const QString &name)
{
    QFile file(QStringLiteral(JET_FIXTURES "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

QStringList byMdbExport(const QString &path, const QString &table)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("MDBICONV", "UTF-8");
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("TZ", "UTC");
    process.setProcessEnvironment(environment);
    process.start("mdb-export",
                  {"-H", "-Q", "-d", ColumnEnd, "-R", RowEnd, "-0", Null, "-b", "hex", "-T", "%Y-%m-%d %H:%M:%S", path, table});
    if (!process.waitForFinished()) {
        qFatal("mdb-export must be installed");
    }
    QStringList rows = QString::fromUtf8(process.readAllStandardOutput()).split(RowEnd);
    rows.removeLast();
    rows.sort();
    return rows;
}

QStringList likeMdbExport(const jet::Database &database, const QString &table)
{
    return rowsOf(database, table, judges::AllColumns, exportText);
}

std::optional<QMap<QString, QStringList>> byMdbReader(const QString &path, qsizetype columns)
{
    QProcess process;
    process.start("node", {JUDGE_SCRIPT, path, Password});
    if (!process.waitForFinished() || process.exitCode() == NotInstalled) {
        return std::nullopt;
    }
    QMap<QString, QStringList> tables;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        const QJsonObject table = QJsonDocument::fromJson(line).object();
        QStringList rows;
        for (const QJsonValue row : table["rows"].toArray()) {
            QStringList cells;
            for (const QJsonValue cell : row.toArray()) {
                cells.append(cell.toString());
            }
            rows.append(cells.mid(0, columns).join(ColumnEnd));
        }
        rows.sort();
        if (!table.isEmpty()) {
            tables.insert(table["name"].toString(), rows);
        }
    }
    if (process.exitCode() != 0) {
        tables.insert("error", {process.readAllStandardError()});
    }
    return tables;
}

QStringList likeMdbReader(const jet::Database &database, const QString &table, qsizetype columns)
{
    return rowsOf(database, table, columns, readerText);
}

QString disagreement(const QString &path, qsizetype readerColumns)
{
#ifdef Q_OS_WIN
    return {};
#endif
    const auto database = jet::Database::open(path, Password);
    const auto reader = byMdbReader(path, readerColumns);
    QString differences;
    for (const QString &table : database->tableNames()) {
        differences += firstDifference("mdb-export", table, likeMdbExport(*database, table), byMdbExport(path, table));
        if (reader) {
            differences +=
                firstDifference("mdb-reader", table, likeMdbReader(*database, table, readerColumns), reader->value(table));
        }
    }
    return differences;
}

QString faults(const QString &path)
{
    return jet::check(path, Password).faults.join('\n');
}

QString complaints(const QString &path)
{
    return faults(path) + disagreement(path);
}

} // namespace judges
