// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/RecordsReport.h"
#include "screens/ChildScreen.h"
#include "screens/PickGrid.h"

#include <memory>

namespace Ui
{
class frmRepPestInfo;
}

/// Selects pests, blocks and a period for the records report, by pest or by block.
class frmRepPestInfo : public ChildScreen
{
    Q_OBJECT
public:
    explicit frmRepPestInfo(ScreenHost &host, QWidget *parent = nullptr);
    ~frmRepPestInfo() override;

    /// Does nothing: the selection stays when the window is left and entered again.
    void activateScreen() override {}
    QString screenTitle() const override;

private:
    void load();
    void connectButtons();
    /// Marks all rows, including the empty last one, and makes the first the current one.
    void selectAll(controls::FlexGrid &grid, PickGrid &list, bool selected);
    void showCounts();
    void InitGridBlockIn();
    void fillPests();
    void pestTypeClick();
    void keepPeriodStart();
    void print(reports::RecordsNesting nesting);

    std::unique_ptr<Ui::frmRepPestInfo> ui_;
    PickGrid pests_;
    PickGrid blocks_;
};
