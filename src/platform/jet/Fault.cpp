// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Fault.h"

#include <utility>

namespace jet
{

Fault::Fault(QString description) : description_(std::move(description)) {}

void Fault::locate(std::uint32_t page, std::optional<std::uint32_t> slot)
{
    if (!page_) {
        page_ = page;
        slot_ = slot;
    }
}

QString Fault::sentence() const
{
    if (!page_) {
        return description_;
    }
    if (!slot_) {
        return QStringLiteral("page %1: %2").arg(*page_).arg(description_);
    }
    return QStringLiteral("page %1, row %2: %3").arg(*page_).arg(*slot_ + 1).arg(description_);
}

void failOutOfBounds()
{
    throw Fault(QStringLiteral("a length or position leads outside the bytes that it belongs to"));
}

} // namespace jet
