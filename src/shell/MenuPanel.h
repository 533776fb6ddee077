// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/MenuEntry.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui
{
class MenuPanel;
}
namespace controls
{
class PictureButton;
}

/// The menu: nine pictures in two frames, a banner and the hints. It tracks the hovered picture; its owner handles clicks.
class MenuPanel : public QWidget
{
    Q_OBJECT
public:
    explicit MenuPanel(QWidget *parent = nullptr);
    ~MenuPanel() override;

    /// Connects the pictures of the entries; pictures without an entry or without a screen are disabled.
    void setEntries(std::vector<MenuEntry> entries);
    /// The picture that the pointer was last over; nothing once it was cleared.
    const controls::PictureButton *HoverImage() const { return HoverImage_; }
    void focusPicture(const QString &name);
    /// What to do first, with a button for it; empty hides both.
    void setFirstSteps(const QString &text);

Q_SIGNALS:
    void entryClicked(const MenuEntry &entry);
    void closeClicked();
    /// A page of the main module, by the name that its command line takes; empty for none in particular.
    void mainModuleRequested(const QString &page);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    controls::PictureButton *picture(const QString &name) const;
    void setUpPictures();
    void hover(controls::PictureButton *picture);
    void Clear_Image_Hover();

    std::unique_ptr<Ui::MenuPanel> ui_;
    std::vector<MenuEntry> entries_;
    controls::PictureButton *HoverImage_ = nullptr;
};
