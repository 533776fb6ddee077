// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RowEditor.h"

#include "platform/jet/ColumnSize.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::size_t CountSize = 2;

qsizetype fixedSize(const TableDefinition &table)
{
    std::size_t size = 0;
    for (const ColumnDefinition &column : table.columns) {
        if (column.isFixed) {
            size = std::max(size, column.fixedOffset + fixedBytes(column));
        }
    }
    return static_cast<qsizetype>(size);
}

QByteArray copyOf(Bytes bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

void appendShort(QByteArray &bytes, std::size_t value)
{
    bytes.append(static_cast<char>(value & 0xFF));
    bytes.append(static_cast<char>(value >> 8));
}

/// The table of ends at the end of `body`, the last first. False when there is none: the row is then older than the first
/// variable column of its table.
bool readEnds(Bytes body, std::vector<std::size_t> &ends)
{
    if (body.size() < CountSize + 4) {
        return false;
    }
    const std::size_t count = body.shortAt(body.size() - 2);
    const std::size_t tableSize = 2 * (count + 2);
    if (body.size() < CountSize + tableSize) {
        return false;
    }
    const std::size_t tableBegin = body.size() - tableSize;
    for (std::size_t i = 0; i <= count; ++i) {
        ends.push_back(body.shortAt(body.size() - 4 - 2 * i));
    }
    return ends.back() == tableBegin && ends.front() >= CountSize && std::is_sorted(ends.begin(), ends.end());
}

} // namespace

RowEditor::RowEditor(const TableDefinition &table)
    : columnCount_(table.columnCount), fixed_(fixedSize(table), '\0'), hasVariable_(table.variableCount > 0),
      variable_(table.variableCount), mask_(static_cast<qsizetype>((columnCount_ + 7) / 8), '\0')
{
}

RowEditor::RowEditor(const TableDefinition &table, Bytes row) : RowEditor(table)
{
    const std::size_t ownCount = row.shortAt(0);
    const std::size_t maskSize = (ownCount + 7) / 8;
    const Bytes body = row.part(0, row.size() - std::min(maskSize, row.size()));
    const Bytes mask = row.from(body.size());
    std::vector<std::size_t> ends;
    std::size_t fixedEnd = body.size();
    if (hasVariable_ && readEnds(body, ends)) {
        fixedEnd = ends.front();
        variable_.resize(std::max(variable_.size(), ends.size() - 1));
        for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
            variable_[i] = copyOf(body.part(ends[i], ends[i + 1] - ends[i]));
        }
    }
    const QByteArray ownFixed = copyOf(body.part(CountSize, fixedEnd - CountSize));
    fixed_ = ownFixed + fixed_.mid(ownFixed.size());
    columnCount_ = std::max(columnCount_, ownCount);
    mask_ = copyOf(mask) + QByteArray(static_cast<qsizetype>((columnCount_ + 7) / 8 - mask.size()), '\0');
    // Bits behind the last column say nothing.
    for (std::size_t number = ownCount; number < 8 * maskSize; ++number) {
        setBit(number, false);
    }
}

void RowEditor::setNull(const ColumnDefinition &column)
{
    setBit(column.number, false);
    if (!column.isFixed) {
        variable_.at(column.variableIndex).clear();
    }
}

void RowEditor::set(const ColumnDefinition &column, const QByteArray &bytes)
{
    setBit(column.number, true);
    if (column.isFixed) {
        fixed_.replace(column.fixedOffset, bytes.size(), bytes);
    } else {
        variable_.at(column.variableIndex) = bytes;
    }
}

QByteArray RowEditor::bytes() const
{
    QByteArray row;
    appendShort(row, columnCount_);
    row.append(fixed_);
    if (hasVariable_) {
        std::vector<std::size_t> ends{static_cast<std::size_t>(row.size())};
        for (const QByteArray &cell : variable_) {
            row.append(cell);
            ends.push_back(static_cast<std::size_t>(row.size()));
        }
        std::for_each(ends.rbegin(), ends.rend(), [&](std::size_t end) { appendShort(row, end); });
        appendShort(row, variable_.size());
    }
    return row + mask_;
}

void RowEditor::setBit(std::size_t number, bool flag)
{
    char &byte = mask_[static_cast<qsizetype>(number / 8)];
    const auto bit = static_cast<char>(1U << (number % 8));
    byte = static_cast<char>(flag ? byte | bit : byte & ~bit);
}

} // namespace jet
