// SPDX-License-Identifier: GPL-3.0-or-later
#include "OfficeSimulation.h"

#include "analysis/AnalysisKinds.h"
#include "pestmon/CaptureCells.h"
#include "platform/basic/Clock.h"
#include "platform/chart/ChartView.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLineEdit>

#include <array>

using controls::FlexGrid;
using controls::ItemCombo;
namespace capture = pestmon::capture;

namespace
{

constexpr int BlockMark = 4;
constexpr int PestMark = 3;

struct AnalysisScreen {
    const char *menuPicture;
    QStringView mode;
    const char *table;
};
constexpr std::array<AnalysisScreen, 5> AnalysisScreens{{{"imLeave", u"Leaf", "tblLeaveAnalysis"},
                                                         {"imAsset", u"Fruit", "tblFruitAnalysis"},
                                                         {"imBas", u"Basic", "tblSoilBasic"},
                                                         {"imEx", u"Ex", "tblSoilExtraction"},
                                                         {"imMic", u"Micro", "tblSoilMicro"}}};

int keyInRow(const FlexGrid &grid, int row, int col)
{
    return grid.TextMatrix(row, col).toInt();
}

} // namespace

OfficeSimulation::OfficeSimulation(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher,
                                   OfficeModel &model, Timings &timings)
    : window_(window), dialogs_(dialogs), launcher_(launcher), model_(model), timings_(timings), driver_(window)
{
}

void OfficeSimulation::expect(bool holds, const QString &what)
{
    if (!holds) {
        faults_.append(what);
    }
}

void OfficeSimulation::startYear(int year)
{
    yearStart_ = QDate(year, 1, 1);
    basic::Clock::stopAt(QDateTime(yearStart_, QTime(8, 0)));
    model_.startYear();
    driver_.click("imSpray");
    auto &from = driver_.find<controls::DatePicker>("dtpDateFrom");
    from.setFocus();
    from.choose(yearStart_);
    // Leaving the field sets the date for all screens.
    driver_.find<FlexGrid>("grdGS").setFocus();
    driver_.click("Command1");
}

void OfficeSimulation::work(int n, QDate day)
{
    basic::Clock::stopAt(QDateTime(day, QTime(8, 0)));
    timings_.time(QStringLiteral("open the list"), [&] { driver_.click("imSpray"); });
    const std::optional<int> waiting = n % 2 == 1 ? model_.takeOpen() : std::nullopt;
    const int key = waiting ? *waiting : issue(n);
    if (waiting && n % 4 == 3) {
        editUnchanged(key);
    }
    capture(key);
    complete(key, day);
    driver_.click("Command1");
    if (n % 3 == 0) {
        addAnalysis(n);
    }
    if (n % 5 == 2) {
        drawGraph(n, day);
    }
    if (n % 10 == 3) {
        runReport();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

int OfficeSimulation::issue(int n)
{
    OfficeModel::Instruction wanted{.counts = n % 4 != 2, .repeats = n % 3 != 0};
    timings_.time(QStringLiteral("issue"), [&] {
        driver_.click("cmdAdd");
        driver_.choose("cmbPMethod", wanted.counts ? QStringLiteral("Count") : QStringLiteral("Yes/No"));
        driver_.choose("cmbPerson", QStringLiteral("Anna"));
        driver_.find<QLineEdit>("txtPMNotes").setFocus();
        driver_.type(QStringLiteral("Round %1").arg(n));
        if (!wanted.repeats) {
            driver_.click("chkRepeat");
        }
        const auto &blocks = driver_.find<FlexGrid>("grdBlockIn");
        const auto &pests = driver_.find<FlexGrid>("grdPestIn");
        for (const int row : {1 + n % 3, 4 + n % 3}) {
            driver_.clickCell("grdBlockIn", row, BlockMark);
            wanted.blocks.push_back(keyInRow(blocks, row, 0));
        }
        for (const int row : {1 + n % 2, 3 + n % 4, 7 + n % 3}) {
            driver_.clickCell("grdPestIn", row, PestMark);
            wanted.pests.push_back(keyInRow(pests, row, 1));
        }
        dialogs_.expectMessage();
        driver_.click("cmdTSave");
    });
    const int key = model_.issue(wanted);
    expect(window_.session().CurrentPMTransID == key, QStringLiteral("instruction %1 has another key").arg(key));
    if (n % 10 == 0) {
        const qsizetype before = launcher_.opened.size();
        dialogs_.queueAnswer(controls::Answer::Yes);
        timings_.time(QStringLiteral("field sheets"), [&] { driver_.click("cmdPALL"); });
        expect(launcher_.opened.size() == before + 1, QStringLiteral("no field sheets for instruction %1").arg(key));
    }
    driver_.click("cmdTCancel");
    return key;
}

void OfficeSimulation::selectRow(int key)
{
    const int row = driver_.findRow("grdGS", 0, QString::number(key));
    expect(row > 0, QStringLiteral("instruction %1 is not in the list").arg(key));
    driver_.clickCell("grdGS", std::max(1, row), 2);
}

void OfficeSimulation::editUnchanged(int key)
{
    selectRow(key);
    driver_.click("cmdEdit");
    model_.edited();
    driver_.click("cmdTCancel");
}

void OfficeSimulation::capture(int key)
{
    selectRow(key);
    timings_.time(QStringLiteral("open the capture"), [&] { driver_.click("cmdComp"); });
    auto &blocks = driver_.find<ItemCombo>("cmbBlock");
    expect(blocks.ListCount() == static_cast<int>(model_.instruction(key).blocks.size()),
           QStringLiteral("instruction %1 shows other blocks").arg(key));
    for (int index = 0; index < blocks.ListCount(); ++index) {
        timings_.time(QStringLiteral("choose a block"), [&] { driver_.choose("cmbBlock", blocks.List(index)); });
        captureBlock(key);
    }
}

int OfficeSimulation::points() const
{
    // The last row stays empty.
    return driver_.find<FlexGrid>("grdPest").Rows() - capture::FirstPointRow - 1;
}

void OfficeSimulation::captureBlock(int key)
{
    const OfficeModel::Instruction &instruction = model_.instruction(key);
    const auto &blocks = driver_.find<ItemCombo>("cmbBlock");
    const int block = blocks.ItemData(blocks.ListIndex());
    expect(points() == model_.points.at(block), QStringLiteral("instruction %1 shows other points").arg(key));
    const auto &grid = driver_.find<FlexGrid>("grdPest");
    int pest = 0;
    for (const int target : std::vector<int>(instruction.pests)) {
        ++pest;
        const int sum = instruction.counts ? typeCounts(pest) : toggleAnswers(pest);
        expect(keyInRow(grid, capture::TotalRow, capture::valueColumn(pest, 1)) == sum,
               QStringLiteral("instruction %1, pest %2 shows another total").arg(key).arg(target));
        model_.found(key, block, target, sum);
    }
}

int OfficeSimulation::typeCounts(int pest)
{
    auto &grid = driver_.find<FlexGrid>("grdPest");
    const int col = capture::valueColumn(pest, 1);
    grid.setFocus();
    grid.setCell(capture::FirstPointRow, col);
    int sum = 0;
    for (int point = 1; point <= points(); ++point) {
        const int count = (point * (pest + 2) + window_.session().CurrentPMTransID) % 23;
        timings_.time(QStringLiteral("leave a cell"), [&] {
            driver_.type(QString::number(count));
            driver_.key(Qt::Key_Down);
        });
        sum += count;
    }
    return sum;
}

int OfficeSimulation::toggleAnswers(int pest)
{
    int sum = 0;
    for (int point = 1 + pest % 2; point <= points(); point += 2) {
        timings_.time(QStringLiteral("answer a cell"),
                      [&] { driver_.clickCell("grdPest", capture::FirstPointRow + point - 1, capture::valueColumn(pest, 1)); });
        ++sum;
    }
    return sum;
}

void OfficeSimulation::complete(int key, QDate day)
{
    timings_.time(QStringLiteral("complete and repeat"), [&] {
        driver_.click("cmdSaveTrans");
        driver_.click("Command4");
    });
    model_.complete(key, day);
    expect(driver_.findRow("grdGS", 0, QString::number(key)) < 0,
           QStringLiteral("instruction %1 stays among the open ones").arg(key));
}

void OfficeSimulation::addAnalysis(int n)
{
    const AnalysisScreen &screen = AnalysisScreens[static_cast<std::size_t>(n / 3) % AnalysisScreens.size()];
    const AnalysisKind &kind = *analysisKind(screen.mode);
    driver_.click(screen.menuPicture);
    const auto &list = driver_.find<FlexGrid>("grdLeave");
    const int before = list.Rows();
    timings_.time(QStringLiteral("add an analysis"), [&] {
        driver_.click("Command7");
        driver_.key(Qt::Key_Tab);
        if (kind.secondEntry != AnalysisSecondEntry::None) {
            kind.secondEntry == AnalysisSecondEntry::Depth ? driver_.type(QStringLiteral("30")) : driver_.key(Qt::Key_Down);
            driver_.key(Qt::Key_Tab);
        }
        const int entries = kind.seasons.empty() ? 1 : 2;
        for (int entry = 0; entry < entries; ++entry) {
            driver_.key(Qt::Key_Down);
            driver_.key(Qt::Key_Tab);
        }
        for (std::size_t box = 0; box < kind.values.size(); ++box) {
            // Quarters are whole in a 32-bit number.
            const double value = n + static_cast<double>(box) + 0.25;
            driver_.type(QString::number(value));
            driver_.key(Qt::Key_Return);
            // The Tab that replaces Enter is queued.
            QCoreApplication::processEvents();
            model_.analysis(QLatin1String(screen.table), kind.values[box].field.toString(), value);
        }
        driver_.key(Qt::Key_Return);
    });
    expect(list.Rows() == before + 1, QStringLiteral("analysis %1 is not in the list").arg(n));
    driver_.click("cmdClose");
}

void OfficeSimulation::runReport()
{
    driver_.click("ImPM");
    driver_.click("cmdSAllP");
    driver_.click("cmdSAll");
    const qsizetype before = launcher_.opened.size();
    timings_.time(QStringLiteral("records report"), [&] { driver_.click("cmdExcel"); });
    expect(launcher_.opened.size() == before + 1 && QFileInfo(launcher_.opened.back()).size() > 0,
           QStringLiteral("a report is missing"));
    driver_.click("cmdTCancel");
}

void OfficeSimulation::drawGraph(int n, QDate day)
{
    driver_.click("imGG");
    driver_.click("OptW_1");
    auto &blocks = driver_.find<ItemCombo>("cmbBCount");
    // Early in the year nothing may be counted yet.
    if (blocks.ListCount() > 0) {
        driver_.choose("cmbBCount", blocks.List(n % blocks.ListCount()));
        auto &kinds = driver_.find<ItemCombo>("cbo_6");
        kinds.setListIndex(n % kinds.ListCount());
        auto &view = driver_.find<chart::ChartView>("chGraph");
        timings_.time(QStringLiteral("draw a graph"), [&] {
            driver_.click("cmd_0");
            static_cast<void>(view.grab());
        });
        const int block = blocks.ItemData(blocks.ListIndex());
        const chart::DataTable &table = view.model().ChartData();
        for (int series = 1; series <= table.columns(); ++series) {
            const auto &pests = driver_.find<ItemCombo>(qPrintable(QStringLiteral("cbo%1").arg(series - 1)));
            const int expected = model_.counted(block, pests.ItemData(pests.ListIndex()), yearStart_, day);
            expect(static_cast<int>(table.columnSum(series).value_or(0.0)) == expected,
                   QStringLiteral("the graph of work %1 shows another sum of %2").arg(n).arg(pests.Text()));
        }
    }
    driver_.click("cmd_1");
}
