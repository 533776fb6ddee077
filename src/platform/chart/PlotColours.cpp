// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/PlotColours.h"

namespace chart
{

PlotColours PlotColours::light()
{
    return {QColor(0xFFFFFF), QColor(0x1B211A),
            QColor(0x545E50), QColor(0xD3D9CC),
            QColor(0x7F8A78), {QColor(0x2E7237), QColor(0xC2640F), QColor(0x2B6CB0), QColor(0x7A4FA0), QColor(0xB3364A)}};
}

PlotColours PlotColours::dark()
{
    return {QColor(0x21261F), QColor(0xE7ECE3),
            QColor(0xA9B4A3), QColor(0x3A4237),
            QColor(0x7D8977), {QColor(0x7CC482), QColor(0xF0A45A), QColor(0x7DB2EE), QColor(0xC0A0E6), QColor(0xF08A98)}};
}

PlotColours PlotColours::paper()
{
    PlotColours colours = light();
    colours.series = {QColor(0x235C2C), QColor(0xF3B073), QColor(0x3A75AE), QColor(0xCDB6E8), QColor(0x7A1227)};
    colours.forPaper = true;
    return colours;
}

} // namespace chart
