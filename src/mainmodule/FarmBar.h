// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/FarmLists.h"

#include <QObject>

namespace controls
{
class ItemCombo;
}

namespace mainmodule
{

/// The farm and season chosen at the top of the window, which the session has and the monitoring is handed.
class FarmBar : public QObject
{
    Q_OBJECT
public:
    FarmBar(controls::ItemCombo &farms, controls::ItemCombo &seasons, SessionContext &session, QObject *parent);

    /// Lists active farms and all seasons. A choice that is gone moves to the first farm, or to the last season.
    void fill(const lists::FarmLists &lists);
    /// Writes the files of farm and season for the monitoring.
    void writeHandOff();

Q_SIGNALS:
    /// The user has chosen another farm or season.
    void chosen();

private:
    void farmChosen();
    void seasonChosen();

    controls::ItemCombo &farms_;
    controls::ItemCombo &seasons_;
    SessionContext &session_;
};

} // namespace mainmodule
