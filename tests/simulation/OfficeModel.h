// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QStringList>

#include <deque>
#include <map>
#include <optional>
#include <vector>

/// What the file of the office must hold: computed from what was typed, by rules of its own, never from what the program reads.
class OfficeModel
{
public:
    struct Instruction {
        bool counts = true;
        bool repeats = false;
        /// Keys in the order in which the screens show them.
        std::vector<int> blocks = {};
        std::vector<int> pests = {};
        std::optional<QDate> completed = {};
        /// Sum over the points, by block and pest.
        std::map<std::pair<int, int>, int> found = {};
    };

    /// Points of a block.
    std::map<int, int> points;

    /// The key that the instruction must have got.
    int issue(const Instruction &instruction);
    /// An instruction opened in the editor issues a successor again.
    void edited() { repeatDone_ = false; }
    void found(int key, int block, int pest, int sum) { instructions_[key].found[{block, pest}] = sum; }
    /// Completes it; a repeated one leaves an open successor.
    void complete(int key, QDate day);
    const Instruction &instruction(int key) const { return instructions_.at(key); }
    /// Takes the oldest successor that waits; nothing when none does.
    std::optional<int> takeOpen();
    /// Forgets what waits: its dates fall out of the new year's list.
    void startYear() { open_.clear(); }
    void analysis(const QString &table, const QString &field, double value) { analyses_[{table, field}] += value; }

    /// Counts of a block and pest completed within the days.
    int counted(int block, int pest, QDate from, QDate to) const;
    /// Every sum that the file has otherwise, in words; the file is read by SQLite itself.
    QStringList differencesFrom(const QString &pestFile) const;

private:
    std::map<int, Instruction> instructions_;
    std::map<std::pair<QString, QString>, double> analyses_;
    std::deque<int> open_;
    bool repeatDone_ = true;
};
