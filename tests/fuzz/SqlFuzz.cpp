// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

constexpr std::size_t MaxText = 4096;

/// An empty pest database, open for all inputs.
class Farm
{
public:
    Farm()
    {
        const QString path = folder_.filePath(QStringLiteral("PestMon.mdb"));
        store::createDatabaseFile(store::DatabaseFile::Pest, path);
        database_ = dao::Workspace::OpenDatabase(path, false, false, store::connectText());
        tables_ = database_->tableNames();
    }

    void read(const QString &sql)
    {
        for (dao::Recordset rows = database_->OpenRecordset(sql); !rows.Eof(); rows.MoveNext()) {
            for (int i = 0; i < rows.fieldCount(); ++i) {
                rows.value(i);
            }
        }
    }
    void change(const QString &sql)
    {
        dao::CommitScope scope(*database_);
        try {
            database_->Execute(sql);
        } catch (const basic::RunTimeError &) {
            scope.rollback();
            throw;
        }
        scope.rollback();
    }
    /// No text may reach further than the rows of the tables.
    bool isAsItWas() const { return database_->tableNames() == tables_; }

private:
    QTemporaryDir folder_;
    std::unique_ptr<dao::Database> database_;
    QStringList tables_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Farm farm;
    if (size > MaxText) {
        return -1;
    }
    const QString sql = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const auto &use : {&Farm::read, &Farm::change}) {
        try {
            (farm.*use)(sql);
        } catch (const basic::RunTimeError &error) {
            if (error.number() == 0 || error.description().isEmpty()) {
                std::abort();
            }
        }
    }
    if (!farm.isAsItWas()) {
        std::abort();
    }
    return 0;
}
