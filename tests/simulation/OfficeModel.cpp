// SPDX-License-Identifier: GPL-3.0-or-later
#include "OfficeModel.h"

#include <sqlite3.h>

#include <cmath>
#include <memory>

namespace
{

/// SQLite itself on a file, for queries whose result is one number.
class BareFile
{
public:
    explicit BareFile(const QString &path)
    {
        sqlite3 *file = nullptr;
        if (sqlite3_open_v2(path.toUtf8().constData(), &file, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
            qFatal("the file cannot be opened");
        }
        file_.reset(file);
    }

    double number(const QString &sql) const
    {
        sqlite3_stmt *prepared = nullptr;
        if (sqlite3_prepare_v2(file_.get(), sql.toUtf8().constData(), -1, &prepared, nullptr) != SQLITE_OK) {
            qFatal("%s: %s", qPrintable(sql), sqlite3_errmsg(file_.get()));
        }
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> statement(prepared, sqlite3_finalize);
        return sqlite3_step(prepared) == SQLITE_ROW ? sqlite3_column_double(prepared, 0) : 0.0;
    }

private:
    struct Close {
        void operator()(sqlite3 *file) const { sqlite3_close(file); }
    };
    std::unique_ptr<sqlite3, Close> file_;
};

} // namespace

int OfficeModel::issue(const Instruction &instruction)
{
    const int key = static_cast<int>(instructions_.size()) + 1;
    instructions_[key] = instruction;
    repeatDone_ = false;
    return key;
}

void OfficeModel::complete(int key, QDate day)
{
    instructions_[key].completed = day;
    if (instructions_[key].repeats && !repeatDone_) {
        Instruction successor = instructions_[key];
        successor.completed.reset();
        successor.found.clear();
        open_.push_back(issue(successor));
    }
    repeatDone_ = true;
}

std::optional<int> OfficeModel::takeOpen()
{
    if (open_.empty()) {
        return {};
    }
    const int key = open_.front();
    open_.pop_front();
    return key;
}

int OfficeModel::counted(int block, int pest, QDate from, QDate to) const
{
    int sum = 0;
    for (const auto &[key, instruction] : instructions_) {
        const auto found = instruction.found.find({block, pest});
        if (instruction.counts && instruction.completed && *instruction.completed >= from && *instruction.completed <= to
            && found != instruction.found.end()) {
            sum += found->second;
        }
    }
    return sum;
}

QStringList OfficeModel::differencesFrom(const QString &pestFile) const
{
    const BareFile file(pestFile);
    QStringList differences;
    const auto compare = [&](const QString &sql, double expected) {
        const double stored = file.number(sql);
        if (std::abs(stored - expected) > 1e-6 * std::max(1.0, std::abs(expected))) {
            differences.append(QStringLiteral("%1: %2, not %3").arg(sql).arg(stored).arg(expected));
        }
    };
    compare(QStringLiteral("SELECT COUNT(*) FROM tblPMTrans"), static_cast<double>(instructions_.size()));
    int details = 0;
    for (const auto &[key, instruction] : instructions_) {
        compare(QStringLiteral("SELECT COUNT(*) FROM tblPMTrans WHERE PMTransID = %1 AND PMTransCom = -1").arg(key),
                instruction.completed ? 1 : 0);
        for (const int block : instruction.blocks) {
            for (const int pest : instruction.pests) {
                const auto found = instruction.found.find({block, pest});
                const int sum = found == instruction.found.end() ? 0 : found->second;
                const QString rows = QStringLiteral(" WHERE PMTransID = %1 AND BlockID = %2 AND CTargetID = %3");
                const QString pair = rows.arg(key).arg(block).arg(pest);
                // A yes is -1 in a detail row and counts 1 in the total.
                compare(QStringLiteral("SELECT SUM(PMCount) - SUM(PMYes) FROM tblPMData") + pair, sum);
                compare(QStringLiteral("SELECT SUM(PMCountMax) + SUM(PMYesMax) FROM tblPMDataMax") + pair, sum);
                details += points.at(block);
            }
        }
    }
    compare(QStringLiteral("SELECT COUNT(*) FROM tblPMData"), details);
    compare(QStringLiteral("SELECT COUNT(*) FROM tblPMDataMax"), details);
    for (const auto &[field, sum] : analyses_) {
        compare(QStringLiteral("SELECT SUM(%1) FROM %2").arg(field.second, field.first), sum);
    }
    return differences;
}
