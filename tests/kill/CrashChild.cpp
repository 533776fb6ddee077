// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashChild.h"

#include "Import.h"
#include "pestmon/CaptureCells.h"
#include "pestmon/frmPestMon2.h"
#include "platform/basic/Permissions.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/Engine.h"
#include "platform/excel/Application.h"
#include "store/Connection.h"
#include "store/DailyBackup.h"
#include "store/Upgrades.h"
#include "support/DiskCalls.h"
#include "support/FakeScreenHost.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QHash>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <random>

namespace capture = pestmon::capture;

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

/// Says what is written and ends the process in the midst of it.
class Reporter
{
public:
    Reporter(const Orders &orders, std::mt19937 &random) : orders_(orders), random_(random) {}

    void send(const QString &line) const
    {
        const QByteArray bytes = line.toUtf8() + '\n';
        if (::write(orders_.reports, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size()) {
            throw Surprise(QStringLiteral("the report pipe is closed"));
        }
    }
    void begin(const QString &what)
    {
        send(QStringLiteral("begin ") + what);
        kind_ = what.section(u' ', 0, 0);
        int call = NeverReached;
        if (++writes_ >= orders_.lastWrite && orders_.lastWrite > 0) {
            call = 1 + static_cast<int>(random_() % static_cast<unsigned int>(calls_.value(kind_, UsualCalls)));
        }
        diskCalls::failAt(call, random_() % 2 == 0 ? diskCalls::Effect::Kill : diskCalls::Effect::KillHalfway);
    }
    void end(const QString &result = {})
    {
        calls_[kind_] = std::max(1, diskCalls::calls());
        diskCalls::failAt(0, diskCalls::Effect::Kill);
        send(result.isEmpty() ? QStringLiteral("end") : QStringLiteral("end ") + result);
    }

private:
    static constexpr int NeverReached = std::numeric_limits<int>::max();
    static constexpr int UsualCalls = 25;

    const Orders &orders_;
    std::mt19937 &random_;
    int writes_ = 0;
    QString kind_;
    /// Of the last write of a kind.
    QHash<QString, int> calls_;
};

SessionContext &started(SessionContext &session, const Orders &orders, Reporter &reporter)
{
    diskCalls::watch(orders.appPath);
    session.AppPath = orders.appPath;
    session.DatabasePath = orders.appPath + QStringLiteral("/Databases/");
    openDatabases(session);
    if (orders.withoutJournal && !session.dbPest->isMirrored()) {
        session.dbPest->state().engine->connection().execute("PRAGMA journal_mode=MEMORY");
    }
    store::Ensure_TempBlockTable(session, [](const basic::RunTimeError &error) { throw Surprise(error.description()); });
    store::Ensure_PMRepeatField(session);
    store::Ensure_Indexes(session);
    reporter.begin(QStringLiteral("blocks"));
    store::Update_TempBlock(session);
    reporter.end();
    store::Recalc_PMTransWeek(session);
    return session;
}

class ScreenDriver
{
public:
    explicit ScreenDriver(const Orders &orders)
        : orders_(orders), random_(orders.seed), reporter_(orders_, random_), host_(started(session_, orders_, reporter_)),
          screen_(host_)
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
        reporter_.send(QStringLiteral("ready"));
        for (int round = 0;; ++round) {
            switch (below(4)) {
            case 0:
                analyse();
                break;
            case 1:
                saveWorkbook();
                break;
            case 2:
                import(round);
                break;
            default:
                break;
            }
            const int key = issue();
            if (below(2) == 0) {
                saveAgain(key);
                remove(key);
                continue;
            }
            click("cmdTCancel");
            openForCapture(key);
            for (int i = 2 + below(4); i > 0; --i) {
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

    /// Says what is about to be written, lets the program do it, and reports it once the program has said that it is done.
    void report(const QString &what, const char *button, const QString &answer)
    {
        reporter_.begin(what);
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
        reporter_.end(QString::number(session_.CurrentPMTransID));
        return session_.CurrentPMTransID;
    }

    void saveAgain(int key)
    {
        host_.dialogs().expectMessage();
        report(QStringLiteral("resave %1").arg(key), "cmdTSave", {});
        reporter_.end();
        click("cmdTCancel");
    }

    void remove(int key)
    {
        select(key);
        host_.status.clear();
        report(QStringLiteral("delete %1").arg(key), "cmdPdel", QStringLiteral("deleted"));
        reporter_.end();
    }

    void select(int key)
    {
        click("chkAll");
        auto &list = find<FlexGrid>("grdGS");
        for (int row = 1; row < list.Rows(); ++row) {
            if (list.TextMatrix(row, KeyColumn) == QString::number(key)) {
                clickCell("grdGS", row, AnyListColumn);
                return;
            }
        }
        throw Surprise(QStringLiteral("the instruction is not in the list"));
    }

    void openForCapture(int key)
    {
        select(key);
        click("cmdComp");
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
        reporter_.begin(QStringLiteral("cell %1 %2").arg(grid.TextMatrix(row, capture::keyColumn(pest)), value));
        QTest::keyClick(&box, Qt::Key_Return);
        expectStatus(QStringLiteral("= %1 saved").arg(value));
        reporter_.end();
    }

    void complete(int key)
    {
        host_.status.clear();
        report(QStringLiteral("complete %1").arg(key), "cmdSaveTrans", QStringLiteral("repeated instruction issued"));
        reporter_.end();
        click("Command4");
    }

    /// An analysis with one number in all of its fields; the one before it goes.
    void analyse()
    {
        clsPestMONNew &store = host_.objPestMON();
        const int number = 1 + below(30000);
        clsPestMONNew::Key key = 0;
        store::AnalysisOperations::PlantValues values;
        values.fill(static_cast<float>(number));
        const auto expectDone = [&](clsPestMONNew::Status status) {
            if (status != clsPestMONNew::Done) {
                throw Surprise(store.lastError()->description());
            }
        };
        reporter_.begin(QStringLiteral("analysis %1").arg(number));
        expectDone(store.Add_Leave_Analysis(key, 1, basic::SerialDate::fromDate(QDate(2026, 5, 4)), QStringLiteral("Blaar"),
                                            QString::number(number), values));
        reporter_.end(QString::number(key));
        if (lastAnalysis_ != 0) {
            reporter_.begin(QStringLiteral("noanalysis %1").arg(lastAnalysis_));
            expectDone(store.Delete_Leave_Analysis(lastAnalysis_));
            reporter_.end();
        }
        lastAnalysis_ = key;
    }

    void saveWorkbook()
    {
        const QString path = orders_.appPath + Workbook;
        basic::makeFolder(QFileInfo(path).path());
        excel::Application application;
        excel::Workbook book = application.Workbooks().Add();
        const QString number = QString::number(1 + below(30000));
        book.Worksheets(1).Range("A1", "H200").setValue(number);
        application.setDisplayAlerts(false);
        reporter_.begin(QStringLiteral("workbook ") + number);
        book.SaveAs(path, excel::xlExcel8);
        reporter_.end();
    }

    void import(int round)
    {
        const QString folder = orders_.appPath + QStringLiteral("/Imported-%1-%2").arg(orders_.seed).arg(round);
        reporter_.begin(QStringLiteral("import ") + folder);
        importFarm(orders_.jetFolder, folder);
        reporter_.end();
    }

    Orders orders_;
    std::mt19937 random_;
    Reporter reporter_;
    SessionContext session_;
    clsPestMONNew::Key lastAnalysis_ = 0;
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
