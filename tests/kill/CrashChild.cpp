// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashChild.h"

#include "Import.h"
#include "pestmon/CaptureCells.h"
#include "pestmon/frmPestMon2.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "store/Connection.h"
#include "store/DailyBackup.h"
#include "store/Upgrades.h"
#include "support/FakeScreenHost.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <unistd.h>

namespace capture = pestmon::capture;
#include <algorithm>
#include <iostream>
#include <random>

namespace crashChild
{

namespace
{

using controls::FlexGrid;
using controls::ItemCombo;

constexpr int BlockMark = 4;
constexpr int PestMark = 3;
constexpr int KeyColumn = 0;
constexpr int AnyListColumn = 7;

/// An answer of the program that is not the one expected.
class Surprise : public std::runtime_error
{
public:
    explicit Surprise(const QString &what) : std::runtime_error(what.toStdString()) {}
};

SessionContext &started(SessionContext &session, const QString &appPath)
{
    session.AppPath = appPath;
    session.DatabasePath = appPath + QStringLiteral("/Databases/");
    openDatabases(session);
    store::Ensure_TempBlockTable(session, [](const basic::RunTimeError &error) { throw Surprise(error.description()); });
    store::Ensure_PMRepeatField(session);
    store::Ensure_Indexes(session);
    store::Update_TempBlock(session);
    store::Recalc_PMTransWeek(session);
    return session;
}

class ScreenDriver
{
public:
    explicit ScreenDriver(const Orders &orders)
        : orders_(orders), random_(orders.seed), host_(started(session_, orders.appPath)), screen_(host_)
    {
        screen_.resize(1366, 700);
        screen_.show();
        screen_.activateWindow();
        if (!QTest::qWaitForWindowActive(&screen_)) {
            throw Surprise(QStringLiteral("no active window"));
        }
        screen_.activateScreen();
        host_.objPestMON().setBeforeFirstWriteOfDay([this] { backup_.startForToday(); });
        backup_.startForToday();
    }

    [[noreturn]] void work()
    {
        send(QStringLiteral("ready"));
        for (int round = 0;; ++round) {
            if (round % 4 == 3) {
                import(round);
            }
            const int key = issue();
            openForCapture(key);
            for (int i = 3 + below(6); i > 0; --i) {
                captureACell();
            }
            complete(key);
        }
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    template <typename Control> Control &find(const char *name) { return *screen_.findChild<Control *>(QLatin1String(name)); }
    void click(const char *name) { find<QAbstractButton>(name).click(); }
    void clickCell(const char *name, int row, int col)
    {
        auto &grid = find<FlexGrid>(name);
        grid.showCell(row, col);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.cellRect(row, col).center());
    }
    void choose(const char *name, const QString &text)
    {
        auto &combo = find<ItemCombo>(name);
        combo.setListIndex(combo.findText(text));
    }

    void send(const QString &line) const
    {
        const QByteArray bytes = line.toUtf8() + '\n';
        if (::write(orders_.reports, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size()) {
            throw Surprise(QStringLiteral("the report pipe is closed"));
        }
    }
    /// Says what is about to be written, lets the program do it, and reports it once the program has said that it is done.
    void report(const QString &what, const char *button, const QString &answer)
    {
        send(QStringLiteral("begin ") + what);
        click(button);
        expectStatus(answer);
    }
    void expectStatus(const QString &answer)
    {
        if (!host_.failure.isEmpty() || !host_.errors.isEmpty() || !host_.status.contains(answer)) {
            throw Surprise(answer + QStringLiteral(": ") + host_.failure + host_.errors.join(u' ') + host_.status);
        }
    }

    int issue()
    {
        click("cmdAdd");
        choose("cmbPMethod", QStringLiteral("Count"));
        choose("cmbPerson", Worker);
        find<QCheckBox>("chkRepeat").setChecked(true);
        for (int row = 1; row <= static_cast<int>(std::size(PointsOfBlock)); ++row) {
            clickCell("grdBlockIn", row, BlockMark);
        }
        for (int row = 1; row <= Pests; ++row) {
            clickCell("grdPestIn", row, PestMark);
        }
        host_.dialogs().expectMessage();
        report(QStringLiteral("save"), "cmdTSave", {});
        send(QStringLiteral("end %1").arg(session_.CurrentPMTransID));
        const int key = session_.CurrentPMTransID;
        click("cmdTCancel");
        return key;
    }

    void openForCapture(int key)
    {
        click("chkAll");
        auto &list = find<FlexGrid>("grdGS");
        for (int row = 1; row < list.Rows(); ++row) {
            if (list.TextMatrix(row, KeyColumn) == QString::number(key)) {
                clickCell("grdGS", row, AnyListColumn);
                click("cmdComp");
                return;
            }
        }
        throw Surprise(QStringLiteral("the instruction is not in the list"));
    }

    void captureACell()
    {
        find<ItemCombo>("cmbBlock").setListIndex(below(static_cast<int>(std::size(PointsOfBlock))));
        auto &grid = find<FlexGrid>("grdPest");
        const int pest = 1 + below(Pests);
        // The last row of the grid is always empty.
        const int row = capture::FirstPointRow + below(grid.Rows() - 1 - capture::FirstPointRow);
        const QString value = QString::number(1 + below(200));
        clickCell("grdPest", row, capture::valueColumn(pest, 1));
        auto &box = find<QLineEdit>("txtG1");
        QTest::keyClicks(&box, value);
        host_.status.clear();
        send(QStringLiteral("begin cell %1 %2").arg(grid.TextMatrix(row, capture::keyColumn(pest)), value));
        QTest::keyClick(&box, Qt::Key_Return);
        expectStatus(QStringLiteral("= %1 saved").arg(value));
        send(QStringLiteral("end"));
    }

    void complete(int key)
    {
        host_.status.clear();
        report(QStringLiteral("complete %1").arg(key), "cmdSaveTrans", QStringLiteral("repeated instruction issued"));
        send(QStringLiteral("end"));
        click("Command4");
    }

    void import(int round)
    {
        const QString folder = orders_.appPath + QStringLiteral("/Imported-%1-%2").arg(orders_.seed).arg(round);
        send(QStringLiteral("begin import ") + folder);
        importFarm(orders_.jetFolder, folder);
        send(QStringLiteral("end"));
    }

    Orders orders_;
    std::mt19937 random_;
    SessionContext session_;
    FakeScreenHost host_;
    store::DailyBackup backup_{session_};
    frmPestMon2 screen_;
};

} // namespace

int workUntilKilled(const Orders &orders)
{
    try {
        ScreenDriver driver(orders);
        driver.work();
    } catch (const basic::RunTimeError &error) {
        std::cerr << "error " << error.number() << ": " << error.description().toStdString() << '\n';
    } catch (const Surprise &surprise) {
        std::cerr << "unexpected: " << surprise.what() << '\n';
    }
    return 1;
}

} // namespace crashChild
