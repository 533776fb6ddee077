// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Dialogs.h"

#include "platform/controls/Theme.h"

#include <QCloseEvent>
#include <QColorDialog>
#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace controls
{

namespace
{

/// The icon and its colour.
std::pair<const char *, const char *> iconOf(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Critical:
        return {"error", "danger"};
    case BoxIcon::Exclamation:
        return {"warning", "danger"};
    case BoxIcon::Question:
        return {"question", "accent"};
    case BoxIcon::Information:
    case BoxIcon::None:
        break;
    }
    return {"information", "accent"};
}

/// What all boxes share: plain text, an icon of ours, and space for the title in the window frame.
void setUp(QMessageBox &box, BoxIcon icon)
{
    constexpr int iconSize = 32;
    constexpr int minWidth = 320;
    constexpr int windowButtons = 120;
    const auto [name, colour] = iconOf(icon);
    box.setIconPixmap(
        Theme::icon(QLatin1String(name), QLatin1String(colour)).pixmap(QSize(iconSize, iconSize), box.devicePixelRatioF()));
    // Error texts may contain file names and quotes, which are not markup.
    box.setTextFormat(Qt::PlainText);
    const int titleWidth = box.fontMetrics().horizontalAdvance(box.windowTitle()) + windowButtons;
    // A short text is level with the icon.
    for (auto *label : box.findChildren<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        label->setMinimumHeight(iconSize);
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    // A message box sizes itself by its layout only.
    auto *layout = static_cast<QGridLayout *>(box.layout());
    layout->addItem(new QSpacerItem(std::max(minWidth, titleWidth), 0), layout->rowCount(), 0, 1, layout->columnCount());
}

QString titleOr(const QString &title)
{
    return title.isEmpty() ? QGuiApplication::applicationDisplayName() : title;
}

/// Ends by Yes or No only: an Esc pressed out of habit must not discard typed input.
class QuestionBox : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (!event->matches(QKeySequence::Cancel)) {
            QMessageBox::keyPressEvent(event);
        }
    }
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

} // namespace

void MessageBoxes::message(const QString &text, const QString &title, BoxIcon icon)
{
    QMessageBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Ok, parent_);
    setUp(box, icon);
    Theme::setRole(*box.button(QMessageBox::Ok), "first");
    // A path or a command can be copied into another window.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

Answer MessageBoxes::question(const QString &text, const QString &title, Answer preselected)
{
    QuestionBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Yes | QMessageBox::No, parent_);
    setUp(box, BoxIcon::Question);
    const auto first = preselected == Answer::Yes ? QMessageBox::Yes : QMessageBox::No;
    box.setDefaultButton(first);
    Theme::setRole(*box.button(first), "first");
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<QColor> MessageBoxes::chooseColour(const QColor &initial, const QString &title)
{
    const QColor chosen = QColorDialog::getColor(initial, parent_, titleOr(title));
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

std::optional<QString> MessageBoxes::chooseFile(FilePurpose purpose, const QString &title, const QString &suggested,
                                                const QString &filter)
{
    const QString path = purpose == FilePurpose::Open ? QFileDialog::getOpenFileName(parent_, title, suggested, filter)
                                                      : QFileDialog::getSaveFileName(parent_, title, suggested, filter);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

bool MessageBoxes::choosePrinter(QPrinter &printer)
{
    QPrintDialog dialog(&printer, parent_);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace controls
