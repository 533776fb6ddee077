// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Transaction.h"

#include "platform/jet/CommitBytes.h"
#include "platform/jet/DatabaseState.h"
#include "platform/jet/OpenRollback.h"
#include "platform/jet/PageCommit.h"
#include "platform/jet/TableMaker.h"

#include <map>

namespace jet
{

class Transaction::Work
{
private:
    /// After damage has been met halfway through a change, the pages may be inconsistent.
    template <typename Body> auto guarded(const QString &table, Body &&body)
    {
        if (isBroken_) {
            throw Error(ErrorNumber::Damaged, QStringLiteral("The change of %1 had failed before.").arg(state_.pager.path()));
        }
        try {
            return body();
        } catch (const Fault &fault) {
            isBroken_ = true;
            state_.failDamaged(table, fault.sentence());
        }
    }

public:
    explicit Work(Database &database)
        : state_(*database.state_), lock_(requireLock(database)), rollback_(*database.rollback_), others_(lock_.lockOthers())
    {
        rollBack(state_.pager.path());
        if (stampOf(state_.pager.path()) != state_.stamp) {
            throw Error(ErrorNumber::ChangedMeanwhile,
                        QStringLiteral("%1 was changed by another program. Try again.").arg(state_.pager.path()));
        }
        requireClosed();
    }

    ~Work()
    {
        if (!isCommitted_) {
            writers_.clear();
            state_.pager.revertEdits();
            state_.allocator.revert();
            state_.forgetDefinitions();
        }
    }

    /// Runs `body(TableWriter &)`.
    template <typename Body> auto with(const QString &table, Body &&body)
    {
        TableDefinition &definition = state_.definition(table);
        return guarded(definition.name, [&] {
            auto writer = writers_.find(definition.page);
            if (writer == writers_.end()) {
                writer = writers_.try_emplace(definition.page, state_.allocator, definition, false).first;
            }
            return body(writer->second);
        });
    }

    /// For changes of definitions: before them the rows are put back, after them everything is read anew.
    template <typename Body> void changeDefinition(const QString &table, Body &&body)
    {
        guarded(table, [&] {
            flush();
            writers_.clear();
            body(state_);
        });
        state_.forgetDefinitions();
    }

    std::vector<std::uint32_t> commit()
    {
        guarded(QStringLiteral("MSysObjects"), [&] { flush(); });
        writers_.clear();
        std::vector<std::uint32_t> pages = commitPages(state_.pager, lock_.slot(), rollback_);
        isCommitted_ = true;
        state_.allocator.accept();
        state_.rowPages.forget();
        state_.stamp = stampOf(state_.pager.path());
        return pages;
    }

private:
    static LockFile &requireLock(Database &database)
    {
        if (!database.lock_) {
            throw Error(ErrorNumber::ReadOnly, QStringLiteral("%1 was opened for reading.").arg(database.path()));
        }
        return *database.lock_;
    }

    /// A pair that says "writing" without a user to it was left by a program that was stopped.
    void requireClosed() const
    {
        if (!state_.writers().empty()) {
            throw Error(
                ErrorNumber::NeedsRepair,
                QStringLiteral("%1 was being written when a program was stopped. Have the program that uses the file repair "
                               "it, then try again.")
                    .arg(state_.pager.path()));
        }
    }

    void flush()
    {
        for (auto &[page, writer] : writers_) {
            writer.flush();
        }
    }

    DatabaseState &state_;
    LockFile &lock_;
    OpenRollback &rollback_;
    std::unique_ptr<LockFile::Exclusive> others_;
    /// By the page of the definition.
    std::map<std::uint32_t, TableWriter> writers_;
    bool isBroken_ = false;
    bool isCommitted_ = false;
};

Transaction::Transaction(Database &database) : work_(std::make_unique<Work>(database)) {}

Transaction::~Transaction() = default;

Inserted Transaction::insert(const QString &table, const std::vector<Value> &values)
{
    return work_->with(table, [&](TableWriter &writer) { return writer.insert(values); });
}

bool Transaction::update(const QString &table, RowPosition position, const Changes &changes)
{
    return work_->with(table, [&](TableWriter &writer) { return writer.update(position, changes); });
}

bool Transaction::remove(const QString &table, RowPosition position)
{
    return work_->with(table, [&](TableWriter &writer) { return writer.remove(position); });
}

std::optional<RowPosition> Transaction::findByKey(const QString &table, const std::vector<Value> &key)
{
    return work_->with(table, [&](TableWriter &writer) { return writer.findByKey(key); });
}

void Transaction::createTable(const NewTable &table)
{
    work_->changeDefinition(table.name, [&](DatabaseState &state) { jet::createTable(state, table); });
}

void Transaction::addBooleanColumn(const QString &table, const QString &column)
{
    work_->changeDefinition(table, [&](DatabaseState &state) { jet::addBooleanColumn(state, table, column); });
}

std::vector<std::uint32_t> Transaction::commit()
{
    return work_->commit();
}

} // namespace jet
