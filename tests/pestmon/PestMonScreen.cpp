// SPDX-License-Identifier: GPL-3.0-or-later
#include "PestMonScreen.h"

int PestMonScreen::issue(const QString &method, std::initializer_list<int> blockRows, std::initializer_list<int> pestRows,
                         bool repeat)
{
    click("cmdAdd");
    choose("cmbPMethod", method);
    choose("cmbPerson", QStringLiteral("Anna"));
    find<QCheckBox>("chkRepeat").setChecked(repeat);
    for (const int row : blockRows) {
        clickCell("grdBlockIn", row, BlockMark);
    }
    for (const int row : pestRows) {
        clickCell("grdPestIn", row, PestMark);
    }
    expectMessage();
    click("cmdTSave");
    const int key = farm_->session.CurrentPMTransID;
    click("cmdTCancel");
    return key;
}

void PestMonScreen::select(int key)
{
    click("chkAll");
    FlexGrid &list = grid("grdGS");
    for (int row = 1; row < list.Rows(); ++row) {
        if (list.TextMatrix(row, 0) == QString::number(key)) {
            clickCell("grdGS", row, 7);
            return;
        }
    }
    QFAIL("the instruction is not in the list");
}

void PestMonScreen::capture(int key, const QString &block)
{
    select(key);
    click("cmdComp");
    choose("cmbBlock", block);
    QVERIFY(grid("grdPest").isVisible());
}

void PestMonScreen::typeInto(int row, int col, const QString &text)
{
    clickCell("grdPest", row, col);
    auto &box = find<QLineEdit>("txtG1");
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}
