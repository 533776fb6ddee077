// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/ChildScreen.h"

#include <memory>

namespace Ui
{
class frmPestMon2;
}
namespace pestmon
{
class InstructionListPage;
class InstructionEditorPage;
class CapturePage;
} // namespace pestmon

/// The pest monitoring screen: the list of instructions, and over it one of two tabs, the instruction editor or the capture of
/// findings. One page is visible at a time. An activation is postponed while a tab is open, so that open input is not rebuilt.
class frmPestMon2 : public ChildScreen
{
    Q_OBJECT
public:
    explicit frmPestMon2(ScreenHost &host, QWidget *parent = nullptr);
    ~frmPestMon2() override;

    void activateScreen() override;
    QString screenTitle() const override;

protected:
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// In the order of the tabs.
    enum class Tab { Capture, Instruction };

    void load();
    void setIcons();
    void showTab(Tab tab);
    void closeTab();
    void openNew();
    void openSaved();
    void openCapture();

    std::unique_ptr<Ui::frmPestMon2> ui_;
    // Destroyed before the controls: a control that loses the focus on destruction still notifies its page.
    std::unique_ptr<pestmon::InstructionListPage> list_;
    std::unique_ptr<pestmon::InstructionEditorPage> editor_;
    std::unique_ptr<pestmon::CapturePage> capture_;
    bool activationPending_ = false;
};
