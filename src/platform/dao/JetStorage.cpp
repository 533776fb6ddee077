// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/JetStorage.h"

#include "platform/basic/DiskSync.h"
#include "platform/dao/Catalog.h"
#include "platform/dao/JetValues.h"
#include "platform/dao/Maintenance.h"
#include "platform/dao/Workspace.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <utility>

namespace dao
{

namespace
{

constexpr qint64 RetryMilliseconds = 2000;
constexpr unsigned long RetryStep = 50;
constexpr std::uint32_t SlotsPerPage = 256;

/// Errors of the file in the form of this layer; the numbers are the same.
template <typename Body> auto translated(Body &&body)
{
    try {
        return body();
    } catch (const jet::Error &error) {
        throw DataError(static_cast<DataErrorNumber>(error.number()), error.description());
    }
}

std::int64_t rowNumber(jet::RowPosition position)
{
    return static_cast<std::int64_t>(position.page) * SlotsPerPage + position.slot;
}

} // namespace

JetStorage::JetStorage(const QString &path, std::unique_ptr<jet::Database> file)
    : file_(std::move(file)), mirror_(Connection::inMemory(path))
{
}

std::unique_ptr<JetStorage> JetStorage::open(const QString &path, bool /*readOnly*/, const QString &password)
{
    auto file = translated([&] { return jet::Database::open(path, password); });
    std::unique_ptr<JetStorage> storage(new JetStorage(path, std::move(file)));
    storage->load();
    storage->isLoaded_ = true;
    return storage;
}

QStringList JetStorage::companionFiles(const QString &path)
{
    const QFileInfo info(path);
    return {info.path() + u'/' + info.completeBaseName() + QLatin1String(".ldb")};
}

void JetStorage::load()
{
    mirror_.execute("BEGIN");
    const auto created = created_;
    const auto unreadable = std::exchange(unreadable_, {});
    try {
        const QStringList names = translated([this] { return file_->tableNames(); });
        for (const auto &[name, sql] : created) {
            if (!names.contains(name, Qt::CaseInsensitive)) {
                mirror_.execute("DROP TABLE " + quoteName(name));
                created_.erase(name);
            }
        }
        for (const QString &name : names) {
            loadTable(name);
        }
        mirror_.execute("COMMIT");
    } catch (const basic::RunTimeError &) {
        mirror_.execute("ROLLBACK");
        created_ = created;
        unreadable_ = unreadable;
        throw;
    }
}

void JetStorage::loadTable(const QString &name)
{
    mirror_.execute("SAVEPOINT tableLoad");
    try {
        const jet::TableDefinition &source =
            translated([&]() -> const jet::TableDefinition & { return file_->definition(name); });
        const TableDef target = definitionOf(source);
        makeTable(target);
        copyRows(source, target);
    } catch (const DataError &error) {
        // A state read while another program writes it has to be complete; at the opening, the other tables stay readable.
        if (isLoaded_) {
            throw;
        }
        mirror_.execute("ROLLBACK TO tableLoad");
        created_.erase(name);
        unreadable_.insert_or_assign(name.toLower(), error);
    }
    mirror_.execute("RELEASE tableLoad");
}

void JetStorage::makeTable(const TableDef &definition)
{
    const std::vector<QByteArray> statements = Catalog::createStatements(definition);
    QByteArray &created = created_[definition.Name()];
    if (created == statements.front()) {
        mirror_.execute("DELETE FROM " + quoteName(definition.Name()));
        return;
    }
    if (!created.isEmpty()) {
        mirror_.execute("DROP TABLE " + quoteName(definition.Name()));
    }
    created = statements.front();
    for (const QByteArray &sql : statements) {
        mirror_.execute(sql);
    }
}

void JetStorage::copyRows(const jet::TableDefinition &source, const TableDef &target)
{
    std::vector<std::size_t> columns;
    QByteArray names;
    QByteArray parameters;
    const bool hasKey = created_[target.Name()].contains(" INTEGER PRIMARY KEY");
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        if (fieldTypeOf(source.columns[i].type)) {
            columns.push_back(i);
            names += (names.isEmpty() ? "" : ", ") + quoteName(source.columns[i].name);
            parameters += (parameters.isEmpty() ? "?" : ", ?");
        }
    }
    if (columns.empty()) {
        return;
    }
    Statement insert(mirror_,
                     "INSERT INTO " + quoteName(target.Name()) + " (" + names + (hasKey ? "" : ", rowid") + ") VALUES ("
                         + parameters + (hasKey ? ")" : ", ?)"));
    translated([&] {
        file_->readRows(source.name, [&](const jet::Row &row) {
            int parameter = 0;
            for (const std::size_t column : columns) {
                insert.bind(++parameter, valueOf(row.values[column]));
            }
            if (!hasKey) {
                insert.bindKey(++parameter, rowNumber(row.position));
            }
            insert.step();
        });
    });
    const auto automatic =
        std::find_if(target.Fields().begin(), target.Fields().end(), [](const Field &field) { return field.autoIncrement; });
    if (automatic != target.Fields().end()) {
        const QByteArray last = QByteArray::number(source.lastAutoNumber);
        Statement clear(mirror_, "DELETE FROM sqlite_sequence WHERE name = ?1");
        clear.bind(1, target.Name());
        clear.step();
        Statement sequence(mirror_,
                           "INSERT INTO sqlite_sequence (name, seq) SELECT ?1, max(?2, ifnull(max(" + quoteName(automatic->name)
                               + "), 0)) FROM " + quoteName(target.Name()));
        sequence.bind(1, target.Name());
        sequence.bindKey(2, source.lastAutoNumber);
        sequence.step();
    }
}

bool JetStorage::refresh()
{
    const jet::Stamp now = jet::stampOf(path());
    if (now == file_->stamp() || now == rejected_) {
        return false;
    }
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        try {
            translated([this] { file_->refresh(); });
            load();
            rejected_.reset();
            return true;
        } catch (const basic::RunTimeError &error) {
            if (waited.elapsed() >= RetryMilliseconds) {
                rejected_ = jet::stampOf(path());
                Workspace::notice(
                    QStringLiteral("The change of %1 by another program cannot be read; showing the state before it. %2")
                        .arg(QFileInfo(path()).fileName(), error.description()));
                return false;
            }
        }
        QThread::msleep(RetryStep);
    }
}

void JetStorage::requireReadable(QStringView table)
{
    const auto found = unreadable_.find(table.toString().toLower());
    if (found != unreadable_.end()) {
        throw DataError(found->second);
    }
}

void JetStorage::beginWrite()
{
    throw DataError(DataErrorNumber::ReadOnly,
                    QStringLiteral("%1 is a Jet file, which this program reads and does not write.").arg(path()));
}

void JetStorage::copyTo(const QString &target, bool /*isInTransaction*/)
{
    copyBytes(path(), target);
}

QStringList JetStorage::checkIntegrity(const Progress &progress)
{
    QStringList problems = checkPages();
    if (progress) {
        progress(100);
    }
    return problems;
}

QStringList JetStorage::checkPages()
{
    QStringList problems;
    for (const auto &[name, error] : unreadable_) {
        problems.append(error.description());
    }
    return problems;
}

} // namespace dao
