// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PestMonFarm.h"
#include "pestmon/CaptureCells.h"
#include "pestmon/frmPestMon2.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "support/ScreenCase.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

using controls::Answer;
using controls::FlexGrid;
using controls::ItemCombo;
namespace capture = pestmon::capture;
namespace cellColour = controls::cellColour;

/// The pest monitoring screen on a small farm on 4 May 2026, and helpers to drive it. Base of the tests of its pages.
class PestMonScreen : public ScreenCase<PestMonFarm, frmPestMon2>
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        start(QDate(2026, 5, 4));
        showScreen();
    }
    void cleanup() { end(); }

protected:
    static constexpr int BlockMark = 4;
    static constexpr int PestMark = 3;
    /// First pest's visible column.
    static constexpr int Value1 = 4;
    static constexpr int Value2 = 8;
    static constexpr int Point1 = capture::FirstPointRow;
    static constexpr int Total = capture::TotalRow;

    FlexGrid &grid(const char *name) { return find<FlexGrid>(name); }
    void clickCell(const char *name, int row, int col)
    {
        FlexGrid &cells = grid(name);
        cells.showCell(row, col);
        QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, cells.cellRect(row, col).center());
    }
    void expectMessage() { host_->dialogs().expectMessage(); }

    /// Issues an instruction through the editor and leaves the tab; its key.
    int issue(const QString &method, std::initializer_list<int> blockRows, std::initializer_list<int> pestRows,
              bool repeat = true);
    /// Selects the row of an instruction in the list of all.
    void select(int key);
    void capture(int key, const QString &block);
    /// Types into a cell of the capture grid and leaves it by Enter.
    void typeInto(int row, int col, const QString &text);
    QString cell(int row, int col) { return grid("grdPest").TextMatrix(row, col); }
    int storedCount(int row, int pest)
    {
        return farm_->number(
            QStringLiteral("Select PMCount from tblPMData where PMDataID = %1").arg(cell(row, capture::keyColumn(pest))));
    }
    int storedTotal(int pest, const char *field = "PMCountMax")
    {
        return farm_->number(QStringLiteral("Select %1 from tblPMDataMax where PMDataMaxID = %2")
                                 .arg(QLatin1String(field), cell(Total, capture::keyColumn(pest))));
    }
};
