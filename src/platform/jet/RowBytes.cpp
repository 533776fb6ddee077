// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RowBytes.h"

namespace jet
{

RowBytes::RowBytes(Bytes bytes) : columnCount_(bytes.shortAt(0))
{
    const std::size_t maskSize = (columnCount_ + 7) / 8;
    if (bytes.size() < 2 + maskSize) {
        throw Fault(QStringLiteral("the row has %1 bytes, too few for its %2 columns").arg(bytes.size()).arg(columnCount_));
    }
    body_ = bytes.part(0, bytes.size() - maskSize);
    mask_ = bytes.from(bytes.size() - maskSize);
}

Bytes RowBytes::variable(std::size_t index) const
{
    // Looked for only here: a row that is older than the first variable column of its table has no table of ends.
    if (body_.size() < 4) {
        failOutOfBounds();
    }
    const std::size_t endsAt = body_.size() - 2;
    const std::size_t count = body_.shortAt(endsAt);
    if (index >= count || 2 * (count + 1) > endsAt) {
        throw Fault(QStringLiteral("the row has no variable column %1").arg(index + 1));
    }
    const std::size_t begin = body_.shortAt(endsAt - 2 * (index + 1));
    const std::size_t end = body_.shortAt(endsAt - 2 * (index + 2));
    if (begin < 2 || end < begin || end > endsAt - 2 * (count + 1)) {
        throw Fault(QStringLiteral("a variable column ends outside its row"));
    }
    return body_.part(begin, end - begin);
}

} // namespace jet
