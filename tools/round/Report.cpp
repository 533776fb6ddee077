// SPDX-License-Identifier: GPL-3.0-or-later
#include "Report.h"

#include <QDir>
#include <QPixmap>
#include <QTest>
#include <QTextStream>
#include <QWidget>

#include <utility>

namespace
{

void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

} // namespace

Report::Report(QString pictures) : pictures_(std::move(pictures))
{
    QDir().mkpath(pictures_);
}

void Report::step(const QString &text)
{
    print(QStringLiteral("- %1").arg(text));
}

void Report::check(bool holds, const QString &what)
{
    if (holds) {
        ++held_;
    } else {
        ++failed_;
        print(QStringLiteral("  FAILED: %1").arg(what));
    }
}

void Report::compare(const QString &found, const QString &expected, const QString &what)
{
    check(found == expected, QStringLiteral("%1: found \"%2\", expected \"%3\"").arg(what, found, expected));
}

void Report::screenshot(QWidget &window, const QString &name)
{
    // Layouts and repaints that are still due come first.
    constexpr int Settled = 300;
    QTest::qWait(Settled);
    const QString file = QStringLiteral("%1-%2.png").arg(++pictureNumber_, 2, 10, QLatin1Char('0')).arg(name);
    const QString path = QDir(pictures_).filePath(file);
    check(window.grab().save(path), QStringLiteral("the screenshot %1 could not be written").arg(path));
}

bool Report::finish() const
{
    print(QStringLiteral("%1 checks passed, %2 failed. Screenshots: %3")
              .arg(held_)
              .arg(failed_)
              .arg(QDir::toNativeSeparators(pictures_)));
    return failed_ == 0 && held_ > 0;
}
