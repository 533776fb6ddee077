// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <Qt>

class QWidget;
namespace controls
{
class FlexGrid;
class ItemCombo;
} // namespace controls

/// Drives a window by mouse and keys on the controls of the given names.
class UiDriver
{
public:
    explicit UiDriver(QWidget &window) : window_(window) {}

    /// The control of that objectName; ends the program with a message when the window has none.
    template <typename Control> Control &find(const char *name) const
    {
        auto *control = dynamic_cast<Control *>(findWidget(name));
        return control ? *control : *static_cast<Control *>(missing(name));
    }
    void click(const char *name) const;
    void clickCell(const char *grid, int row, int col) const;
    void doubleClickCell(const char *grid, int row, int col) const;
    /// To whatever has the focus.
    void key(Qt::Key key) const;
    void type(const QString &text) const;
    /// Focuses the list and goes through it by the arrow keys until it shows the text; false when it never does.
    bool choose(const char *combo, const QString &text) const;
    /// The first row whose cell says `text`, or -1.
    int findRow(const char *grid, int col, const QString &text) const;

private:
    QWidget *findWidget(const char *name) const;
    [[noreturn]] static void *missing(const char *name);

    QWidget &window_;
};
