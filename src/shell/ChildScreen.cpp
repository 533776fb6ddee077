// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ChildScreen.h"

ChildScreen::ChildScreen(ScreenHost &host, QWidget *parent) : QWidget(parent), host_(host)
{
    setAttribute(Qt::WA_StyledBackground);
}
