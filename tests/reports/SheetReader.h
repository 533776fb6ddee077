// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Application.h"
#include "platform/excel/Readers.h"

#include <QDir>

/// What an independent reader says of one sheet, by line.
class ReadSheet
{
public:
    /// `number` counts from 1.
    explicit ReadSheet(const QString &path, int number = 1)
    {
        for (const QString &line : readBack({path})) {
            number -= line.startsWith(QLatin1String("sheet ")) ? 1 : 0;
            if (number == 0) {
                lines_.append(line);
            }
            fault_ = line.startsWith(QLatin1String("reader failed")) ? line : fault_;
        }
    }

    QString fault() const { return fault_; }
    /// "name" of "sheet name".
    QString name() const { return lines_.isEmpty() ? QString() : lines_.front().mid(6).remove(QStringLiteral(" shown")); }
    bool isOnTop() const { return !lines_.isEmpty() && lines_.front().endsWith(QLatin1String(" shown")); }
    qsizetype lineCount() const { return lines_.size(); }
    /// What follows "A9 " in its line; empty when the cell is neither filled nor formatted.
    QString cell(const QString &reference) const { return after(reference + u' '); }
    /// The value alone.
    QString value(const QString &reference) const
    {
        const QString actual = cell(reference);
        return actual.section(u'[', 1).section(u']', 0, 0);
    }
    QString height(int row) const { return after(QStringLiteral("height %1 ").arg(row)); }
    QString width(const QString &column) const { return after(QStringLiteral("width %1 ").arg(column)); }
    /// All lines of a kind, joined.
    QString all(const QString &kind) const
    {
        QStringList found;
        for (const QString &line : lines_) {
            if (line.startsWith(kind + u' ')) {
                found.append(line.mid(kind.size() + 1));
            }
        }
        return found.join(u' ');
    }

private:
    QString after(const QString &beginning) const
    {
        for (const QString &line : lines_) {
            if (line.startsWith(beginning)) {
                return line.mid(beginning.size());
            }
        }
        return {};
    }

    QStringList lines_;
    QString fault_;
};

/// Puts a blank template into a program's folder, in a folder and under a name of other letter case than the program asks for.
inline void makeTemplate(const QString &appPath, const QString &name)
{
    QDir(appPath).mkpath(QStringLiteral("templates"));
    excel::Application application;
    application.Workbooks().Add().SaveAs(appPath + QStringLiteral("/templates/") + name.toUpper(), excel::xlExcel8);
}
