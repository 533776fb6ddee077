// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

#include <QProcess>
#include <QStringList>
#include <QTest>

#include <algorithm>
#include <functional>

/// Begins a test that reads back.
#ifdef Q_OS_WIN
#define NEEDS_READERS() QSKIP("The readers that judge a workbook do not run on Windows.")
#else
#define NEEDS_READERS() static_cast<void>(0)
#endif

/// What an independent reader says of a workbook; the test fails when there is no reader or it refuses the file.
inline QStringList readBack(const QStringList &arguments)
{
    QProcess reader;
    reader.start(QStringLiteral(READER_PYTHON), QStringList{QStringLiteral(READER_SCRIPT)} + arguments);
    if (!reader.waitForFinished() || reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0) {
        return {QStringLiteral("reader failed: ") + QString::fromUtf8(reader.readAllStandardError()) + reader.errorString()};
    }
    return QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

/// Compares line by line, so that a failure shows the line.
inline void compareLines(const QStringList &actual, const QStringList &expected)
{
    for (qsizetype at = 0; at < std::min(actual.size(), expected.size()); ++at) {
        QCOMPARE(actual[at], expected[at]);
    }
    QCOMPARE(actual.join(u'\n'), expected.join(u'\n'));
}

/// Number and description of the error that an action raises; 0 without one.
inline std::pair<int, QString> errorOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const basic::RunTimeError &error) {
        return {error.number(), error.description()};
    }
    return {0, {}};
}
