// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/ChildScreen.h"

#include <memory>

namespace Ui
{
class frmMonLeave;
}
class AnalysisBrowser;
class AnalysisPanel;
struct AnalysisKind;

/// The analyses of the kind given by the Tag: a list with filters, and over it the panel in which one is entered. While the panel
/// is open, the list is locked, since both use the same record, and an activation is postponed.
class frmMonLeave : public ChildScreen
{
    Q_OBJECT
public:
    explicit frmMonLeave(ScreenHost &host, QWidget *parent = nullptr);
    ~frmMonLeave() override;

    void activateScreen() override;
    QString screenTitle() const override;

protected:
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setIcons();
    void connectList();
    void connectPanel();
    void applyKind();
    void openNew();
    void openSaved();
    bool readCurrentRow();
    void showPanel();
    void arrangeFilters();
    void placePanel();
    void setListLocked(bool locked);
    /// False when nothing was saved; the panel then stays open.
    bool save();
    void closePanel();
    void hidePanel();
    void deleteAnalysis();
    void print();

    std::unique_ptr<Ui::frmMonLeave> ui_;
    std::unique_ptr<AnalysisBrowser> browser_;
    // Destroyed before the controls: a control that loses the focus on destruction still notifies the panel.
    std::unique_ptr<AnalysisPanel> panel_;
    const AnalysisKind *kind_ = nullptr;
    bool activationPending_ = false;
    /// Pixels below the list while the panel is closed.
    int listBottom_ = 0;
};
