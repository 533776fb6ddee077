// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/ChildScreen.h"

#include <memory>

namespace Ui
{
class frmRepPestMon;
}

/// The stored field sheets; a click opens one in the desktop's spreadsheet program.
class frmRepPestMon : public ChildScreen
{
    Q_OBJECT
public:
    explicit frmRepPestMon(ScreenHost &host, QWidget *parent = nullptr);
    ~frmRepPestMon() override;

    void activateScreen() override { Refresh_List(); }
    QString screenTitle() const override;

private:
    void Refresh_List();
    void openSheet(const QString &file);
    QString folder() const;

    std::unique_ptr<Ui::frmRepPestMon> ui_;
};
