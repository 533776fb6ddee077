// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmRepPestInfo.h"

#include "common/PestTypes.h"
#include "common/grid/modMousewheel.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/RedrawPause.h"
#include "screens/GridActions.h"
#include "screens/Icons.h"
#include "screens/Period.h"
#include "store/clsPestMONNew.h"
#include "ui_frmRepPestInfo.h"

#include <QShortcut>

namespace
{

constexpr int PointsColumn = 3;
constexpr std::array<GridColumn, 5> BlockColumns{
    {{"", 0}, {"BlockID", 0, "BlockID"}, {"Block", 1900, "Block"}, {"Points", 600, "NoofMPoints"}, {"Select", 600}}};

Ui::frmRepPestInfo &setUp(Ui::frmRepPestInfo &ui, QWidget *screen)
{
    ui.setupUi(screen);
    return ui;
}

std::vector<reports::ReportChoice> choices(const controls::FlexGrid &grid, const PickGrid &list, bool withPoints)
{
    std::vector<reports::ReportChoice> all;
    for (int row = 1; row <= list.lastDataRow(); ++row) {
        const double points = withPoints ? basic::Val(grid.TextMatrix(row, PointsColumn)) : 0.0;
        all.push_back(
            {.key = list.key(row), .name = list.name(row), .chosen = list.isMarked(row), .points = basic::toInteger16(points)});
    }
    return all;
}

} // namespace

frmRepPestInfo::frmRepPestInfo(ScreenHost &host, QWidget *parent)
    : ChildScreen(host, parent), ui_(std::make_unique<Ui::frmRepPestInfo>()),
      pests_(*setUp(*ui_, this).grdPestIn, PestPickColumns), blocks_(*ui_->grdBlockIn, BlockColumns)
{
    setIcons({{ui_->cmdExcel, "sheet", "onacc"}, {ui_->cmdPALL, "sheet"}, {ui_->cmdTCancel, "close"}});
    ui_->cmbTPest->setTypingAllowed(false);
    addFocusKey(*ui_->grdPestIn, Qt::ALT | Qt::Key_I);
    addFocusKey(*ui_->grdBlockIn, Qt::ALT | Qt::Key_K);
    serveFocusedGrid(*this, {ui_->grdBlockIn, ui_->grdPestIn});
    connectButtons();
    load();
}

frmRepPestInfo::~frmRepPestInfo() = default;

QString frmRepPestInfo::screenTitle() const
{
    return QStringLiteral("Pest Monitor Info");
}

void frmRepPestInfo::connectButtons()
{
    const auto list = [this](controls::FlexGrid *grid, PickGrid &rows, QPushButton *all, QPushButton *none) {
        on(grid, &controls::FlexGrid::Click, [this, &rows](int row, int) {
            if (rows.isDataRow(row)) {
                rows.setMarked(row, !rows.isMarked(row));
                showCounts();
            }
        });
        on(all, &QPushButton::clicked, [this, grid, &rows] { selectAll(*grid, rows, true); });
        on(none, &QPushButton::clicked, [this, grid, &rows] { selectAll(*grid, rows, false); });
    };
    list(ui_->grdPestIn, pests_, ui_->cmdSAllP, ui_->cmdDSAllP);
    list(ui_->grdBlockIn, blocks_, ui_->cmdSAll, ui_->cmdDSAll);
    on(ui_->cmbTPest, &controls::ItemCombo::Click, [this] { pestTypeClick(); });
    // The list has no entry for all types.
    for (const int key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        on(new QShortcut(QKeySequence(key), ui_->cmbTPest, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
           [this] { ui_->cmbTPest->setListIndex(-1); });
    }
    ui_->cmbTPest->setToolTip(tr("Delete lists the pests of all types again"));
    on(ui_->dtpDateFrom, &controls::DatePicker::Change, [this] { keepPeriodStart(); });
    on(ui_->cmdExcel, &QPushButton::clicked, [this] { print(reports::RecordsNesting::ByPest); });
    on(ui_->cmdPALL, &QPushButton::clicked, [this] { print(reports::RecordsNesting::ByBlock); });
    on(ui_->cmdTCancel, &QPushButton::clicked, [this] { closeScreen(); });
}

void frmRepPestInfo::load()
{
    SessionContext &values = session();
    if (values.CurrentSDate.isEmpty()) {
        readPeriodStart(host());
    }
    showPeriod(host(), *ui_->dtpDateFrom, *ui_->dtpDateTo);
    values.PestTypeFilter.clear();
    for (const QString &caption : pestTypeCaptions()) {
        ui_->cmbTPest->AddItem(caption);
    }
    ui_->cmbTPest->setText(QString());
    InitGridBlockIn();
    fillPests();
}

void frmRepPestInfo::selectAll(controls::FlexGrid &grid, PickGrid &list, bool selected)
{
    {
        const controls::RedrawPause pause(grid);
        for (int row = 1; row < grid.Rows(); ++row) {
            list.setMarked(row, selected);
        }
        grid.setCell(1, list.markColumn());
    }
    showCounts();
}

void frmRepPestInfo::showCounts()
{
    ui_->lblPests->setText(pests_.counted(QStringLiteral("Pests")));
    ui_->lblBlocks->setText(blocks_.counted(QStringLiteral("Blocks")));
}

void frmRepPestInfo::InitGridBlockIn()
{
    blocks_.fill(objPestMON().XGet_PestBlocks_for_Farms(session().CurrentFarmID), noBlocksText());
}

void frmRepPestInfo::fillPests()
{
    pests_.fill(objPestMON().Get_Pests_for_ALL_FruitTypes(session().PestTypeFilter),
                noPestsText(!session().PestTypeFilter.isEmpty()));
    showCounts();
}

void frmRepPestInfo::pestTypeClick()
{
    session().PestTypeFilter = pestTypeFilter(ui_->cmbTPest->Text());
    fillPests();
}

void frmRepPestInfo::keepPeriodStart()
{
    ::storePeriodStart(session(), *ui_->dtpDateFrom);
}

void frmRepPestInfo::print(reports::RecordsNesting nesting)
{
    reports::printRecords(host(),
                          {.nesting = nesting,
                           .farm = session().CurrentFarm,
                           .from = ui_->dtpDateFrom->Value(),
                           .to = ui_->dtpDateTo->Value(),
                           .pests = choices(*ui_->grdPestIn, pests_, false),
                           .blocks = choices(*ui_->grdBlockIn, blocks_, true)});
}
