// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

/// The steps and checks of the round: a line for each step on standard output, numbered screenshots in a folder.
class Report
{
public:
    explicit Report(QString pictures);

    void step(const QString &text);
    /// Counts a check, and prints it when it fails.
    void check(bool holds, const QString &what);
    /// The same for two texts; prints both when they differ.
    void compare(const QString &found, const QString &expected, const QString &what);
    void screenshot(QWidget &window, const QString &name);
    const QString &pictures() const { return pictures_; }
    /// Prints the sum; true when no check failed.
    bool finish() const;

private:
    QString pictures_;
    int pictureNumber_ = 0;
    int held_ = 0;
    int failed_ = 0;
};
