// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>
#include <optional>
#include <vector>

class QPrinter;

namespace controls
{

enum class BoxIcon { None, Critical, Exclamation, Question, Information };
enum class Answer { Yes, No };

/// The one seam for every message, question, colour and printer choice. Boxes without a title of their own bear the program's.
class Dialogs
{
public:
    virtual ~Dialogs() = default;
    virtual void message(const QString &text, const QString &title = {}, BoxIcon icon = BoxIcon::None) = 0;
    /// Yes and No, `preselected` being what Enter gives. Esc and the window's close mean No.
    virtual Answer question(const QString &text, const QString &title, Answer preselected) = 0;
    /// Nothing when the user cancels, as with the printer.
    virtual std::optional<QColor> chooseColour(const QColor &initial, const QString &title) = 0;
    /// Sets the printer up as the user likes it; false when the user cancels.
    virtual bool choosePrinter(QPrinter &printer) = 0;
};

/// Shows real boxes over `parent`.
class MessageBoxes : public Dialogs
{
public:
    explicit MessageBoxes(QWidget *parent = nullptr) : parent_(parent) {}
    void setParent(QWidget *parent) { parent_ = parent; }
    void message(const QString &text, const QString &title, BoxIcon icon) override;
    Answer question(const QString &text, const QString &title, Answer preselected) override;
    std::optional<QColor> chooseColour(const QColor &initial, const QString &title) override;
    bool choosePrinter(QPrinter &printer) override;

private:
    QPointer<QWidget> parent_;
};

/// Answers from a queue and records what would have been shown, for the scripted round and the tests. A question without a queued
/// answer gets its preselected answer and is counted as unexpected; so is a message beyond the expected ones. Choices of a colour
/// or a printer that were not queued are cancelled and counted as well.
class QueuedDialogs : public Dialogs
{
public:
    struct Shown {
        QString text;
        QString title;
        BoxIcon icon = BoxIcon::None;
        bool question = false;
        Answer preselected = Answer::No;
    };
    void expectMessage() { ++expectedMessages_; }
    void queueAnswer(Answer answer) { answers_.push_back(answer); }
    void queueColour(std::optional<QColor> colour) { colours_.push_back(colour); }
    /// The next print goes to this PDF file; an empty name cancels.
    void queuePrinter(const QString &file) { printFiles_.push_back(file); }
    const std::vector<Shown> &shown() const { return shown_; }
    /// Everything asked for came, and nothing else did.
    bool allAsExpected() const
    {
        return unexpected_ == 0 && answers_.empty() && colours_.empty() && printFiles_.empty() && expectedMessages_ == 0;
    }
    QString takeLastText();

    void message(const QString &text, const QString &title, BoxIcon icon) override;
    Answer question(const QString &text, const QString &title, Answer preselected) override;
    std::optional<QColor> chooseColour(const QColor &initial, const QString &title) override;
    bool choosePrinter(QPrinter &printer) override;

private:
    std::vector<Shown> shown_;
    std::deque<Answer> answers_;
    std::deque<std::optional<QColor>> colours_;
    std::deque<QString> printFiles_;
    int expectedMessages_ = 0;
    int unexpected_ = 0;
};

} // namespace controls
