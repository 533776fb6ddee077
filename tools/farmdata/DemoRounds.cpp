// SPDX-License-Identifier: GPL-3.0-or-later
#include "DemoRounds.h"

#include "Progress.h"

#include "common/MonitoringConstants.h"
#include "common/WeekNumber.h"
#include "platform/basic/Clock.h"
#include "platform/dao/CommitScope.h"
#include "store/clsPestMONNew.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

using basic::SerialDate;

namespace
{

using enum DemoType;

constexpr int Weeks = 104;
constexpr int WeeksOfYear = 52;

/// A round that is repeated at a fixed interval.
struct Round {
    int farm;
    std::vector<DemoType> types;
    QString kinds;
    int method;
    int everyWeeks;
    int dayOfWeek;
    QString person;
    QString note;
    std::size_t maxBlocks;
    std::size_t maxTargets;
};

const std::vector<Round> &rounds()
{
    static const std::vector<Round> all{
        {1, {Orange, Lemon, Grapefruit, SoftCitrus}, "P", CountMethod, 1, 0, "Thandi", "Citrus, weekly", 6, 8},
        {2, {Avocado, Macadamia}, "P", CountMethod, 1, 1, "D'Arcy", "Nuts & avocados: ½ hour a block", 6, 7},
        {1, {Orange, Grapefruit, SoftCitrus}, "D", YesNoMethod, 2, 2, "Sipho", "Leaf and fruit diseases", 5, 6},
        {2, {Avocado, Litchi, Macadamia}, "D", YesNoMethod, 2, 3, "Anél", "NA", 5, 6},
        {1, {Orange, Litchi}, "WO", YesNoMethod, 4, 4, "José", "Weeds and damage – before slashing", 4, 9},
    };
    return all;
}

template <typename Item, typename Match> std::vector<Item> firstOf(const std::vector<Item> &all, std::size_t limit, Match match)
{
    std::vector<Item> chosen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(chosen), match);
    chosen.resize(std::min(chosen.size(), limit));
    return chosen;
}

int pointsOf(const DemoBlock &block)
{
    return block.points == 0 ? DefaultPoints : block.points;
}

/// Mean count at a point of the block in the week of the date.
double expectation(const DemoTarget &target, const DemoBlock &block, QDate date)
{
    const int distance = std::abs((date.dayOfYear() - 1) / 7 + 1 - target.peakWeek);
    const int weeks = std::min(distance, WeeksOfYear - distance);
    const double course = std::exp(-std::pow(static_cast<double>(weeks) / target.spreadWeeks, 2.0));
    const double ofBlock = 0.5 + static_cast<double>((block.key * 7 + target.key * 13) % 11) / 10.0;
    const double ofYear = date.year() % 2 == 0 ? 1.15 : 0.9;
    return target.level * course * ofBlock * ofYear;
}

clsPestMONNew::PointValues found(int method, double mean, Dice &dice)
{
    clsPestMONNew::PointValues values;
    if (method == CountMethod) {
        values.PMCount = static_cast<std::int16_t>(std::lround(mean * 2.0 * dice.unit()));
        values.PMCountUnder = static_cast<std::int16_t>(dice.below(values.PMCount + 1));
        values.PMCountUpper = static_cast<std::int16_t>(values.PMCount - values.PMCountUnder);
    } else {
        values.PMYes = dice.unit() < mean;
        values.PMYesUnder = values.PMYes && dice.unit() < 0.5;
        values.PMYesUpper = values.PMYes && !values.PMYesUnder;
    }
    return values;
}

void add(clsPestMONNew::TotalValues &totals, const clsPestMONNew::PointValues &values)
{
    const auto sum = [](std::int16_t &total, int value) { total = static_cast<std::int16_t>(total + value); };
    sum(totals.PMCountMax, values.PMCount);
    sum(totals.PMCountUnderMax, values.PMCountUnder);
    sum(totals.PMCountUpperMax, values.PMCountUpper);
    sum(totals.PMYesMax, values.PMYes ? 1 : 0);
    sum(totals.PMYesUnderMax, values.PMYesUnder ? 1 : 0);
    sum(totals.PMYesUpperMax, values.PMYesUpper ? 1 : 0);
}

/// Writes rounds through the data class and stops at the first row that cannot be written.
class RoundWriter
{
public:
    RoundWriter(const DemoCatalogue &catalogue, SessionContext &session) : catalogue_(catalogue), store_(session) {}

    void write(const Round &round, QDate issued, std::optional<QDate> completed)
    {
        const std::vector<DemoBlock> blocks = firstOf(catalogue_.blocks, round.maxBlocks, [&](const DemoBlock &block) {
            return block.farm == round.farm && block.active
                && std::find(round.types.begin(), round.types.end(), block.type) != round.types.end();
        });
        const std::vector<DemoTarget> targets = firstOf(catalogue_.targets, round.maxTargets, [&](const DemoTarget &target) {
            return round.kinds.contains(target.kind)
                && std::find_first_of(target.types.begin(), target.types.end(), round.types.begin(), round.types.end())
                != target.types.end();
        });
        const std::int32_t instruction = writeInstruction(round, issued, completed);
        for (const DemoBlock &block : blocks) {
            check(store_.New_Add_Block_for_Transaction(instruction, block.key, static_cast<std::int16_t>(pointsOf(block))));
            writeBlock(instruction, block, targets, round.method, completed);
        }
        for (const DemoTarget &target : targets) {
            check(store_.Add_Pest_for_Trans(instruction, target.key));
        }
    }

private:
    void check(clsPestMONNew::Status status) const
    {
        if (status != clsPestMONNew::Done) {
            throw basic::RunTimeError(*store_.lastError());
        }
    }

    std::int32_t writeInstruction(const Round &round, QDate issued, std::optional<QDate> completed)
    {
        constexpr bool Repeat = true;
        std::int32_t key = 0;
        const SerialDate date = SerialDate::fromDate(issued);
        check(store_.New_Add_PMTrans(key, round.method, date, round.note, round.person, weekNumber(issued), Repeat));
        if (completed) {
            check(store_.New_Save_PMTrans(key, round.method, date, round.note, round.person, weekNumber(*completed),
                                          SerialDate::fromDate(*completed), true, Repeat));
        }
        return key;
    }

    /// A row per point and target, and as many total rows, of which the first of each target holds the sums.
    void writeBlock(std::int32_t instruction, const DemoBlock &block, const std::vector<DemoTarget> &targets, int method,
                    std::optional<QDate> completed)
    {
        std::map<int, clsPestMONNew::TotalValues> totals;
        for (int point = 1; point <= pointsOf(block); ++point) {
            for (const DemoTarget &target : targets) {
                clsPestMONNew::PointValues values;
                if (completed) {
                    values = found(method, expectation(target, block, *completed), dice_);
                }
                add(totals[target.key], values);
                check(store_.New_Add_PestData(instruction, block.key, target.key, static_cast<std::int16_t>(point), values));
            }
        }
        for (int point = 1; point <= pointsOf(block); ++point) {
            for (const DemoTarget &target : targets) {
                check(store_.New_Add_PestDataMax(instruction, target.key, block.key,
                                                 point == 1 ? totals[target.key] : clsPestMONNew::TotalValues{}));
            }
        }
    }

    const DemoCatalogue &catalogue_;
    clsPestMONNew store_;
    Dice dice_{20260801};
};

bool isChristmasWeek(QDate monday)
{
    const QDate christmas(monday.addDays(6).year(), 12, 25);
    return christmas >= monday && christmas <= monday.addDays(6);
}

} // namespace

double Dice::unit()
{
    // One step of a multiply-and-mix generator, which is random enough for a demonstration.
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
    mixed ^= mixed >> 31;
    return static_cast<double>(mixed >> 11) / 9007199254740992.0;
}

void writeDemoRounds(const DemoCatalogue &catalogue, SessionContext &session)
{
    constexpr int DaysToComplete = 2;
    const QDate today = basic::Clock::today();
    const QDate thisMonday = today.addDays(1 - today.dayOfWeek());
    dao::CommitScope scope(*session.dbPest);
    RoundWriter writer(catalogue, session);
    Progress progress(QStringLiteral("Making two seasons"), Weeks);
    for (int week = 0; week < Weeks; ++week) {
        progress.show(week + 1);
        const QDate monday = thisMonday.addDays(qint64{7} * (week + 1 - Weeks));
        if (isChristmasWeek(monday)) {
            continue;
        }
        for (const Round &round : rounds()) {
            if ((Weeks - 1 - week) % round.everyWeeks != 0) {
                continue;
            }
            const QDate issued = std::min(monday.addDays(round.dayOfWeek), today);
            const QDate done = issued.addDays(DaysToComplete);
            const bool open = week == Weeks - 1 || done >= today;
            writer.write(round, issued, open ? std::nullopt : std::optional(done));
        }
    }
    scope.commit();
}
