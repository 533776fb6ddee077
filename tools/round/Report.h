// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

/// What the round did and whether it held: a line a step on standard output, numbered pictures in a folder.
class Report
{
public:
    explicit Report(QString pictures);

    void step(const QString &text);
    /// Counts and prints a failure; what holds is only counted.
    void check(bool holds, const QString &what);
    /// The same for two texts, telling both when they differ.
    void compare(const QString &found, const QString &expected, const QString &what);
    void picture(QWidget &window, const QString &name);
    const QString &pictures() const { return pictures_; }
    /// Prints the sum; true when everything held.
    bool finish() const;

private:
    QString pictures_;
    int pictureNumber_ = 0;
    int held_ = 0;
    int failed_ = 0;
};
