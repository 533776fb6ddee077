// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"
#include "analysis/frmMonLeave.h"
#include "platform/basic/Clock.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "support/ScreenHostDouble.h"
#include "support/TemporaryFarm.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <memory>

using controls::Answer;
using controls::FlexGrid;
using controls::ItemCombo;
namespace mark = controls::mark;

/// A farm with citrus and nuts on 23 November 2026: active plantings Kloof (Valencia), Dam (Eureka), Rand (Beaumont) and Leeg,
/// whose variety is not known, and Oud (Valencia), which is not active.
class AnalysisFarm : public TemporaryFarm
{
public:
    AnalysisFarm();

    int kloof, dam, rand, oud, leeg;

    /// Stores one of a kind; every value is `value`. Its key.
    int addAnalysis(const AnalysisKind &kind, int planting, QDate date, float value);
};

/// The screen of one kind on that farm, and the hands to work it. Base of the tests.
class AnalysisScreen : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// One row a kind, in a column named "kind".
    static void kinds();

    void open(QStringView mode);
    template <typename Control> Control &find(const char *name)
    {
        auto *control = screen_->findChild<Control *>(QLatin1String(name));
        Q_ASSERT(control);
        return *control;
    }
    FlexGrid &grid() { return find<FlexGrid>("grdLeave"); }
    QLineEdit &box(const char *name) { return find<QLineEdit>(name); }
    ItemCombo &combo(const char *name) { return find<ItemCombo>(name); }
    void click(const char *name) { find<QAbstractButton>(name).click(); }
    void clickRow(int row);
    void choose(const char *name, const QString &text) { combo(name).setListIndex(combo(name).findText(text)); }
    bool panelIsOpen() { return find<QWidget>("fraAddL").isVisible(); }
    /// Texts of a column over the rows that show, the empty last one apart.
    QStringList shown(int col);
    std::int32_t &id() { return farm_->session.CurrentAnalysis.ID; }
    QStringList stored(const QString &sql) { return farm_->rows(store::DatabaseFile::Pest, sql); }
    /// Makes the pest database refuse every write.
    void refuseWrites();

    std::unique_ptr<AnalysisFarm> farm_;
    std::unique_ptr<ScreenHostDouble> host_;
    std::unique_ptr<frmMonLeave> screen_;
};
