// SPDX-License-Identifier: GPL-3.0-or-later
#include "DemoFarm.h"

#include "DemoCatalogue.h"
#include "DemoRounds.h"

#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"
#include "store/Upgrades.h"
#include "store/clsPestMONNew.h"

#include <array>
#include <cmath>

namespace
{

/// Usual laboratory values; each sample deviates by up to a fifth.
constexpr clsPestMONNew::PlantValues LeaveUsual{2.3F, 0.14F, 1.1F, 3.8F, 0.35F, 0.04F, 55.0F, 120.0F, 9.0F, 32.0F, 85.0F};
constexpr clsPestMONNew::PlantValues FruitUsual{0.9F, 0.11F, 1.6F, 0.42F, 0.09F, 0.02F, 8.0F, 31.0F, 4.0F, 9.0F, 22.0F};
constexpr std::array<float, 7> SoilBasicUsual{30.0F, 6.4F, 5.6F, 28.0F, 7.5F, 14.0F, 1.2F};
constexpr std::array<float, 6> SoilMicroUsual{4.2F, 2.8F, 0.6F, 38.0F, 61.0F, 0.12F};
constexpr std::array<float, 11> SoilExtractionUsual{30.0F, 32.0F, 27.0F, 118.0F, 640.0F, 14.0F, 95.0F, 21.0F, 11.0F, 3.0F, 41.0F};

template <std::size_t Size> std::array<float, Size> sample(const std::array<float, Size> &usual, Dice &dice)
{
    std::array<float, Size> values = usual;
    for (float &value : values) {
        value = static_cast<float>(std::round(static_cast<double>(value) * (0.8 + 0.4 * dice.unit()) * 100.0) / 100.0);
    }
    return values;
}

void writeAnalyses(const DemoCatalogue &catalogue, SessionContext &session)
{
    constexpr int EveryOtherPlanting = 2;
    dao::CommitScope scope(*session.dbPest);
    clsPestMONNew store(session);
    Dice dice(19);
    const auto check = [&](clsPestMONNew::Status status) {
        if (status != clsPestMONNew::Done) {
            throw basic::RunTimeError(*store.lastError());
        }
    };
    const QDate today = basic::Clock::today();
    for (const DemoPlanting &planting : catalogue.plantings) {
        if (planting.key % EveryOtherPlanting != 0) {
            continue;
        }
        for (int yearsAgo = 2; yearsAgo >= 0; --yearsAgo) {
            const QDate day = QDate(today.year() - yearsAgo, 4, 1 + planting.key % 28);
            if (day > today) {
                continue;
            }
            const basic::SerialDate date = basic::SerialDate::fromDate(day);
            std::int32_t key = 0;
            check(store.Add_Leave_Analysis(key, planting.key, date, "Stem", "Post Harvest", sample(LeaveUsual, dice)));
            check(store.Add_Fruit_Analysis(key, planting.key, date, planting.key % 4 == 0 ? "Skin" : "Meat", "Nov-Dec",
                                           sample(FruitUsual, dice)));
            key = 0;
            check(store.Save_Soil_Analysis_Basic(key, planting.key, date, sample(SoilBasicUsual, dice),
                                                 planting.key % 4 == 0 ? "Coarse" : "Fine"));
            key = 0;
            check(store.Save_Soil_Analysis_Micro(key, planting.key, date, sample(SoilMicroUsual, dice)));
            key = 0;
            check(store.Save_Soil_Analysis_Extraction(key, planting.key, date, sample(SoilExtractionUsual, dice)));
        }
    }
    scope.commit();
}

} // namespace

void fillDemoFarm(const QString &databasesFolder)
{
    SessionContext session;
    const auto open = [&](dao::DatabaseHandle &handle, store::DatabaseFile file) {
        handle.set(
            dao::Workspace::OpenDatabase(databasesFolder + u'/' + store::fileName(file), false, false, store::connectText()));
    };
    open(session.dbMain, store::DatabaseFile::Main);
    open(session.dbPest, store::DatabaseFile::Pest);
    open(session.dbSpray, store::DatabaseFile::Spray);
    const DemoCatalogue catalogue = demoCatalogue();
    writeDemoCatalogue(catalogue, session);
    writeDemoRounds(catalogue, session);
    writeAnalyses(catalogue, session);
    store::Update_TempBlock(session);
}
