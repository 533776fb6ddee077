// SPDX-License-Identifier: GPL-3.0-or-later
#include "Judges.h"

#include "platform/jet/DatabaseMaker.h"
#include "platform/jet/Transaction.h"

#include <QTemporaryDir>
#include <QtTest>

#include <map>
#include <random>
#include <set>

using jet::ColumnType;
using jet::Database;
using jet::Date;
using jet::Null;
using jet::RowPosition;
using jet::Transaction;
using jet::Value;

namespace
{

constexpr int Operations = 10000;
/// Without the columns that are added, and without the Memo: mdb-reader misreads a piece of a long value behind a deleted one.
constexpr qsizetype ColumnsForReader = 8;

/// Rows by their position, as they must be.
using Model = std::map<RowPosition, std::vector<Value>>;

} // namespace

/// Thousands of operations chosen at random, next to a model in memory; now and then the page walker and the other readers judge.
class RandomChangesTest : public QObject
{
    Q_OBJECT

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned int>(limit)); }

    QString text()
    {
        switch (below(5)) {
        case 0:
            return QString("");
        case 1:
            return QString(below(250), QChar(0x3B1));
        case 2:
            return QString(below(250), 'x');
        default:
            return QString("row %1").arg(below(1000));
        }
    }

    Value valueFor(ColumnType type)
    {
        if (below(6) == 0) {
            return Null{};
        }
        switch (type) {
        case ColumnType::Boolean:
            return below(2) == 0;
        case ColumnType::Integer:
            return below(7) - 3;
        case ColumnType::Long:
            return below(200) - 100;
        case ColumnType::Double:
            return below(50) * 0.5 - 10;
        case ColumnType::Date:
            return Date{40000 + below(30) + below(4) * 0.25};
        case ColumnType::Memo:
            return below(4) == 0 ? QString(below(9000), 'm') : text();
        default:
            return text();
        }
    }

    std::vector<Value> newRow()
    {
        std::vector<Value> row;
        for (const jet::ColumnDefinition &column : database_->definition("tblRows").columns) {
            row.push_back(column.isAutoNumber ? Value(Null{}) : valueFor(column.type));
        }
        return row;
    }

    void insert(Transaction &transaction)
    {
        std::vector<Value> row = newRow();
        const jet::Inserted inserted = transaction.insert("tblRows", row);
        row[0] = *inserted.autoNumber;
        QVERIFY(*inserted.autoNumber > lastNumber_);
        lastNumber_ = *inserted.autoNumber;
        normalize(row);
        QVERIFY(model_.emplace(inserted.position, row).second);
    }

    /// What is null for a Boolean comes back as false.
    void normalize(std::vector<Value> &row) const
    {
        const jet::TableDefinition &table = database_->definition("tblRows");
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (table.columns[i].type == ColumnType::Boolean && row[i] == Value(Null{})) {
                row[i] = false;
            }
        }
    }

    Model::iterator anyRow() { return std::next(model_.begin(), below(static_cast<int>(model_.size()))); }

    void update(Transaction &transaction)
    {
        const auto row = anyRow();
        const jet::TableDefinition &table = database_->definition("tblRows");
        jet::Changes changes;
        for (int i = below(4); i >= 0; --i) {
            const auto column = static_cast<std::size_t>(1 + below(static_cast<int>(table.columns.size()) - 1));
            changes.erase(std::remove_if(changes.begin(), changes.end(), [&](const auto &one) { return one.first == column; }),
                          changes.end());
            changes.emplace_back(column, valueFor(table.columns[column].type));
        }
        QVERIFY(transaction.update("tblRows", row->first, changes));
        for (const auto &[column, value] : changes) {
            row->second[column] = value;
        }
        normalize(row->second);
    }

    void remove(Transaction &transaction)
    {
        const auto row = anyRow();
        const auto found = transaction.findByKey("tblRows", {row->second[0]});
        QVERIFY(found && *found == row->first);
        QVERIFY(transaction.remove("tblRows", row->first));
        QVERIFY(!transaction.findByKey("tblRows", {row->second[0]}));
        model_.erase(row);
    }

    void addColumn(Transaction &transaction)
    {
        transaction.addBooleanColumn("tblRows", QString("Flag%1").arg(++columns_));
        for (auto &[position, row] : model_) {
            row.push_back(false);
        }
    }

    void compare()
    {
        Model found;
        database_->readRows("tblRows", [&](const jet::Row &row) { found.emplace(row.position, row.values); });
        QCOMPARE(found.size(), model_.size());
        QVERIFY(found == model_);
        const auto another = Database::open(path_, judges::Password);
        QCOMPARE(another->definition("tblRows").lastAutoNumber, lastNumber_);
    }

    std::mt19937 random_{20240301};
    QTemporaryDir folder_;
    QString path_ = folder_.filePath("Farm.mdb");
    std::unique_ptr<Database> database_;
    Model model_;
    std::int32_t lastNumber_ = 0;
    int columns_ = 0;

private Q_SLOTS:
    void initTestCase()
    {
        jet::createDatabase(path_, judges::Password);
        database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
        Transaction transaction(*database_);
        transaction.createTable({"tblRows",
                                 {{"ID", ColumnType::Long, 0, true},
                                  {"Flag", ColumnType::Boolean},
                                  {"Week", ColumnType::Integer},
                                  {"Block", ColumnType::Long},
                                  {"Share", ColumnType::Double},
                                  {"Day", ColumnType::Date},
                                  {"Name", ColumnType::Text, 255},
                                  {"Note", ColumnType::Text, 255},
                                  {"Story", ColumnType::Memo}},
                                 {{"PrimaryKey", {"ID"}, true, true},
                                  {"Block", {"Block"}},
                                  {"WeekDay", {"Week", "Day"}},
                                  {"All", {"Flag", "Share", "Block", "Day"}}}});
        transaction.commit();
    }

    void everythingStaysTrue()
    {
        int judged = 0;
        for (int done = 0; done < Operations;) {
            const Model modelBefore = model_;
            const std::int32_t numberBefore = lastNumber_;
            const int columnsBefore = columns_;
            const bool isGivenUp = below(8) == 0;
            {
                Transaction transaction(*database_);
                // In turn mostly growing and mostly shrinking.
                const bool grows = done / 1500 % 2 == 0;
                for (int i = 1 + below(120); i > 0; --i, ++done) {
                    const int drawn = below(100);
                    if (model_.empty() || drawn < (grows ? 55 : 20)) {
                        insert(transaction);
                    } else if (drawn < 70) {
                        update(transaction);
                    } else if (drawn < 99 || columns_ == 12) {
                        remove(transaction);
                    } else {
                        addColumn(transaction);
                    }
                    if (QTest::currentTestFailed()) {
                        return;
                    }
                }
                if (!isGivenUp) {
                    transaction.commit();
                }
            }
            if (isGivenUp) {
                model_ = modelBefore;
                lastNumber_ = numberBefore;
                columns_ = columnsBefore;
            }
            const QString faults = judges::faults(path_);
            QVERIFY2(faults.isEmpty(), qPrintable(faults));
            compare();
            if (done / 2000 > judged) {
                judged = done / 2000;
                const QString disagreement = judges::disagreement(path_, ColumnsForReader);
                QVERIFY2(disagreement.isEmpty(), qPrintable(disagreement));
            }
            // Half of the time by an object that has to find everything out anew.
            if (below(2) == 0) {
                database_.reset();
                database_ = Database::open(path_, judges::Password, jet::Access::ReadWrite);
            }
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        // The counts of different keys are those of the rows that are left.
        const jet::TableDefinition &table = database_->definition("tblRows");
        for (const jet::IndexDefinition &index : table.indexes) {
            std::set<std::vector<QString>> keys;
            for (const auto &[position, row] : model_) {
                std::vector<QString> key;
                for (const jet::IndexColumn &part : index.columns) {
                    key.push_back(QString("%1/%2").arg(row[part.column].index()).arg(textOf(row[part.column])));
                }
                keys.insert(key);
            }
            QCOMPARE(index.distinctKeys, static_cast<quint32>(keys.size()));
        }
        // And when all is gone, the file takes as many rows as before without growing much.
        {
            Transaction transaction(*database_);
            while (!model_.empty()) {
                remove(transaction);
            }
            transaction.commit();
        }
        const QString complaints = judges::faults(path_) + judges::disagreement(path_, ColumnsForReader);
        QVERIFY2(complaints.isEmpty(), qPrintable(complaints));
    }

private:
    static QString textOf(const Value &value)
    {
        struct Text {
            QString operator()(Null) const { return {}; }
            QString operator()(bool flag) const { return QString::number(flag); }
            QString operator()(std::int32_t number) const { return QString::number(number); }
            QString operator()(float number) const { return QString::number(static_cast<double>(number)); }
            QString operator()(double number) const { return QString::number(number, 'g', 17); }
            QString operator()(jet::Currency money) const { return QString::number(money.units); }
            QString operator()(Date date) const { return QString::number(date.days, 'g', 17); }
            QString operator()(const QString &text) const { return text; }
            QString operator()(const QByteArray &bytes) const { return bytes.toHex(); }
        };
        return std::visit(Text{}, value);
    }
};

QTEST_GUILESS_MAIN(RandomChangesTest)
#include "RandomChangesTest.moc"
