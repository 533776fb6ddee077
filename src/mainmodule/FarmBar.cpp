// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/FarmBar.h"

#include "common/HandOffFiles.h"
#include "platform/controls/ItemCombo.h"

#include <algorithm>

namespace mainmodule
{

namespace
{

using Names = std::vector<std::pair<QString, std::int32_t>>;

/// The rows of a list, names with keys, by name.
Names namesOf(const lists::FarmLists &lists, lists::List list)
{
    const int active = lists::tableOf(list).activeColumn;
    Names names;
    for (const lists::Record &record : lists.records(list)) {
        if (active < 0 || record.cell(active) == u"1") {
            names.emplace_back(lists.name(list, record), record.key);
        }
    }
    std::sort(names.begin(), names.end(),
              [](const auto &one, const auto &other) { return one.first.compare(other.first, Qt::CaseInsensitive) < 0; });
    return names;
}

void fillCombo(controls::ItemCombo &combo, const Names &names, const QString &chosen)
{
    combo.Clear();
    for (const auto &[name, key] : names) {
        combo.AddItem(name, key);
    }
    combo.setText(chosen);
}

} // namespace

FarmBar::FarmBar(controls::ItemCombo &farms, controls::ItemCombo &seasons, SessionContext &session, QObject *parent)
    : QObject(parent), farms_(farms), seasons_(seasons), session_(session)
{
    farms_.setTypingAllowed(false);
    seasons_.setTypingAllowed(false);
    connect(&farms_, &controls::ItemCombo::Click, this, &FarmBar::farmChosen);
    connect(&seasons_, &controls::ItemCombo::Click, this, &FarmBar::seasonChosen);
}

void FarmBar::fill(const lists::FarmLists &lists)
{
    const Names farms = namesOf(lists, lists::List::Farms);
    const auto isChosen = [this](const auto &farm) { return farm.second == session_.CurrentFarmID; };
    const auto found = std::find_if(farms.begin(), farms.end(), isChosen);
    const auto farm = found == farms.end() ? farms.begin() : found;
    session_.CurrentFarmID = farm == farms.end() ? 0 : farm->second;
    session_.CurrentFarm = farm == farms.end() ? QString() : farm->first;
    fillCombo(farms_, farms, session_.CurrentFarm);

    const Names seasons = namesOf(lists, lists::List::Seasons);
    const auto isSeason = [this](const auto &season) { return season.first == session_.CurrentYear; };
    if (std::none_of(seasons.begin(), seasons.end(), isSeason)) {
        session_.CurrentYear = seasons.empty() ? QString() : seasons.back().first;
    }
    fillCombo(seasons_, seasons, session_.CurrentYear);
}

void FarmBar::farmChosen()
{
    session_.CurrentFarmID = farms_.ItemData(farms_.ListIndex());
    session_.CurrentFarm = farms_.Text();
    Q_EMIT chosen();
}

void FarmBar::seasonChosen()
{
    session_.CurrentYear = seasons_.Text();
    Q_EMIT chosen();
}

/// A season's key is the year that it begins with; the databases have no other.
void FarmBar::writeHandOff()
{
    session_.CurrentYearID = seasonKey(session_.CurrentYear);
    Write_HandOff(session_);
}

} // namespace mainmodule
