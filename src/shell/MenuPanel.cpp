// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/MenuPanel.h"

#include "platform/controls/PictureButton.h"
#include "screens/Icons.h"
#include "ui_MenuPanel.h"

#include <QEvent>

#include <algorithm>
#include <array>

using controls::PictureButton;

namespace
{

struct Picture {
    const char *name;
    const char *icon;
};

/// In the order in which a hover border is looked for.
constexpr std::array<Picture, 9> Pictures{{
    {"imLeave", "leaf"},
    {"imGG", "graphs"},
    {"imFF", "field-sheets"},
    {"ImPM", "pest-monitor-info"},
    {"imSpray", "pest-monitoring"},
    {"imAsset", "fruit"},
    {"imBas", "soil-basic"},
    {"imEx", "soil-extraction"},
    {"imMic", "soil-micro"},
}};

constexpr int SmallPicture = 24;
/// Pixels.
constexpr int SoilLift = 13;

} // namespace

MenuPanel::MenuPanel(QWidget *parent) : QWidget(parent), ui_(std::make_unique<Ui::MenuPanel>())
{
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    ui_->banner->setAttribute(Qt::WA_StyledBackground);
    setUpPictures();
    // Level with the lower pictures of the other frame, which has no caption between its rows.
    for (PictureButton *button : {ui_->imBas, ui_->imEx, ui_->imMic}) {
        button->setLift(SoilLift);
        button->setCaptionLines(2);
    }
    setLabelIcon(*ui_->imHyd, SmallPicture, QStringLiteral("soil"), QStringLiteral("muted"));
    setIcons({{ui_->cmdClose, "close"}});
    connect(ui_->cmdClose, &QToolButton::clicked, this, &MenuPanel::closeClicked);
    connect(ui_->Label6Hint, &QPushButton::clicked, this, [this] { Q_EMIT mainModuleRequested(QStringLiteral("blocks")); });
    connect(ui_->Label7Hint, &QPushButton::clicked, this,
            [this] { Q_EMIT mainModuleRequested(QStringLiteral("planted-blocks")); });
    connect(ui_->cmdMainModule, &QPushButton::clicked, this, [this] { Q_EMIT mainModuleRequested(QString()); });
    setFirstSteps({});
    for (QWidget *background : {static_cast<QWidget *>(this), static_cast<QWidget *>(ui_->Frame4),
                                static_cast<QWidget *>(ui_->Frame6), static_cast<QWidget *>(ui_->fraSoil)}) {
        background->setMouseTracking(true);
        background->installEventFilter(this);
    }
}

MenuPanel::~MenuPanel() = default;

PictureButton *MenuPanel::picture(const QString &name) const
{
    return findChild<PictureButton *>(name);
}

void MenuPanel::setUpPictures()
{
    for (const Picture &entry : Pictures) {
        PictureButton *button = picture(QLatin1String(entry.name));
        setIcons({{button, entry.icon}});
        button->setUnavailable(tr("Not yet available in this version"));
        connect(button, &PictureButton::MouseMove, this, [this, button] { hover(button); });
    }
}

void MenuPanel::setEntries(std::vector<MenuEntry> entries)
{
    entries_ = std::move(entries);
    for (const MenuEntry &entry : entries_) {
        PictureButton *button = picture(entry.picture);
        if (button == nullptr || !entry.factory) {
            continue;
        }
        button->setAvailable();
        connect(button, &PictureButton::clicked, this, [this, entry] { Q_EMIT entryClicked(entry); });
    }
}

void MenuPanel::setFirstSteps(const QString &text)
{
    ui_->lblFirstSteps->setText(text);
    ui_->firstSteps->setVisible(!text.isEmpty());
}

void MenuPanel::focusPicture(const QString &name)
{
    if (PictureButton *button = picture(name)) {
        button->setFocus();
    }
}

void MenuPanel::hover(PictureButton *button)
{
    // The border of another picture is removed only when the pointer crosses the background.
    button->setHoverBorder(true);
    HoverImage_ = button;
}

void MenuPanel::Clear_Image_Hover()
{
    if (HoverImage_ == nullptr) {
        return;
    }
    // Also of earlier pictures, when the pointer went directly from one to the next.
    for (const Picture &entry : Pictures) {
        if (PictureButton *button = picture(QLatin1String(entry.name))) {
            button->setHoverBorder(false);
        }
    }
    HoverImage_ = nullptr;
}

bool MenuPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        Clear_Image_Hover();
    }
    return QWidget::eventFilter(watched, event);
}
