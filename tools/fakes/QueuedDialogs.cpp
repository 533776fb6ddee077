// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/QueuedDialogs.h"

#include <QPrinter>

using controls::Answer;
using controls::BoxIcon;

QString QueuedDialogs::takeLastText()
{
    if (shown_.empty()) {
        return {};
    }
    QString text = shown_.back().text;
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

std::optional<QString> QueuedDialogs::chooseFile(controls::FilePurpose, const QString &, const QString &, const QString &)
{
    if (files_.empty()) {
        ++unexpected_;
        return {};
    }
    const std::optional<QString> path = files_.front();
    files_.pop_front();
    return path;
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
