// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"
#include "platform/excel/Application.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace reports
{

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
    /// Writes on the active sheet of `application`, and on further sheets of its workbook where `rowLimit` is reached.
    explicit RecordsSheet(const excel::Application &application, int rowLimit = RowsOfSheet);

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
    /// A .xls has no more.
    static constexpr int RowsOfSheet = 65536;

    struct Totals;
    struct Heading {
        QString farm;
        QDate from;
        QDate to;
    };
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
    void writeHeading(const Heading &heading) const;
    void writeTableHeading(const QString &nameHeading, int points);
    /// A cell of the current line; `index` must not be beyond Z.
    excel::Range cellAt(int index) const;
    void writeRecord(const PestRecord &record, Totals &totals) const;
    void writeTotals(int points, const Totals &totals);

    /// Moves to a new sheet or a new page where a table of so many rows does not fit.
    void makeSpace(int rows);
    void continueOnNewSheet();
    int rowsPerPage() const;

    excel::Application application_;
    excel::Worksheet sheet_;
    int rowLimit_;
    int row_;
    int pageStart_;
    /// Row of the caption that no table follows yet, 0 for none.
    int openCaption_ = 0;
    /// What a further sheet begins with.
    std::optional<Heading> heading_;
    QString caption_;
    int captionPoints_ = 0;
};

} // namespace reports
