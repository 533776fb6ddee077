// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/PestMonPage.h"

#include <QDate>

/// The list of monitoring instructions of a period, its filters, and the selection that the other faces work on.
class InstructionListPage : public PestMonPage
{
    Q_OBJECT
public:
    InstructionListPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Period start from its file, end today.
    void load();
    /// Shows open instructions, whatever the option buttons say, and the remembered row.
    void activate();
    /// Where the selection goes when no row is remembered.
    enum class NoRowMeans { LastDataRow, FirstDataRow };
    void refresh(NoRowMeans noRow);
    void Fill_PestList();

    /// Key in the current row; 0 on the empty row.
    std::int32_t currentRowKey() const;
    bool currentRowIsDone() const;
    /// Takes the current row into the session: all but the week and the repeat flag, which follow different rules.
    void readCurrentRow();
    bool currentRowRepeats() const;
    QDate currentRowDate() const;

Q_SIGNALS:
    void addRequested();
    /// An open instruction is to be edited; its row has been read.
    void editRequested();
    void captureRequested();

private:
    void selectRow(int row, int col);
    void rowClick(int row, int col);
    void setRowBold(int row, bool bold);
    enum class Shown { Completed, Open, All };
    void showOnly(Shown shown);
    void periodChanged();
    void keepPeriodStart();
    void editCurrentRow();
    void deleteCurrentRow();
};
