// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/JetStorage.h"

#include "platform/basic/Permissions.h"
#include "platform/dao/Catalog.h"
#include "platform/dao/JetValues.h"
#include "platform/dao/Maintenance.h"
#include "platform/dao/MirrorCache.h"
#include "platform/dao/Workspace.h"
#include "platform/jet/Check.h"
#include "platform/jet/DatabaseMaker.h"
#include "platform/jet/LockFile.h"
#include "platform/jet/PageCommit.h"

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

} // namespace

JetStorage::JetStorage(const QString &path, std::unique_ptr<jet::Database> file)
    : file_(std::move(file)), mirror_(Connection::inMemory(path))
{
}

std::unique_ptr<JetStorage> JetStorage::open(const QString &path, bool exclusive, bool readOnly, const QString &password)
{
    QString whyReadOnly = QStringLiteral("%1 was opened for reading.").arg(path);
    std::unique_ptr<jet::Database> file;
    if (!readOnly) {
        try {
            file = jet::Database::open(path, password, jet::Access::ReadWrite);
            whyReadOnly.clear();
        } catch (const jet::Error &error) {
            if (exclusive) {
                throw;
            }
            // A file that cannot be shared for writing can still be read, unless reading fails as well.
            whyReadOnly = error.description();
        }
    }
    if (file && exclusive) {
        file->requireSoleUser();
    }
    if (!file) {
        file = jet::Database::open(path, password, jet::Access::ReadOnly);
    }
    std::unique_ptr<JetStorage> storage(new JetStorage(path, std::move(file)));
    storage->password_ = password;
    storage->whyReadOnly_ = whyReadOnly;
    storage->loadFirst();
    storage->isLoaded_ = true;
    return storage;
}

std::unique_ptr<JetStorage> JetStorage::create(const QString &path, const QString &password)
{
    if (QFileInfo::exists(path)) {
        throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess, QStringLiteral("The file %1 exists already.").arg(path));
    }
    jet::createDatabase(path, password);
    basic::followFolder(path);
    return open(path, false, false, password);
}

QStringList JetStorage::companionFiles(const QString &path)
{
    return {jet::rollbackPath(path), jet::LockFile::pathFor(path)};
}

void JetStorage::loadFirst()
{
    const std::optional<MirrorCache> cache = MirrorCache::of(path());
    if (cache && loadStored(*cache)) {
        return;
    }
    load();
    QElapsedTimer waited;
    waited.start();
    while (jet::stampOf(path()) != file_->stamp() && waited.elapsed() < RetryMilliseconds) {
        // Another program has written it meanwhile.
        file_->refresh();
        load();
    }
    file_->releasePages();
    if (cache && unreadable_.empty() && file_->isSettled()) {
        cache->save(mirror_);
    }
}

bool JetStorage::loadStored(const MirrorCache &cache)
{
    try {
        if (file_->isSettled() && cache.load(mirror_)) {
            for (const QString &name : file_->tableNames()) {
                created_[name] = Catalog::createStatements(definitionOf(file_->definition(name))).front();
            }
            return true;
        }
    } catch (const basic::RunTimeError &) {
        // Whatever is wrong is found and reported by reading the file itself.
        created_.clear();
    }
    mirror_ = Connection::inMemory(path());
    return false;
}

void JetStorage::load()
{
    mirror_.execute("BEGIN");
    const auto created = created_;
    const auto unreadable = std::exchange(unreadable_, {});
    try {
        const QStringList names = file_->tableNames();
        for (const auto &[name, sql] : created) {
            if (!names.contains(name, Qt::CaseInsensitive)) {
                mirror_.execute("DROP TABLE " + quoteName(name));
                created_.erase(name);
            }
        }
        for (const QString &name : names) {
            loadTable(name);
        }
        if (isLoaded_ && !file_->isSettled()) {
            throw DataError(DataErrorNumber::Locked, QStringLiteral("Another program is writing it."));
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
        const jet::TableDefinition &source = file_->definition(name);
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
    const std::vector<QByteArray> indexes = mirrorIndexes(definition.Name());
    if (!created.isEmpty()) {
        mirror_.execute("DROP TABLE " + quoteName(definition.Name()));
    }
    created = statements.front();
    for (const QByteArray &sql : statements) {
        mirror_.execute(sql);
    }
    for (const QByteArray &sql : indexes) {
        // One of the file's own is there already; one on a field that is gone is no longer wanted.
        basic::runOrIgnore([&] { mirror_.execute(sql); });
    }
}

std::vector<QByteArray> JetStorage::mirrorIndexes(const QString &table)
{
    std::vector<QByteArray> indexes;
    Statement statement(mirror_, "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL AND tbl_name = ?1");
    statement.bind(1, table);
    while (statement.step()) {
        const std::string_view sql = statement.textAt(0);
        indexes.emplace_back(sql.data(), static_cast<qsizetype>(sql.size()));
    }
    return indexes;
}

void JetStorage::copyRows(const jet::TableDefinition &source, const TableDef &target)
{
    std::vector<std::size_t> columns;
    QByteArray names;
    QByteArray parameters;
    const bool hasKey = JetWriter::hasKeyRows(target);
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
    file_->readRows(source.name, [&](const jet::Row &row) {
        int parameter = 0;
        for (const std::size_t column : columns) {
            insert.bind(++parameter, valueOf(row.values[column]));
        }
        if (!hasKey) {
            insert.bindKey(++parameter, JetWriter::rowNumber(row.position));
        }
        insert.step();
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
            file_->refresh();
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
    if (isReadOnly()) {
        throw DataError(DataErrorNumber::ReadOnly, QStringLiteral("%1 cannot be written. %2").arg(path(), whyReadOnly_));
    }
    try {
        writer_ = std::make_unique<JetWriter>(*file_, mirror_);
    } catch (const jet::Error &error) {
        if (!error.is(jet::ErrorNumber::ChangedMeanwhile) || !refresh()) {
            throw;
        }
        writer_ = std::make_unique<JetWriter>(*file_, mirror_);
    }
}

void JetStorage::commitWrite()
{
    commits_->run([this] { return writer_->commit(); });
    writer_.reset();
}

void JetStorage::abandonWrite()
{
    writer_.reset();
}

void JetStorage::createTable(const TableDef &definition)
{
    writer_->createTable(definition);
    created_[definition.Name()] = Catalog::createStatements(definition).front();
}

void JetStorage::addField(const TableDef &table, const Field &field)
{
    if (field.type != FieldType::Boolean) {
        throw DataError(DataErrorNumber::ReadOnly,
                        QStringLiteral("Only a Boolean field can be added to the Jet file %1, not %2.").arg(path(), field.name));
    }
    writer_->addBooleanColumn(table.Name(), field.name);
}

std::unique_ptr<FileCopy> JetStorage::startCopy(const QString &copy)
{
    return std::make_unique<JetCopy>(commits_, path(), copy, password_);
}

void JetStorage::copyTo(const QString &target, bool /*isInTransaction*/)
{
    copyFile(path(), target, [this](const QString &part) { return startCopy(part); });
}

QStringList JetStorage::checkIntegrity(const Progress &progress)
{
    const QStringList problems = checkPages();
    if (progress) {
        progress(100);
    }
    return problems;
}

QStringList JetStorage::checkPages()
{
    return jet::check(path(), password_).faults;
}

} // namespace dao
