// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/PestMonPage.h"

#include <QDate>

class QAction;

namespace pestmon
{

/// The list of monitoring instructions of a period, its filters, and the selection that the other pages use.
class InstructionListPage : public PestMonPage
{
    Q_OBJECT
public:
    InstructionListPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Reads the period's start from its file; its end is today.
    void load();
    /// Shows open instructions, whatever the option buttons say, and the remembered row.
    void activate();
    /// The row to select when none is remembered.
    enum class NoRowMeans { LastDataRow, FirstDataRow };
    void refresh(NoRowMeans noRow);
    void Fill_PestList();

    /// Key in the current row; 0 on the empty row.
    std::int32_t currentRowKey() const;
    bool currentRowIsDone() const;
    /// Reads the current row into the session, except the week and the repeat flag, which follow different rules.
    void readCurrentRow();
    bool currentRowRepeats() const;
    QDate currentRowDate() const;
    /// The note for a button that needs an instruction, while none is selected.
    void askForRow() const;

Q_SIGNALS:
    void addRequested();
    /// Raised for an open instruction, after its row was read.
    void editRequested();
    void captureRequested();

private:
    void addActions();
    void selectRow(int row, int col);
    void rowClick(int row, int col);
    void setRowBold(int row, bool bold);
    enum class Shown { Completed, Open, All };
    void showOnly(Shown shown);
    void periodChanged();
    void storePeriodStart();
    void editCurrentRow();
    void deleteCurrentRow();

    QAction *completeAction_ = nullptr;
};

} // namespace pestmon
