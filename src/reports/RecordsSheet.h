// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"
#include "platform/excel/Application.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

/// One captured value of a block and a pest.
struct PestRecord {
    basic::SerialDate completed;
    int point = 0;
    /// Whether the instruction counted; else it asked for Yes or No.
    bool counts = false;
    /// Nothing when none was captured.
    std::optional<double> count = {};
    bool yes = false;
};

/// The sheet of the records report, written from top to bottom: a heading, then captions with their tables. Columns beyond Z are
/// not written and left out of the totals; a range then ends at Z.
class RecordsSheet
{
public:
    /// Writes on the active sheet of `application`.
    explicit RecordsSheet(const excel::Application &application);

    void writeHeading(const QString &farm, QDate from, QDate to);
    /// A line above the following tables, as wide as they are.
    void beginGroup(const QString &caption, int points);
    /// A table with a line per date of completion, in the order of `records`; nothing without records. Totals follow as
    /// soon as one of the records is a count.
    void writeTable(const QString &nameHeading, const QString &name, int pointCount, const std::vector<PestRecord> &records);
    void endGroup();
    void fitColumns();

    /// Row of the last line written, from 1.
    int row() const { return row_; }

private:
    struct Totals;
    struct TextStyle {
        double size;
        bool bold;
        bool framed;
    };

    excel::Range range(const QString &first, const QString &last) const;
    excel::Range lineUpTo(int index) const;
    void write(const QString &first, const QString &last, const QString &text, TextStyle style) const;
    /// Does nothing beyond Z. Indexes count from column B.
    void writeCell(int index, const QString &text, TextStyle style) const;
    void writeTableHeading(const QString &nameHeading, int points);
    /// A cell of the current line; `index` must not be beyond Z.
    excel::Range cellAt(int index) const;
    void writeRecord(const PestRecord &record, Totals &totals) const;
    void writeTotals(int points, const Totals &totals);

    excel::Worksheet sheet_;
    int row_;
};
