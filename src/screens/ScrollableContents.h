// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QBoxLayout;
class QLayout;

/// Puts a nested layout of a page into a scroll area, so that on a small screen its contents scroll and the button bar after it
/// stays visible.
void makeScrollable(QBoxLayout &page, QLayout &contents);
