// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Dialogs.h"

#include <QCloseEvent>
#include <QColorDialog>
#include <QFileDialog>
#include <QGuiApplication>
#include <QKeyEvent>
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
    QMessageBox box(boxIcon(icon), titleOr(title), text, QMessageBox::Ok, parent_);
    // Error texts may contain file names and quotes, which are not markup.
    box.setTextFormat(Qt::PlainText);
    // A path or a command can be copied into another window.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

Answer MessageBoxes::question(const QString &text, const QString &title, Answer preselected)
{
    QuestionBox box(QMessageBox::NoIcon, titleOr(title), text, QMessageBox::Yes | QMessageBox::No, parent_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(preselected == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
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
