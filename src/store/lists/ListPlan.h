// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/sheets/Workbook.h"
#include "store/lists/FarmLists.h"

#include <array>
#include <optional>
#include <vector>

namespace lists
{

/// A row as somebody gives it: on a sheet, on the clipboard, in the cells of a screen.
struct GivenRow {
    /// Of the sheet, from 1; 0 where there is no sheet.
    int number = 0;
    /// Blank for a new row.
    QString keyText;
    /// By column of the list; nothing where the column was not given, which leaves it as it is.
    std::vector<std::optional<sheets::Cell>> cells;
    /// Why the row cannot be read, such as merged cells.
    QString refusal;

    /// No cell that was given is filled.
    bool isBlank() const;
};

struct GivenList {
    List list = List::Farms;
    QString sheet;
    std::vector<GivenRow> rows;
};

/// One thing that is wrong with what was given, or worth knowing.
struct Fault {
    List list = List::Farms;
    QString sheet;
    int row = 0;
    QString column;
    QString value;
    /// A sentence.
    QString reason;
    /// False for a mere note.
    bool refuses = true;
};

/// A row to add (nothing before), to change, or to delete (nothing after).
struct Change {
    List list = List::Farms;
    std::optional<Record> before;
    std::optional<Record> after;

    std::int32_t key() const { return after ? after->key : before->key; }
};

struct Counts {
    int added = 0;
    int changed = 0;
    int unchanged = 0;
    int refused = 0;
};

/// What would be written, row by row, and what would not.
struct Plan {
    std::vector<Change> changes;
    std::vector<Fault> faults;
    std::array<Counts, AllLists.size()> counts{};

    Counts total() const;
    bool refuses() const;
};

/// "12 new, 3 changed, 2 refused".
QString summary(const Counts &counts);

enum class Matching { ByKey, ByKeyOrName };

/// Turns given rows into changes. Works on a copy of the lists, so that a row may refer to one given before it, and new rows have
/// the keys that they will be written with.
class Planner
{
public:
    /// `farm` is the farm that a block belongs to when its row names none, and that decides between blocks of one name; 0 for
    /// none.
    Planner(const FarmLists &lists, Matching matching, std::int32_t farm);

    void add(const GivenList &given);
    /// What is wrong with what was given as a whole.
    void addFaults(const std::vector<Fault> &faults);
    const Plan &plan() const { return plan_; }
    const FarmLists &planned() const { return lists_; }

private:
    struct RowWork;

    void addRow(RowWork &work);
    bool findRow(RowWork &work);
    bool findByKey(RowWork &work);
    void parseCells(RowWork &work);
    void parseCell(RowWork &work, int column, const sheets::Cell &cell);
    void parseReference(RowWork &work, int column, const QString &text);
    void parseReferences(RowWork &work, int column, const QString &text);
    void checkParents(RowWork &work);
    QList<std::int32_t> narrowed(const RowWork &work, int column, const QList<std::int32_t> &keys) const;
    void findByName(RowWork &work);
    void addDefaults(RowWork &work);
    void finish(RowWork &work);

    /// A row that was there before what was given.
    const Record *stored(List list, std::int32_t key) const;

    FarmLists lists_;
    std::array<std::int32_t, AllLists.size()> lastStored_{};
    Matching matching_;
    std::int32_t farm_ = 0;
    Plan plan_;
};

} // namespace lists
