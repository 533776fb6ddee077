// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

#include <QDialog>
#include <QSet>

#include <memory>

namespace Ui
{
class StarterDialog;
}

namespace mainmodule
{

/// Common crops, or common pests of the office's crop types, to tick. Accepted, the ticked ones are rows to be matched by name.
class StarterDialog : public QDialog
{
    Q_OBJECT
public:
    enum class Kind { Crops, Pests };
    StarterDialog(Kind kind, const lists::FarmLists &lists, QWidget *parent = nullptr);
    ~StarterDialog() override;

    std::vector<lists::GivenList> ticked() const;

private:
    /// A line that can be ticked: a crop type with its varieties, or a pest.
    struct Line {
        QStringList texts;
        /// Positions in the starter list.
        std::vector<std::size_t> entries;
        bool isCommon = true;
    };
    void makeCropLines();
    void makePestLines();
    void fill();
    void click(int row);
    void tickShown(bool ticked);
    void countTicked();

    std::unique_ptr<Ui::StarterDialog> ui_;
    const Kind kind_;
    const lists::FarmLists &lists_;
    std::vector<Line> lines_;
    /// Lines by grid row, from row 1.
    std::vector<std::size_t> shown_;
    QSet<std::size_t> ticked_;
};

} // namespace mainmodule
