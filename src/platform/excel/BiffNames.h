// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffRecords.h"

namespace excel::biff
{

/// Reads the print titles from the name records into the pages of the sheets.
void readTitleNames(model::Book &book);

/// Writes the names and references of a workbook: those of the file unchanged, print titles from the pages.
class NameWriter
{
public:
    NameWriter(const model::Book &book, const BookPassthrough &passthrough);

    /// Writes in place of these records; `body` is the record as it was read.
    void putSupplyBook(Bytes &stream, const QByteArray &body) const;
    void putReferences(Bytes &stream) const;
    void putName(Bytes &stream, const QByteArray &body) const;
    void putNewNames(Bytes &stream) const;

private:
    std::size_t referenceTo(std::size_t sheet);
    QByteArray titleName(std::size_t sheet) const;
    bool changed(std::size_t sheet) const;

    const model::Book &book_;
    /// Bodies of the references of six bytes each.
    QByteArray references_;
    std::vector<std::size_t> referenceOfSheet_;
    std::vector<bool> nameStands_;
    std::size_t ownBook_ = 0;
    bool ownBookIsNew_ = true;
};

} // namespace excel::biff
