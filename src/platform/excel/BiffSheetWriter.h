// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffFormats.h"

namespace excel::biff
{

/// Numbers the texts that cells show, in the order of the cells.
class TextNumbers
{
public:
    explicit TextNumbers(const model::Book &book);

    std::uint32_t number(std::uint32_t index) const { return numbers_[index]; }
    const std::vector<const model::Text *> &texts() const { return texts_; }
    std::size_t uses() const { return uses_; }

private:
    std::vector<std::uint32_t> numbers_;
    std::vector<const model::Text *> texts_;
    std::size_t uses_ = 0;
};

/// Appends the records of a sheet to the stream.
void putSheet(Bytes &stream, const model::Sheet &sheet, bool isActive, FormatWriter &formats, const TextNumbers &texts);

} // namespace excel::biff
