// SPDX-License-Identifier: GPL-3.0-or-later
#include "Check.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "store/Rows.h"
#include "store/Schema.h"
#include "store/SqlText.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using store::DatabaseFile;

namespace
{

/// Bytes of one change: three for the offset, lowest first, one that is combined with the byte there.
constexpr std::size_t ChangeSize = 4;

QString memoryFolder()
{
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("DatabaseFuzz-XXXXXX"));
}

/// Databases with a few rows, of which the pest database is written anew for every input.
class Farm
{
public:
    Farm()
    {
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            store::createDatabaseFile(file, path(file));
        }
        {
            const auto pest = dao::Workspace::OpenDatabase(path(DatabaseFile::Pest), false, false, store::connectText());
            dao::CommitScope scope(*pest);
            for (int key = 1; key <= 200; ++key) {
                store::writeRow(*pest, QStringLiteral("Select * from tblPMData where 1 = 0"), store::Existing::LeaveAlone,
                                store::Missing::Add,
                                std::vector<store::FieldValue>{{u"PMTransID", key / 20},
                                                               {u"BlockID", key % 3},
                                                               {u"CTargetID", key % 5},
                                                               {u"PMBPunt", key % 7},
                                                               {u"PMCount", key}});
                // Few instructions, since the check asks for each of them.
                if (key % 20 == 0) {
                    store::writeRow(*pest, QStringLiteral("Select * from tblPMTrans where 1 = 0"), store::Existing::LeaveAlone,
                                    store::Missing::Add,
                                    std::vector<store::FieldValue>{{u"PMMethodID", 1}, {u"PMNotes", QString(key, u'n')}});
                }
            }
            scope.commit();
        }
        QFile file(path(DatabaseFile::Pest));
        if (!file.open(QIODevice::ReadOnly)) {
            std::abort();
        }
        sound_ = file.readAll();
    }

    QString path(DatabaseFile file) const { return folder_.filePath(store::fileName(file)); }
    QString folder() const { return folder_.path(); }

    void damage(const std::uint8_t *data, std::size_t size) const
    {
        QByteArray bytes = sound_;
        for (std::size_t i = 0; i + ChangeSize <= size; i += ChangeSize) {
            const auto offset = static_cast<qsizetype>(data[i] | data[i + 1] << 8 | data[i + 2] << 16) % bytes.size();
            bytes[offset] = static_cast<char>(static_cast<std::uint8_t>(bytes[offset]) ^ data[i + 3]);
        }
        QFile file(path(DatabaseFile::Pest));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            std::abort();
        }
    }

private:
    QTemporaryDir folder_{memoryFolder()};
    QByteArray sound_;
};

/// Reads a value by the type of its field, as the screens do.
void readValue(const dao::Recordset &rows, const dao::Field &field)
{
    if (rows.isNull(field.name)) {
        return;
    }
    switch (field.type) {
    case dao::FieldType::Boolean:
        static_cast<void>(rows.boolean(field.name));
        break;
    case dao::FieldType::Integer:
    case dao::FieldType::Long:
        static_cast<void>(rows.longValue(field.name));
        break;
    case dao::FieldType::Single:
    case dao::FieldType::Double:
        static_cast<void>(rows.number(field.name));
        break;
    case dao::FieldType::Date:
        static_cast<void>(rows.date(field.name)->date());
        break;
    case dao::FieldType::Text:
        static_cast<void>(rows.text(field.name));
        break;
    }
}

/// Reads every row of every table.
void readAll(dao::Database &database)
{
    for (const QString &table : database.tableNames()) {
        const dao::TableDef definition = database.tableDef(table);
        dao::Recordset all = database.OpenRecordset(store::sqlText(u"Select * from [", table, u"]"));
        for (; !all.Eof(); all.MoveNext()) {
            for (const dao::Field &field : definition.Fields()) {
                readValue(all, field);
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return std::freopen("/dev/null", "w", stdout) != nullptr ? 0 : 1;
}

/// Damage that the check does not see may change a value, but must not make reading fail.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Farm farm;
    farm.damage(data, size);
    const bool isSound = checkFarm(farm.folder());
    try {
        const auto database = dao::Workspace::OpenDatabase(farm.path(DatabaseFile::Pest), false, false, store::connectText());
        readAll(*database);
    } catch (const basic::RunTimeError &error) {
        if (isSound || error.description().isEmpty()) {
            std::fprintf(stderr, "%d %s\n", error.number(), qPrintable(error.description()));
            std::abort();
        }
    }
    return 0;
}
