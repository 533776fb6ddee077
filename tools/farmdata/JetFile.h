// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

/// Kinds of field as a Jet file tells them. Memo, currency, binary and the like are Other.
enum class JetType { Boolean, Byte, Integer, Long, Single, Double, Date, Text, Other };

struct JetField {
    QString name;
    JetType type = JetType::Other;
    /// Characters, for Text.
    int size = 0;
    bool autonumber = false;
    /// The table's primary key is this field alone.
    bool primary = false;
};

struct JetTable {
    QString name;
    std::vector<JetField> fields;
    /// What the file's own definition says.
    std::uint32_t rowCount = 0;
    /// Last number that the autonumber gave out, 0 when there is none.
    std::int32_t lastAutonumber = 0;
};

/// A Jet 4 file, read only. Values come bit for bit: 32-bit floats, dates with their fraction, null apart from zero-length
/// text. The file's password is not asked. Every failure is a RunTimeError that names the file.
class JetFile
{
public:
    explicit JetFile(const QString &path);
    ~JetFile();
    JetFile(const JetFile &) = delete;
    JetFile &operator=(const JetFile &) = delete;

    const QString &path() const;
    /// The user's tables, without the engine's own.
    QStringList tableNames() const;
    /// By name without regard to case.
    JetTable table(const QString &name) const;

    using Row = std::vector<dao::Value>;
    /// UiDriver over every row in the order of the file, the values in the order of JetTable::fields; a field of type Other comes
    /// as null. The row is good until the call returns. Returns the number of rows.
    std::uint32_t readRows(const QString &name, const std::function<void(const Row &)> &take) const;

private:
    struct Library;
    std::unique_ptr<Library> library_;
};
