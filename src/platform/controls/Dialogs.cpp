// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Dialogs.h"

#include <QColorDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace controls
{

namespace
{

QMessageBox::Icon boxIcon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QString titleOr(const QString &title)
{
    return title.isEmpty() ? QGuiApplication::applicationDisplayName() : title;
}

} // namespace

void MessageBoxes::message(const QString &text, const QString &title, BoxIcon icon)
{
    QMessageBox box(boxIcon(icon), titleOr(title), text, QMessageBox::Ok, parent_);
    // Texts of errors may hold file names and quotes; none of them is meant as markup.
    box.setTextFormat(Qt::PlainText);
    // A path or a command in it can be taken over into another window.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

Answer MessageBoxes::question(const QString &text, const QString &title, Answer preselected)
{
    QMessageBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Yes | QMessageBox::No, parent_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(preselected == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<QColor> MessageBoxes::chooseColour(const QColor &initial, const QString &title)
{
    const QColor chosen = QColorDialog::getColor(initial, parent_, titleOr(title));
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

bool MessageBoxes::choosePrinter(QPrinter &printer)
{
    QPrintDialog dialog(&printer, parent_);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace controls
