// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Value.h"

#include <QString>

#include <vector>

namespace dao
{

/// One field of a table. `size` counts characters and matters for Text only (1 to 255).
struct Field {
    QString name;
    FieldType type = FieldType::Long;
    int size = 0;
    bool allowZeroLength = true;
    /// SQLite assigns the next number, from 1, never one twice.
    bool autoIncrement = false;
};

struct Index {
    QString name;
    std::vector<QString> fields;
    bool primary = false;
    bool unique = false;
};

/// The definition of a table: its name, its fields in order, its indexes. A definition lives in
/// memory until Database::Append puts it in the file.
class TableDef
{
public:
    explicit TableDef(QString name) : name_(std::move(name)) {}

    const QString &Name() const { return name_; }
    const std::vector<Field> &Fields() const & { return fields_; }
    std::vector<Field> Fields() && { return std::move(fields_); }
    const std::vector<Index> &Indexes() const & { return indexes_; }
    std::vector<Index> Indexes() && { return std::move(indexes_); }

    static Field CreateField(QString name, FieldType type, int size = 0);
    /// 3191 when there is a field of that name.
    void Append(Field field);
    void Append(Index index);
    /// By name without regard to case; nullptr when there is none.
    const Field *findField(QStringView name) const;

private:
    QString name_;
    std::vector<Field> fields_;
    std::vector<Index> indexes_;
};

} // namespace dao
