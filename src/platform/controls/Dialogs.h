// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <optional>

class QPrinter;

namespace controls
{

enum class BoxIcon { None, Critical, Exclamation, Question, Information };
enum class Answer { Yes, No };
enum class FilePurpose { Open, Save };

/// The seam for all messages, questions, colour and printer dialogs. Boxes without a title show the program's name.
class Dialogs
{
public:
    virtual ~Dialogs() = default;
    virtual void message(const QString &text, const QString &title = {}, BoxIcon icon = BoxIcon::None) = 0;
    /// Yes and No; `preselected` is the answer for Enter. Esc and the close button of the window do nothing.
    virtual Answer question(const QString &text, const QString &title, Answer preselected) = 0;
    /// Nothing when the user cancels.
    virtual std::optional<QColor> chooseColour(const QColor &initial, const QString &title) = 0;
    /// The path of a file to open, or to save to after a question before an existing one is replaced. `suggested` is a folder or
    /// a path, `filter` such as "Workbooks (*.xlsx)", several joined by ";;". Nothing when the user cancels.
    virtual std::optional<QString> chooseFile(FilePurpose purpose, const QString &title, const QString &suggested,
                                              const QString &filter) = 0;
    /// Lets the user set up the printer; false when the user cancels.
    virtual bool choosePrinter(QPrinter &printer) = 0;
};

/// Shows modal boxes over `parent`.
class MessageBoxes : public Dialogs
{
public:
    explicit MessageBoxes(QWidget *parent = nullptr) : parent_(parent) {}
    void setParent(QWidget *parent) { parent_ = parent; }
    void message(const QString &text, const QString &title, BoxIcon icon) override;
    Answer question(const QString &text, const QString &title, Answer preselected) override;
    std::optional<QColor> chooseColour(const QColor &initial, const QString &title) override;
    std::optional<QString> chooseFile(FilePurpose purpose, const QString &title, const QString &suggested,
                                      const QString &filter) override;
    bool choosePrinter(QPrinter &printer) override;

private:
    QPointer<QWidget> parent_;
};

} // namespace controls
