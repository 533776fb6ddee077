// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/StartPage.h"

#include "platform/controls/Theme.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace mainmodule
{

namespace
{

/// Beyond it the buttons are too far from their texts.
constexpr int WidestSteps = 860;

struct StepTexts {
    StartStep step;
    const char *title;
    const char *button;
    const char *name;
    /// Nothing for a step that is no list.
    const char *goOn;
};

constexpr StepTexts Steps[] = {
    {StartStep::Databases, QT_TR_NOOP("Three empty databases for this office"), QT_TR_NOOP("&Begin a new office"), "cmdBegin",
     nullptr},
    {StartStep::Farms, QT_TR_NOOP("Farm: its name"), QT_TR_NOOP("Enter the far&m"), "cmdStepFarms", QT_TR_NOOP("&Go on: farm")},
    {StartStep::Blocks, QT_TR_NOOP("Blocks: paste them from a spreadsheet, or type them"), QT_TR_NOOP("Enter &blocks"),
     "cmdStepBlocks", QT_TR_NOOP("&Go on: blocks")},
    {StartStep::Crops, QT_TR_NOOP("Crops: tick common groups, types and varieties"), QT_TR_NOOP("&Choose crops"), "cmdStepCrops",
     QT_TR_NOOP("&Go on: crops")},
    {StartStep::Workers, QT_TR_NOOP("Workers: the nicknames of those who scout"), QT_TR_NOOP("Enter &workers"), "cmdStepWorkers",
     QT_TR_NOOP("&Go on: workers")},
    {StartStep::Pests, QT_TR_NOOP("Pests: tick those to watch for"), QT_TR_NOOP("C&hoose pests"), "cmdStepPests",
     QT_TR_NOOP("&Go on: pests")},
    {StartStep::Plantings, QT_TR_NOOP("Planted blocks, for soil, leaf and fruit analyses; they can wait"),
     QT_TR_NOOP("Enter planted bloc&ks"), "cmdStepPlantings", nullptr},
    {StartStep::Monitoring, QT_TR_NOOP("Issue the first instruction and print its field sheets"),
     QT_TR_NOOP("&Open pest monitoring"), "cmdStepMonitoring", nullptr},
};

const StepTexts &textsOf(StartStep step)
{
    for (const StepTexts &texts : Steps) {
        if (texts.step == step) {
            return texts;
        }
    }
    return Steps[0];
}

/// The list that a step fills; nothing for the first and the last.
std::optional<lists::List> listOf(StartStep step)
{
    switch (step) {
    case StartStep::Farms:
        return lists::List::Farms;
    case StartStep::Blocks:
        return lists::List::Blocks;
    case StartStep::Crops:
        return lists::List::Varieties;
    case StartStep::Plantings:
        return lists::List::Plantings;
    case StartStep::Workers:
        return lists::List::Workers;
    case StartStep::Pests:
        return lists::List::Pests;
    case StartStep::Databases:
    case StartStep::Monitoring:
        break;
    }
    return std::nullopt;
}

} // namespace

StartPage::StartPage(QWidget *parent) : QWidget(parent), lead_(new QLabel(this))
{
    setAttribute(Qt::WA_StyledBackground);
    auto *title = new QLabel(tr("Start"), this);
    title->setObjectName(QStringLiteral("screenTitle"));
    lead_->setObjectName(QStringLiteral("lblLead"));
    lead_->setWordWrap(true);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    auto *steps = new QWidget(this);
    steps->setMaximumWidth(WidestSteps);
    steps->setLayout(grid);
    grid->setContentsMargins({});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 12, 24, 16);
    layout->setSpacing(16);
    layout->addWidget(title);
    layout->addWidget(lead_);
    layout->addWidget(steps);
    layout->addStretch(1);
    int number = 0;
    for (const StepTexts &texts : Steps) {
        addRow(texts.step, texts.step == StartStep::Databases ? QString() : QString::number(++number));
        const Row &row = rows_.back();
        const int line = grid->rowCount();
        grid->addWidget(row.number, line, 0);
        grid->addWidget(row.title, line, 1);
        grid->addWidget(row.state, line, 2);
        grid->addWidget(row.button, line, 3);
    }
}

void StartPage::addRow(StartStep step, const QString &number)
{
    const StepTexts &texts = textsOf(step);
    Row row{step, new QLabel(number, this), new QLabel(tr(texts.title), this), new QLabel(this),
            new QPushButton(tr(texts.button), this)};
    row.title->setWordWrap(true);
    controls::Theme::setRole(*row.number, "value");
    controls::Theme::setRole(*row.state, "caption");
    row.button->setAutoDefault(true);
    row.button->setObjectName(QLatin1String(texts.name));
    connect(row.button, &QPushButton::clicked, this, [this, step] { Q_EMIT stepRequested(step); });
    rows_.push_back(row);
}

QString StartPage::goOnText(StartStep step)
{
    const char *text = textsOf(step).goOn;
    return text == nullptr ? QString() : tr(text);
}

QString StartPage::stateOf(StartStep step, const lists::FarmLists &lists) const
{
    const std::optional<lists::List> list = listOf(step);
    if (!list) {
        return {};
    }
    std::size_t count = lists.records(*list).size();
    if (step == StartStep::Crops) {
        count += lists.records(lists::List::CropGroups).size() + lists.records(lists::List::CropTypes).size();
    }
    return count == 0 ? tr("none yet") : tr("%1 entered").arg(count);
}

void StartPage::showProgress(const lists::FarmLists &lists, bool hasDatabases)
{
    next_.reset();
    for (const Row &row : rows_) {
        const std::optional<lists::List> list = listOf(row.step);
        const bool isOpen = row.step == StartStep::Databases ? !hasDatabases
            : list                                           ? hasDatabases && lists.records(*list).empty()
                                                             : hasDatabases;
        // Planted blocks can wait: the monitoring does not need them.
        if (!next_ && isOpen && row.step != StartStep::Plantings) {
            next_ = row.step;
        }
        const bool shows = row.step == StartStep::Databases ? !hasDatabases : true;
        for (QWidget *widget : {static_cast<QWidget *>(row.number), static_cast<QWidget *>(row.title),
                                static_cast<QWidget *>(row.state), static_cast<QWidget *>(row.button)}) {
            widget->setVisible(shows);
        }
        row.button->setEnabled(hasDatabases || row.step == StartStep::Databases);
        row.state->setText(hasDatabases ? stateOf(row.step, lists) : QString());
    }
    for (const Row &row : rows_) {
        controls::Theme::setRole(*row.button, row.step == next_ ? "first" : "");
    }
    lead_->setText(
        hasDatabases
            ? tr("A new office enters its lists in this order. Everything can be changed later, on the pages at the left.")
            : tr("There is no farm here yet. Begin a new office with empty lists, or bring in the suite's databases with "
                 "\"farmdata import\"."));
}

void StartPage::focusNextStep()
{
    for (const Row &row : rows_) {
        if (row.button->property("role") == QLatin1String("first")) {
            row.button->setFocus();
        }
    }
}

} // namespace mainmodule
