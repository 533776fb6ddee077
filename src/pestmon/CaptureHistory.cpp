// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureHistory.h"

namespace pestmon
{

void CaptureHistory::add(const CaptureChange &change)
{
    changes_.resize(applied_);
    changes_.push_back(change);
    applied_ = changes_.size();
}

void CaptureHistory::clear()
{
    changes_.clear();
    applied_ = 0;
}

std::optional<CaptureChange> CaptureHistory::undoable() const
{
    return applied_ == 0 ? std::nullopt : std::optional(changes_[applied_ - 1]);
}

std::optional<CaptureChange> CaptureHistory::redoable() const
{
    return applied_ == changes_.size() ? std::nullopt : std::optional(changes_[applied_]);
}

} // namespace pestmon
