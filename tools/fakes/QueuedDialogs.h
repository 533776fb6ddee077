// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/Dialogs.h"

#include <deque>
#include <vector>

/// Answers from a queue and records what would have been shown, for the scripted round and the tests. A question without a queued
/// answer gets its preselected answer and counts as unexpected, as does a message beyond the expected ones. Colour and printer
/// choices that were not queued are cancelled and count too.
class QueuedDialogs : public controls::Dialogs
{
public:
    struct Shown {
        QString text;
        QString title;
        controls::BoxIcon icon = controls::BoxIcon::None;
        bool question = false;
        controls::Answer preselected = controls::Answer::No;
    };
    void expectMessage() { ++expectedMessages_; }
    void queueAnswer(controls::Answer answer) { answers_.push_back(answer); }
    void queueColour(std::optional<QColor> colour) { colours_.push_back(colour); }
    /// The next print goes to this PDF file; an empty name cancels.
    void queuePrinter(const QString &file) { printFiles_.push_back(file); }
    /// Nothing cancels.
    void queueFile(std::optional<QString> path) { files_.push_back(std::move(path)); }
    const std::vector<Shown> &shown() const { return shown_; }
    /// Exactly the expected boxes were shown.
    bool allAsExpected() const
    {
        return unexpected_ == 0 && answers_.empty() && colours_.empty() && printFiles_.empty() && files_.empty()
            && expectedMessages_ == 0;
    }
    QString takeLastText();

    void message(const QString &text, const QString &title, controls::BoxIcon icon) override;
    controls::Answer question(const QString &text, const QString &title, controls::Answer preselected) override;
    std::optional<QColor> chooseColour(const QColor &initial, const QString &title) override;
    std::optional<QString> chooseFile(controls::FilePurpose purpose, const QString &title, const QString &suggested,
                                      const QString &filter) override;
    bool choosePrinter(QPrinter &printer) override;

private:
    std::vector<Shown> shown_;
    std::deque<controls::Answer> answers_;
    std::deque<std::optional<QColor>> colours_;
    std::deque<QString> printFiles_;
    std::deque<std::optional<QString>> files_;
    int expectedMessages_ = 0;
    int unexpected_ = 0;
};
