// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListCellBox.h"

#include "platform/controls/FlexGrid.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QStringListModel>

#include <algorithm>
#include <utility>

namespace mainmodule
{

namespace
{

constexpr int LeastChoiceWidth = 220;

/// False when another window, or the list of choices, comes to the front.
bool movesFocus(const QEvent &event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

/// Shows its events to the handler first. An event filter would not do: a list of choices hands keys to the box directly.
class CellLineEdit : public QLineEdit
{
public:
    CellLineEdit(QWidget *parent, std::function<bool(QEvent &)> handler) : QLineEdit(parent), handler_(std::move(handler)) {}

protected:
    bool event(QEvent *event) override { return handler_(*event) || QLineEdit::event(event); }

private:
    std::function<bool(QEvent &)> handler_;
};

} // namespace

ListCellBox::ListCellBox(controls::FlexGrid &grid, Store store)
    : QObject(&grid), grid_(grid), box_(new CellLineEdit(grid.viewport(), [this](QEvent &event) { return boxEvent(event); })),
      completer_(new QCompleter(this)), choices_(new QStringListModel(this)), store_(std::move(store))
{
    box_->setObjectName(QStringLiteral("txtG1"));
    box_->hide();
    completer_->setModel(choices_);
    completer_->setWidget(box_);
    completer_->setCaseSensitivity(Qt::CaseInsensitive);
    completer_->setFilterMode(Qt::MatchContains);
    completer_->setCompletionMode(QCompleter::PopupCompletion);
    connect(completer_, qOverload<const QString &>(&QCompleter::activated), this, &ListCellBox::choose);
    connect(box_, &QLineEdit::textEdited, this, [this] { complete(false); });
    connect(&grid_, &controls::FlexGrid::Scroll, this, &ListCellBox::place);
}

void ListCellBox::open(const QStringList &choices, bool severalChoices)
{
    row_ = grid_.Row();
    col_ = grid_.Col();
    severalChoices_ = severalChoices;
    offered_ = choices;
    choices_->setStringList(choices);
    grid_.showCell(row_, col_);
    box_->setText(grid_.Text());
    box_->setAccessibleName(grid_.TextMatrix(0, col_));
    open_ = true;
    place();
    box_->show();
    box_->raise();
    box_->setFocus();
    box_->selectAll();
}

void ListCellBox::openTyping(const QString &typed, const QStringList &choices, bool severalChoices)
{
    open(choices, severalChoices);
    box_->setText(typed);
    complete(false);
}

void ListCellBox::place()
{
    if (!open_) {
        return;
    }
    const QRect cell = grid_.cellRect(row_, col_);
    constexpr int Inset = 2;
    if (cell.isEmpty()) {
        box_->move(-box_->width(), -box_->height());
        return;
    }
    box_->setGeometry(cell.adjusted(0, 0, -Inset, -Inset));
}

void ListCellBox::complete(bool all)
{
    if (offered_.isEmpty()) {
        return;
    }
    const QString typed = severalChoices_ ? box_->text().section(u';', -1).trimmed() : box_->text();
    // What begins with the typed letters comes before what only contains them.
    QStringList choices = offered_;
    std::stable_partition(choices.begin(), choices.end(),
                          [&](const QString &choice) { return choice.startsWith(typed, Qt::CaseInsensitive); });
    choices_->setStringList(choices);
    completer_->setCompletionPrefix(all ? QString() : typed);
    if ((typed.isEmpty() && !all) || completer_->completionCount() == 0) {
        completer_->popup()->hide();
        return;
    }
    completer_->complete(QRect(0, 0, std::max(box_->width(), LeastChoiceWidth), box_->height()));
}

void ListCellBox::choose(const QString &choice)
{
    QString before = severalChoices_ ? box_->text().section(u';', 0, -2) : QString();
    before = before.trimmed().isEmpty() ? QString() : before.trimmed() + QStringLiteral("; ");
    box_->setText(before + choice);
    box_->setModified(true);
}

void ListCellBox::close()
{
    open_ = false;
    completer_->popup()->hide();
    if (box_->window()->focusWidget() == box_) {
        grid_.setFocus();
    }
    box_->hide();
}

bool ListCellBox::leave()
{
    if (!open_ || leaving_) {
        return !open_;
    }
    const QScopedValueRollback guard(leaving_, true);
    const int row = grid_.Row();
    const int col = grid_.Col();
    // An untouched text is not stored again: it may be one that today's rules would refuse.
    if (box_->text() != grid_.TextMatrix(row_, col_) && !store_(row_, col_, box_->text())) {
        grid_.setCell(row_, col_);
        return false;
    }
    close();
    if (row < grid_.Rows() && col < grid_.Cols()) {
        grid_.setCell(row, col);
    }
    return true;
}

void ListCellBox::leaveBy(int rows, int columns)
{
    if (leave()) {
        grid_.setFocus();
        if (rows != 0 || columns != 0) {
            Q_EMIT moveRequested(rows, columns);
        }
    } else {
        box_->setFocus();
    }
}

bool ListCellBox::boxEvent(QEvent &event)
{
    if (event.type() == QEvent::FocusOut && open_ && movesFocus(event) && !leave()) {
        // What was refused is not dropped with the focus: the box waits for a text or Esc.
        QMetaObject::invokeMethod(
            box_, [this] { box_->setFocus(); }, Qt::QueuedConnection);
    }
    return event.type() == QEvent::KeyPress && keyPress(static_cast<QKeyEvent &>(event));
}

/// Keys of the list of choices, while it shows.
bool ListCellBox::choiceKey(const QKeyEvent &key)
{
    QAbstractItemView *popup = completer_->popup();
    if (!popup->isVisible()) {
        const bool opens = key.key() == Qt::Key_F4 || (key.key() == Qt::Key_Down && (key.modifiers() & Qt::AltModifier));
        if (opens) {
            complete(true);
        }
        return opens;
    }
    const bool takes = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (takes) {
        // Without a chosen entry the first one is meant: it is what was typed, completed.
        const QModelIndex chosen = popup->currentIndex().isValid() ? popup->currentIndex() : popup->model()->index(0, 0);
        choose(chosen.data().toString());
        popup->hide();
    }
    return false;
}

bool ListCellBox::keyPress(const QKeyEvent &key)
{
    if (choiceKey(key)) {
        return true;
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        leaveBy(1, 0);
        return true;
    case Qt::Key_Up:
        leaveBy(-1, 0);
        return true;
    case Qt::Key_Tab:
        leaveBy(0, 1);
        return true;
    case Qt::Key_Backtab:
        leaveBy(0, -1);
        return true;
    case Qt::Key_Escape:
        close();
        Q_EMIT abandoned();
        return true;
    default:
        return false;
    }
}

} // namespace mainmodule
