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

/// The list of analyses of a period, its filters, and the selection that the panel works on. The screen connects the signals of
/// the controls to it.
class AnalysisBrowser
{
public:
    AnalysisBrowser(ScreenHost &host, Ui::frmMonLeave &ui);

    /// Period start from its file, end today; every list filled anew, nothing chosen.
    void load();
    void setKind(const AnalysisKind *kind) { kind_ = kind; }
    /// Fills the grid for kind and period.
    void fill();
    /// Takes the chosen filters over and shows or hides the rows; the selection follows.
    void Apply_LeaveFilter();
    /// Goes to the remembered row, or to the first when it is not there.
    void reposition();
    void selectFirst();
    /// Paints the current row, and what was selected before it; its key becomes the ID. Leaves silently on an error.
    void selectRow();
    /// Selects the row that a key has led to; not anew when the key moved along the selected one.
    void movedByKey(int row);

    /// In the order of the lists.
    enum class CropLevel : std::size_t { Group, Type, Variety };
    /// Fills the list below the level anew, and the blocks.
    void cropChosen(CropLevel level);
    void resetFilter();
    void showActive(bool active);
    void periodChanged();
    void keepPeriodStart();

private:
    /// One of the four lists, and the value that holds its choice.
    struct Filter {
        controls::ItemCombo *combo;
        std::int32_t *value;
    };
    std::array<Filter, 4> filters() const;
    void goTo(int row, int col);
    void paintRow(int row, int colour);
    void refillBlocks();

    ScreenHost &host_;
    SessionContext &session_;
    Ui::frmMonLeave &ui_;
    const AnalysisKind *kind_ = nullptr;
};
