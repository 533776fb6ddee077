// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListHost.h"

#include <QFrame>

#include <memory>

namespace Ui
{
class FaultPanel;
}

namespace mainmodule
{

/// All faults of what was given, in a list that can be copied; the refused rows can be saved as a workbook.
class FaultPanel : public QFrame
{
    Q_OBJECT
public:
    explicit FaultPanel(QWidget *parent = nullptr);
    ~FaultPanel() override;

    /// Where boxes and the status line are.
    void setHost(ListHost &host) { host_ = &host; }
    /// Shows itself when there are faults, else hides.
    void showFaults(const std::vector<lists::GivenList> &given, const std::vector<lists::Fault> &faults);
    /// Hides itself unless it shows what an import or a paste refused, which remains until it is corrected.
    void forgetDeletion();
    /// In a dialog the panel cannot be hidden.
    void setHidable(bool hidable);

private:
    void copy() const;
    void saveRefused();

    std::unique_ptr<Ui::FaultPanel> ui_;
    ListHost *host_ = nullptr;
    std::vector<lists::GivenList> given_;
    std::vector<lists::Fault> faults_;
};

} // namespace mainmodule
