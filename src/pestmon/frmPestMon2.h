// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/ChildScreen.h"

#include <memory>

namespace Ui
{
class frmPestMon2;
}
class InstructionListPage;
class InstructionEditorPage;
class CapturePage;

/// The workbench of pest monitoring: the list of instructions, and over it one of two tabs, the instruction's editor or the
/// capture of its findings. One face is visible at a time. While a tab is open an activation waits, so that nothing under open
/// input is rebuilt.
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
    // The faces end before the controls: a control that loses the focus while it ends still tells those who watch it.
    std::unique_ptr<InstructionListPage> list_;
    std::unique_ptr<InstructionEditorPage> editor_;
    std::unique_ptr<CapturePage> capture_;
    bool activationWaits_ = false;
};
