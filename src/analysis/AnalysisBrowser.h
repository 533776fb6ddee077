// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"

namespace Ui
{
class frmMonLeave;
}
namespace controls
{
class ItemCombo;
}
class ScreenHost;

/// The list of analyses of a period, its filters, and the selection that the panel uses. The screen connects the controls'
/// signals to it.
class AnalysisBrowser
{
public:
    AnalysisBrowser(ScreenHost &host, Ui::frmMonLeave &ui);

    /// Reads the period's start from its file, sets its end to today, and refills all lists with nothing chosen.
    void load();
    void setKind(const AnalysisKind *kind) { kind_ = kind; }
    /// Fills the grid for kind and period.
    void fill();
    /// Shows or hides rows by the chosen filters; the selection follows.
    void Apply_LeaveFilter();
    /// Goes to the remembered row, or to the first if there is none.
    void reposition();
    void selectFirst();
    /// Paints the current and the previously selected row; the current row's key becomes the ID. Errors are ignored.
    void selectRow();
    /// Selects the row that a key moved to, unless it is selected already.
    void movedByKey(int row);

    /// In the order of the lists.
    enum class CropLevel : std::size_t { Group, Type, Variety };
    /// Refills the list below the level, and the blocks.
    void cropChosen(CropLevel level);
    void resetFilter();
    void showActive(bool active);
    void periodChanged();
    void storePeriodStart();

private:
    /// One of the four lists, and the value of its choice.
    struct Filter {
        controls::ItemCombo *combo;
        std::int32_t *value;
    };
    std::array<Filter, 4> filters() const;
    void goTo(int row, int col);
    void paintRow(int row, int colour);
    void refillBlocks();
    /// Why no analysis is listed; nothing when one is.
    void showEmptyText();

    ScreenHost &host_;
    SessionContext &session_;
    Ui::frmMonLeave &ui_;
    const AnalysisKind *kind_ = nullptr;
};
