// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QBoxLayout;
class QLayout;

enum class Scrolling {
    BothWays,
    /// The contents always have their full width.
    DownOnly
};

/// Puts a nested layout of a page into a scroll area, so that on a small screen its contents scroll and what is around them,
/// such as the button bar, stays visible. The focused control is scrolled into view.
void makeScrollable(QBoxLayout &page, QLayout &contents, Scrolling scrolling = Scrolling::BothWays);
