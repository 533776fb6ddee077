// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"
#include "analysis/frmMonLeave.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "support/ScreenCase.h"
#include "support/TemporaryFarm.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

using controls::Answer;
using controls::FlexGrid;
using controls::ItemCombo;
namespace cellColour = controls::cellColour;

/// A farm with citrus and nuts on 23 November 2026: active plantings Kloof (Valencia), Dam (Eureka), Rand (Beaumont) and Leeg,
/// whose variety is not known, and Oud (Valencia), which is not active.
class AnalysisFarm : public TemporaryFarm
{
public:
    AnalysisFarm();

    int kloof, dam, rand, oud, leeg;

    /// Stores an analysis with every value set to `value`; returns its key.
    int addAnalysis(const AnalysisKind &kind, int planting, QDate date, float value);
};

/// The screen of one kind on that farm, and helpers to drive it. Base of the tests.
class AnalysisScreen : public ScreenCase<AnalysisFarm, frmMonLeave>
{
    Q_OBJECT

protected Q_SLOTS:
    void init() { start(QDate(2026, 11, 23)); }
    void cleanup() { end(); }

protected:
    /// A data row for each kind, in a column named "kind".
    static void kinds();

    void open(QStringView mode) { showScreen(mode.toString()); }
    FlexGrid &grid() { return find<FlexGrid>("grdLeave"); }
    QLineEdit &box(const char *name) { return find<QLineEdit>(name); }
    ItemCombo &combo(const char *name) { return find<ItemCombo>(name); }
    void clickRow(int row);
    bool panelIsOpen() { return find<QWidget>("fraAddL").isVisible(); }
    /// Texts of a column in the visible rows, without the empty last one.
    QStringList shown(int col);
    std::int32_t &id() { return farm_->session.CurrentAnalysis.ID; }
    QStringList stored(const QString &sql) { return farm_->rows(store::DatabaseFile::Pest, sql); }
    /// Makes the pest database refuse every write.
    void refuseWrites();
};
