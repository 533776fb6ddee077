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

/// The analyses of one kind, leaf, fruit or soil, chosen by the Tag: a list with filters, and over it the panel in which one is
/// entered. While the panel is open the list is locked, since both work on one record, and an activation waits.
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
    // Ends before the controls: a control that loses the focus while it ends still tells those who watch it.
    std::unique_ptr<AnalysisPanel> panel_;
    const AnalysisKind *kind_ = nullptr;
    bool activationWaits_ = false;
};
