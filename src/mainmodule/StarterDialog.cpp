// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/StarterDialog.h"

#include "common/PestTypes.h"
#include "platform/controls/CellColours.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "screens/FitToScreen.h"
#include "screens/GridColumns.h"
#include "screens/Icons.h"
#include "screens/Shortcuts.h"
#include "store/lists/StarterLists.h"
#include "ui_StarterDialog.h"

#include <algorithm>
#include <array>

namespace mainmodule
{

namespace
{

using controls::cellColour::White;
using controls::cellColour::Yellow;

constexpr int TickColumn = 0;
constexpr std::array<GridColumn, 4> CropColumns{
    {{"Select", 600}, {"Crop group", 1700}, {"Crop type", 1700}, {"Varieties", 3600}}};
constexpr std::array<GridColumn, 4> PestColumns{{{"Select", 600}, {"Pest", 2400}, {"Kind", 1000}, {"Crop types", 3600}}};

} // namespace

StarterDialog::StarterDialog(Kind kind, const lists::FarmLists &lists, QWidget *parent)
    : QDialog(parent), ui_(std::make_unique<Ui::StarterDialog>()), kind_(kind), lists_(lists)
{
    ui_->setupUi(this);
    fitToScreen(*this, size());
    const bool isCrops = kind == Kind::Crops;
    setWindowTitle(isCrops ? tr("Common crops") : tr("Common pests"));
    ui_->lblStarter->setText(isCrops
                                 ? tr("Tick the crop types that the office grows. Their varieties come with them; what is not "
                                      "needed can be deleted, and more can be added later.")
                                 : tr("Tick the pests, diseases and weeds that the office watches for. These are names only; "
                                      "more can be added later."));
    ui_->chkAllPests->setVisible(!isCrops);
    controls::FlexGrid &grid = *ui_->grdStarter;
    grid.setAccessibleName(windowTitle());
    grid.setKeyClicks(controls::FlexGrid::KeyClick::SpaceAndF2);
    setIcons({{ui_->cmdAddTicked, "tick", "onacc"}, {ui_->cmdCloseStarter, "close"}});
    isCrops ? makeCropLines() : makePestLines();
    connect(&grid, &controls::FlexGrid::Click, this, [this](int row) { click(row); });
    connect(ui_->txtFind, &QLineEdit::textChanged, this, &StarterDialog::fill);
    connect(ui_->chkAllPests, &QCheckBox::toggled, this, &StarterDialog::fill);
    connect(ui_->cmdTickAll, &QPushButton::clicked, this, [this] { tickShown(true); });
    connect(ui_->cmdTickNone, &QPushButton::clicked, this, [this] { tickShown(false); });
    connect(ui_->cmdAddTicked, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->cmdCloseStarter, &QPushButton::clicked, this, &QDialog::reject);
    fill();
    grid.setFocus();
    nameKeysInTips(*this);
}

StarterDialog::~StarterDialog() = default;

void StarterDialog::makeCropLines()
{
    const std::vector<lists::StarterCrop> &crops = lists::starterCrops();
    for (std::size_t i = 0; i < crops.size(); ++i) {
        const lists::StarterCrop &crop = crops[i];
        if (lines_.empty() || lines_.back().texts[2] != crop.type) {
            lines_.push_back({{QString(), crop.group, crop.type, crop.variety}, {i}});
        } else {
            lines_.back().texts[3] += QStringLiteral(", ") + crop.variety;
            lines_.back().entries.push_back(i);
        }
    }
}

/// Pests that are common on a crop type of the office; all of them before it has any.
void StarterDialog::makePestLines()
{
    QSet<QString> office;
    for (const lists::Record &type : lists_.records(lists::List::CropTypes)) {
        office.insert(lists_.name(lists::List::CropTypes, type).toCaseFolded());
    }
    const std::vector<lists::StarterPest> &pests = lists::starterPests();
    for (std::size_t i = 0; i < pests.size(); ++i) {
        const lists::StarterPest &pest = pests[i];
        const bool isCommon = office.isEmpty() || pest.cropTypes.isEmpty()
            || std::any_of(pest.cropTypes.begin(), pest.cropTypes.end(),
                           [&](const QString &type) { return office.contains(type.toCaseFolded()); });
        const QString types = pest.cropTypes.isEmpty() ? tr("All") : pest.cropTypes.join(QStringLiteral(", "));
        lines_.push_back({{QString(), pest.name, pestTypeCaption(pest.kind), types}, {i}, isCommon});
    }
    std::stable_sort(lines_.begin(), lines_.end(), [](const Line &one, const Line &other) {
        return pestTypeCaptions().indexOf(one.texts[2]) < pestTypeCaptions().indexOf(other.texts[2]);
    });
}

void StarterDialog::fill()
{
    const QString filter = ui_->txtFind->text().trimmed();
    shown_.clear();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Line &line = lines_[i];
        const bool fits = filter.isEmpty() || std::any_of(line.texts.begin(), line.texts.end(), [&](const QString &text) {
                              return text.contains(filter, Qt::CaseInsensitive);
                          });
        if (fits && (line.isCommon || ui_->chkAllPests->isChecked())) {
            shown_.push_back(i);
        }
    }
    controls::FlexGrid &grid = *ui_->grdStarter;
    const controls::RedrawPause pause(grid);
    layOutList(grid, kind_ == Kind::Crops ? std::span<const GridColumn>(CropColumns) : std::span<const GridColumn>(PestColumns),
               static_cast<int>(shown_.size()));
    grid.setStretchColumns({3});
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        const Line &line = lines_[shown_[i]];
        for (int column = 1; column < grid.Cols(); ++column) {
            grid.setTextMatrix(row, column, line.texts[column]);
        }
        grid.setCellBackColor(row, TickColumn, ticked_.contains(shown_[i]) ? Yellow : White);
    }
    countTicked();
}

void StarterDialog::click(int row)
{
    if (row < 1 || row > static_cast<int>(shown_.size())) {
        return;
    }
    const std::size_t line = shown_[static_cast<std::size_t>(row - 1)];
    if (!ticked_.remove(line)) {
        ticked_.insert(line);
    }
    ui_->grdStarter->setCellBackColor(row, TickColumn, ticked_.contains(line) ? Yellow : White);
    countTicked();
}

void StarterDialog::tickShown(bool ticked)
{
    for (const std::size_t line : shown_) {
        ticked ? static_cast<void>(ticked_.insert(line)) : static_cast<void>(ticked_.remove(line));
    }
    fill();
}

void StarterDialog::countTicked()
{
    ui_->cmdAddTicked->setText(tr("&Add %1 ticked").arg(ticked_.size()));
    ui_->cmdAddTicked->setEnabled(!ticked_.isEmpty());
}

std::vector<lists::GivenList> StarterDialog::ticked() const
{
    std::vector<lists::StarterCrop> crops;
    std::vector<lists::StarterPest> pests;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (!ticked_.contains(i)) {
            continue;
        }
        for (const std::size_t entry : lines_[i].entries) {
            if (kind_ == Kind::Crops) {
                crops.push_back(lists::starterCrops()[entry]);
            } else {
                pests.push_back(lists::starterPests()[entry]);
            }
        }
    }
    return kind_ == Kind::Crops ? lists::givenStarterCrops(crops)
                                : std::vector<lists::GivenList>{lists::givenStarterPests(pests, lists_)};
}

} // namespace mainmodule
