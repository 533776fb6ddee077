// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "store/Rows.h"
#include "store/Schema.h"

#include <QDate>
#include <QString>
#include <QTemporaryDir>

#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

struct BlockRow {
    QString name = QStringLiteral("Block");
    int farm = 1;
    std::optional<int> points = 5;
    bool active = true;
};

struct PlantingRow {
    QString name = QStringLiteral("Planting");
    int block = 1;
    bool active = true;
    int variety = 0;
};

struct InstructionRow {
    int method = 1;
    QDate issued = QDate(2026, 3, 2);
    std::optional<QDate> completed = {};
    bool repeat = false;
    QString person = QStringLiteral("Thandi");
    QString notes = QStringLiteral("NA");
    /// Blocks with their points; each gets the zero rows of its points and targets, as the editor makes them.
    std::vector<std::pair<int, int>> blocks = {};
    std::vector<int> targets = {};
};

/// A program folder of its own with three empty databases in Databases/, opened in `session`, and makers of valid rows. Keys
/// count up from 1 in each table. Gone with the object.
class TemporaryFarm
{
public:
    TemporaryFarm();

    SessionContext session;

    QString appPath() const { return folder_.path(); }
    QString databasesPath() const { return folder_.filePath(QStringLiteral("Databases")); }
    /// Of the three files; the tests of the store run once for each kind.
    static dao::FileKind kind()
    {
        return qEnvironmentVariable("FARM_STORAGE") == QLatin1String("jet") ? dao::FileKind::Jet : dao::FileKind::Sqlite;
    }
    QString filePath(store::DatabaseFile file) const;
    dao::DatabaseHandle &handle(store::DatabaseFile file);

    void close();
    /// Opens what is closed.
    void open(bool readOnly = false);

    int addFarm(const QString &name, bool active = true);
    int addWorker(const std::optional<QString> &name);
    int addBlock(const BlockRow &block);
    int addPlanting(const PlantingRow &planting);
    /// A group, a type of it and a variety of that; each made when the name is new. Returns the variety's key.
    int addVariety(const QString &group, const QString &type, const QString &variety);
    int addTarget(const QString &name, const QString &kind = QStringLiteral("P"), const std::vector<int> &types = {});
    int addInstruction(const InstructionRow &instruction);

    /// Adds a row as it is; returns its autonumber, if any.
    int add(QStringView table, std::initializer_list<store::FieldValue> fields);
    /// Number of rows, of those that meet a condition.
    int count(const QString &table, const QString &condition = {});
    /// The rows of a query as "a|b|c", null as "NULL".
    QStringList rows(store::DatabaseFile file, const QString &sql);

private:
    int keyOf(QStringView table, QStringView key, QStringView nameField, const QString &name,
              std::initializer_list<store::FieldValue> more);

    QTemporaryDir folder_;
};
