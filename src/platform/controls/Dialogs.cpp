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

QString QueuedDialogs::takeLastText()
{
    if (shown_.empty()) {
        return {};
    }
    const QString text = shown_.back().text;
    shown_.pop_back();
    return text;
}

void QueuedDialogs::message(const QString &text, const QString &title, BoxIcon icon)
{
    shown_.push_back({text, title, icon, false, Answer::No});
    if (expectedMessages_ > 0) {
        --expectedMessages_;
    } else {
        ++unexpected_;
    }
}

Answer QueuedDialogs::question(const QString &text, const QString &title, Answer preselected)
{
    shown_.push_back({text, title, BoxIcon::None, true, preselected});
    if (answers_.empty()) {
        ++unexpected_;
        return preselected;
    }
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

std::optional<QColor> QueuedDialogs::chooseColour(const QColor &, const QString &)
{
    if (colours_.empty()) {
        ++unexpected_;
        return {};
    }
    const std::optional<QColor> colour = colours_.front();
    colours_.pop_front();
    return colour;
}

bool QueuedDialogs::choosePrinter(QPrinter &printer)
{
    if (printFiles_.empty()) {
        ++unexpected_;
        return false;
    }
    const QString file = printFiles_.front();
    printFiles_.pop_front();
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    return !file.isEmpty();
}

} // namespace controls
