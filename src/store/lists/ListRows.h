// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"
#include "store/lists/FarmLists.h"

#include <QHash>

namespace lists
{

/// Takes a row of a list from a set of its table's rows, and writes it back. References, which are rows of another table, are
/// left to the callers.
class ListRows
{
public:
    /// `definition` is the table's in its file, which may have wider fields, or other types where those are open.
    ListRows(const Table &table, const dao::TableDef &definition, const dao::Recordset &rows);

    Record read(const dao::Recordset &rows) const;
    /// Between AddNew or Edit and Update.
    void write(dao::Recordset &rows, const Record &record) const;

private:
    struct Field {
        int index = -1;
        dao::FieldType type = dao::FieldType::Text;
    };
    Field fieldOf(const dao::TableDef &definition, const dao::Recordset &rows, const QString &name) const;

    const Table &table_;
    Field key_;
    std::vector<Field> fields_;
};

/// The name of a worker who cannot be picked is in this field, and the nickname empty; a file without it gets it when the first
/// worker is made inactive.
inline const QString InactiveNameField = QStringLiteral("WInactive");

/// Crop types of pests: which belong to each pest, by the pest's key.
QHash<std::int32_t, QString> readPestCropTypes(dao::Database &spray, std::int32_t firstPest, std::int32_t lastPest);
/// Changes the stored crop types of a pest from one set to another.
void writePestCropTypes(dao::Database &spray, std::int32_t pest, const QString &before, const QString &after);

/// "1;4;7" for any order.
QString joinedKeys(QList<std::int32_t> keys);
QList<std::int32_t> splitKeys(const QString &text);

/// All rows of a list between two keys, by key; all rows of a list without keys.
QString rowsBetween(const Table &table, std::int32_t first, std::int32_t last);

} // namespace lists
