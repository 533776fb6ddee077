// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/FarmLists.h"

#include <QWidget>

#include <optional>
#include <vector>

class QLabel;
class QPushButton;

namespace mainmodule
{

/// What the start page leads to.
enum class StartStep { Databases, Farms, Blocks, Crops, Plantings, Workers, Pests, Monitoring };

/// The first page: what a new office enters, in order, and how far it is.
class StartPage : public QWidget
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);

    /// Without databases only they can be made.
    void showProgress(const lists::FarmLists &lists, bool hasDatabases);
    void focusNextStep();
    /// The first step that is still to be done, as last shown.
    std::optional<StartStep> nextStep() const { return next_; }
    /// What a button that leads to a list says on other pages.
    static QString goOnText(StartStep step);

Q_SIGNALS:
    void stepRequested(mainmodule::StartStep step);

private:
    struct Row {
        StartStep step;
        QLabel *number;
        QLabel *title;
        QLabel *state;
        QPushButton *button;
    };

    void addRow(StartStep step, const QString &number);
    QString stateOf(StartStep step, const lists::FarmLists &lists) const;

    QLabel *lead_;
    std::vector<Row> rows_;
    std::optional<StartStep> next_;
};

} // namespace mainmodule
