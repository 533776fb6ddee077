// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisPanel.h"

#include "analysis/AnalysisNumbers.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/controls/Twips.h"
#include "screens/ListFillers.h"
#include "ui_frmMonLeave.h"

#include <QEvent>
#include <QFocusEvent>

#include <algorithm>

using controls::ItemCombo;

namespace
{

/// Boxes are narrowed to this where the panel is narrower than its steps.
constexpr int MinBoxWidth = 60;
constexpr int ReturnKey = 13;

void fillList(ItemCombo &combo, std::span<const QStringView> texts)
{
    combo.Clear();
    for (const QStringView text : texts) {
        combo.AddItem(text.toString());
    }
}

} // namespace

AnalysisPanel::AnalysisPanel(Ui::frmMonLeave &ui, SessionContext &session) : ui_(ui), session_(session)
{
    ui_.cboBlock->setTypingAllowed(false);
    for (const Box &box : boxes()) {
        box.edit->installEventFilter(this);
        connect(box.edit, &QLineEdit::returnPressed, this, [] { Key_Enter_To_Tab(ReturnKey); });
        connect(box.edit, &QLineEdit::textEdited, this, [this, edit = box.edit] { spreadPastedRow(*edit); });
    }
    ui_.txtDepth->installEventFilter(this);
    connect(ui_.txtDepth, &QLineEdit::returnPressed, this, [] { Key_Enter_To_Tab(ReturnKey); });
    connect(ui_.txtDepth, &QLineEdit::textEdited, this, &AnalysisPanel::markChanged);
    for (ItemCombo *combo : {ui_.cmbLPart, ui_.cmbSeason}) {
        connect(combo, &ItemCombo::Click, this, &AnalysisPanel::markChanged);
        connect(combo, &ItemCombo::Change, this, &AnalysisPanel::markChanged);
    }
    connect(ui_.cboBlock, &ItemCombo::Click, this, &AnalysisPanel::blockChosen);
    ui_.fraAddL->hide();
}

std::array<AnalysisPanel::Box, AnalysisBoxes> AnalysisPanel::boxes() const
{
    return {{{ui_.cell_0, ui_.Label5_0, ui_.txtN},
             {ui_.cell_1, ui_.Label5_1, ui_.txtP},
             {ui_.cell_2, ui_.Label5_2, ui_.txtK},
             {ui_.cell_3, ui_.Label5_3, ui_.txtCa},
             {ui_.cell_4, ui_.Label5_4, ui_.txtMg},
             {ui_.cell_5, ui_.Label5_5, ui_.txtNa},
             {ui_.cell_6, ui_.Label5_6, ui_.txtMn},
             {ui_.cell_7, ui_.Label5_7, ui_.txtFe},
             {ui_.cell_8, ui_.Label5_8, ui_.txtCu},
             {ui_.cell_9, ui_.Label5_9, ui_.txtZn},
             {ui_.cell_10, ui_.Label5_10, ui_.txtB}}};
}

void AnalysisPanel::setKind(const AnalysisKind &kind)
{
    ui_.Label3->setText(kind.secondCaption.toString());
    ui_.secondEntry->setVisible(kind.secondEntry != AnalysisSecondEntry::None);
    ui_.cmbLPart->setVisible(kind.secondEntry == AnalysisSecondEntry::Part);
    ui_.txtDepth->setVisible(kind.secondEntry == AnalysisSecondEntry::Depth);
    ui_.Label3->setBuddy(kind.secondEntry == AnalysisSecondEntry::Depth ? static_cast<QWidget *>(ui_.txtDepth) : ui_.cmbLPart);
    fillList(*ui_.cmbLPart, kind.parts);
    ui_.Label4->setText(kind.fourthCaption.toString());
    ui_.fourthEntry->setVisible(!kind.seasons.empty());
    fillList(*ui_.cmbSeason, kind.seasons);
    boxStep_ = kind.boxStep / controls::TwipsPerPixel;
    const auto all = boxes();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const bool used = i < kind.values.size();
        all[i].label->setText(used ? kind.values[i].label.toString() : QString());
        all[i].cell->setVisible(used);
    }
}

int AnalysisPanel::fitBoxes(int width)
{
    constexpr int gap = 8;
    constexpr int wideStep = 120;
    const QMargins edges = ui_.fraAddL->contentsMargins();
    const auto all = boxes();
    const auto used =
        std::max<std::ptrdiff_t>(1, std::count_if(all.begin(), all.end(), [](const Box &box) { return !box.cell->isHidden(); }));
    const int available = width - edges.left() - edges.right();
    const int step =
        std::clamp((available + gap) / static_cast<int>(used), MinBoxWidth + gap, std::max(MinBoxWidth + gap, boxStep_));
    for (const Box &box : all) {
        box.cell->setFixedWidth(step);
        box.edit->setFixedWidth(step - gap);
    }
    // Close ends below the last box.
    all[static_cast<std::size_t>(used) - 1].cell->setFixedWidth(step - gap);
    const int taken = step * static_cast<int>(used) - gap;
    constexpr int nearly = 16;
    const bool fills = available - taken < nearly;
    ui_.panelButtons->setContentsMargins(0, 0, fills ? available - taken : 0, 0);
    // The fields above use the same columns.
    ui_.firstLine->setSpacing(gap);
    const bool isWide = step >= wideStep;
    for (QWidget *field : std::initializer_list<QWidget *>{ui_.dtpAna, ui_.cmbLPart, ui_.txtDepth, ui_.cmbSeason}) {
        field->setFixedWidth((isWide ? 1 : 2) * step - gap);
    }
    ui_.cboBlock->setFixedWidth((isWide ? 2 : 3) * step - gap);
    for (QWidget *entry : {ui_.firstEntry, ui_.secondEntry, ui_.thirdEntry, ui_.fourthEntry}) {
        entry->updateGeometry();
    }
    ui_.fraAddL->layout()->activate();
    return fills ? width : taken + edges.left() + edges.right();
}

bool AnalysisPanel::isOpen() const
{
    return !ui_.fraAddL->isHidden();
}

void AnalysisPanel::openNew()
{
    changed_ = false;
    session_.CurrentAnalysis.ID = 0;
    session_.CurrentPlantBlockID = 0;
    ui_.dtpAna->setValue(basic::Clock::today());
    for (ItemCombo *combo : {ui_.cboBlock, ui_.cmbLPart, ui_.cmbSeason}) {
        combo->setText(QString());
    }
    ui_.txtDepth->clear();
    for (const Box &box : boxes()) {
        box.edit->clear();
    }
    show();
}

void AnalysisPanel::openSaved(const QString &block)
{
    const AnalysisRecord &record = session_.CurrentAnalysis;
    ui_.cboBlock->setText(block);
    ui_.dtpAna->setValue(record.Date.date());
    ui_.cmbLPart->setText(record.Part);
    ui_.txtDepth->setText(basic::singleText(record.Depth));
    ui_.cmbSeason->setText(record.Season);
    const auto all = boxes();
    for (std::size_t i = 0; i < all.size(); ++i) {
        constexpr int decimals = 2;
        all[i].edit->setText(basic::formatFixedSingle(record.*AnalysisValues[i], decimals));
    }
    changed_ = false;
    show();
}

void AnalysisPanel::show()
{
    ui_.fraAddL->show();
    ui_.fraAddL->raise();
    ui_.dtpAna->setFocus(Qt::TabFocusReason);
}

void AnalysisPanel::close()
{
    ui_.fraAddL->hide();
}

void AnalysisPanel::settle()
{
    ui_.dtpAna->acceptText();
    for (const Box &box : boxes()) {
        if (box.edit->hasFocus()) {
            leaveBox(*box.edit);
        }
    }
}

void AnalysisPanel::read()
{
    AnalysisRecord record = session_.CurrentAnalysis;
    record.Date = basic::SerialDate::fromDate(ui_.dtpAna->Value());
    record.Part = ui_.cmbLPart->Text();
    record.Depth = leadingSingle(ui_.txtDepth->text());
    record.Season = ui_.cmbSeason->Text();
    const auto all = boxes();
    for (std::size_t i = 0; i < all.size(); ++i) {
        record.*AnalysisValues[i] = leadingSingle(all[i].edit->text());
    }
    session_.CurrentAnalysis = record;
}

void AnalysisPanel::blockChosen()
{
    const int index = ui_.cboBlock->ListIndex();
    session_.CurrentPlantBlockID = index < 0 ? 0 : ui_.cboBlock->ItemData(index);
    markChanged();
}

void AnalysisPanel::leaveBox(QLineEdit &box)
{
    box.setText(withTwoDecimals(box.text()));
    markChanged();
}

void AnalysisPanel::spreadPastedRow(QLineEdit &first)
{
    const QStringList values = pastedValues(first.text());
    if (values.size() < 2) {
        return;
    }
    QList<QLineEdit *> targets;
    for (const Box &box : boxes()) {
        if ((box.edit == &first || !targets.isEmpty()) && box.cell->isVisible()) {
            targets.append(box.edit);
        }
    }
    const auto count = std::min(values.size(), targets.size());
    for (qsizetype i = 0; i < count; ++i) {
        targets[i]->setText(values[i]);
    }
    markChanged();
    targets[count - 1]->setFocus();
    if (values.size() > targets.size()) {
        Q_EMIT pasteTooLong(static_cast<int>(values.size()), static_cast<int>(targets.size()));
    }
}

bool AnalysisPanel::eventFilter(QObject *watched, QEvent *event)
{
    auto &box = static_cast<QLineEdit &>(*watched);
    if (event->type() == QEvent::FocusIn) {
        // After the press that gave the focus, which would move the cursor.
        QMetaObject::invokeMethod(
            &box,
            [&box] {
                if (box.hasFocus()) {
                    box.selectAll();
                }
            },
            Qt::QueuedConnection);
    } else if (event->type() == QEvent::FocusOut && watched != ui_.txtDepth) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // The text stays as typed while another window is active.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            leaveBox(box);
        }
    }
    return QObject::eventFilter(watched, event);
}
