// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/FaultPanel.h"

#include "mainmodule/WorkbookFile.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "platform/sheets/Csv.h"
#include "screens/GridColumns.h"
#include "store/lists/ListBooks.h"
#include "ui_FaultPanel.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace mainmodule
{

namespace
{

constexpr std::array<GridColumn, 5> Columns{{{"Sheet", 1300}, {"Row", 600}, {"Column", 1300}, {"Value", 1800}, {"Reason", 4400}}};

QString heading(const std::vector<lists::Fault> &faults)
{
    const auto refused = std::count_if(faults.begin(), faults.end(), [](const lists::Fault &fault) { return fault.refuses; });
    const qsizetype notes = static_cast<qsizetype>(faults.size()) - refused;
    QStringList parts;
    if (refused > 0) {
        parts.append(refused == 1 ? FaultPanel::tr("1 fault") : FaultPanel::tr("%1 faults").arg(refused));
    }
    if (notes > 0) {
        parts.append(notes == 1 ? FaultPanel::tr("1 note") : FaultPanel::tr("%1 notes").arg(notes));
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

FaultPanel::FaultPanel(QWidget *parent) : QFrame(parent), ui_(std::make_unique<Ui::FaultPanel>())
{
    ui_->setupUi(this);
    layOutList(*ui_->grdFaults, Columns, 0);
    ui_->grdFaults->setStretchColumns({static_cast<int>(Columns.size()) - 1});
    connect(ui_->cmdCopyFaults, &QPushButton::clicked, this, &FaultPanel::copy);
    connect(ui_->cmdSaveRefused, &QPushButton::clicked, this, &FaultPanel::saveRefused);
    connect(ui_->cmdHideFaults, &QPushButton::clicked, this, &QWidget::hide);
    hide();
}

FaultPanel::~FaultPanel() = default;

void FaultPanel::setHidable(bool hidable)
{
    ui_->cmdHideFaults->setVisible(hidable);
}

void FaultPanel::showFaults(const std::vector<lists::GivenList> &given, const std::vector<lists::Fault> &faults)
{
    given_ = given;
    faults_ = faults;
    std::stable_partition(faults_.begin(), faults_.end(), [](const lists::Fault &fault) { return fault.refuses; });
    controls::FlexGrid &grid = *ui_->grdFaults;
    {
        const controls::RedrawPause pause(grid);
        layOutList(grid, Columns, static_cast<int>(faults_.size()));
        // Nothing is added here, so without the empty closing row.
        grid.setRows(static_cast<int>(faults_.size()) + 1);
        const std::vector<QStringList> rows = lists::faultRows(faults_);
        for (std::size_t row = 1; row < rows.size(); ++row) {
            for (int column = 0; column < grid.Cols(); ++column) {
                grid.setTextMatrix(static_cast<int>(row), column, rows[row][column]);
            }
        }
    }
    ui_->lblFaults->setText(heading(faults));
    const bool savable =
        std::any_of(faults.begin(), faults.end(), [](const lists::Fault &fault) { return fault.refuses && fault.row > 0; });
    ui_->cmdSaveRefused->setVisible(savable && !given.empty());
    setVisible(!faults.empty());
}

void FaultPanel::forgetDeletion()
{
    if (given_.empty()) {
        hide();
    }
}

void FaultPanel::copy() const
{
    QGuiApplication::clipboard()->setText(sheets::clipboardText(lists::faultRows(faults_)));
    host_->showNote(tr("%1 copied").arg(heading(faults_)));
}

void FaultPanel::saveRefused()
{
    saveWorkbook(*host_, tr("Save refused rows"), QStringLiteral("Refused rows.xlsx"), WorkbookFilter,
                 [this](const QString &path) { lists::writeRefused(given_, faults_, path); });
}

} // namespace mainmodule
