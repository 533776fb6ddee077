// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Check.h"

#include "platform/jet/Catalogue.h"
#include "platform/jet/Database.h"
#include "platform/jet/IndexCheck.h"
#include "platform/jet/IndexKey.h"
#include "platform/jet/IndexPage.h"
#include "platform/jet/LongValue.h"
#include "platform/jet/RowBytes.h"
#include "platform/jet/RowReader.h"
#include "platform/jet/UsageMap.h"

#include <algorithm>
#include <set>

namespace jet
{

namespace
{

constexpr RowPosition GlobalMap{1, 0};
constexpr int MostFaults = 200;

class Checker
{
public:
    explicit Checker(const Pager &pager) : pager_(pager), uses_(pager.pageCount()) {}

    CheckReport run()
    {
        claim(0, QStringLiteral("the header"));
        guarded([&] { checkTables(); });
        return std::move(report_);
    }

private:
    void checkTables()
    {
        RowPages rowPages(pager_);
        const Catalogue catalogue = readCatalogue(pager_, rowPages);
        if (!catalogue.fault.isEmpty()) {
            report(QStringLiteral("table MSysObjects: %1").arg(catalogue.fault));
        }
        guarded([&] { claimMap(GlobalMap, QStringLiteral("the map of free pages")); });
        for (const CatalogueEntry &entry : catalogue.tables) {
            subject_ = QStringLiteral("table %1, ").arg(entry.name);
            guarded([&] { checkTable(entry); });
        }
        subject_.clear();
        guarded([&] { checkFreePages(); });
    }

    template <typename Body> void guarded(Body &&body)
    {
        try {
            body();
        } catch (const Fault &fault) {
            report(fault.sentence());
        }
    }

    void report(const QString &fault)
    {
        if (report_.faults.size() < MostFaults) {
            report_.faults.append(subject_ + fault);
        }
    }

    void claim(std::uint32_t page, const QString &use)
    {
        if (page >= uses_.size()) {
            report(QStringLiteral("page %1 is beyond the end of the file").arg(page));
        } else if (!uses_[page].isEmpty()) {
            report(QStringLiteral("page %1 is used by %2 and by %3").arg(page).arg(uses_[page], use));
        } else {
            uses_[page] = use;
        }
    }

    /// The page that a map's row is on, which it may share with other maps, and the pages of its bits.
    void claimMap(RowPosition map, const QString &use)
    {
        if (map.page < uses_.size() && uses_[map.page].isEmpty()) {
            uses_[map.page] = QStringLiteral("maps");
            checkFreeBytes(map.page, DataPage(pager_.page(map.page, PageType::Data)));
        }
        if (map.page >= uses_.size() || uses_[map.page] != u"maps") {
            report(QStringLiteral("the map of %1 is on page %2, which is none of maps").arg(use).arg(map.page));
        }
        for (const std::uint32_t page : pagesOfMap(pager_, map)) {
            claim(page, QStringLiteral("a map of ") + use);
        }
    }

    void checkTable(const CatalogueEntry &entry)
    {
        ++report_.tables;
        TableDefinition table = readDefinition(pager_, entry.definitionPage);
        table.name = entry.name;
        if (!entry.propertiesFault.isEmpty()) {
            report(entry.propertiesFault);
        }
        for (std::uint32_t page = table.page; page != 0; page = pager_.page(page).longAt(4)) {
            claim(page, table.name);
        }
        claimMap(table.ownedPages, table.name);
        claimMap(table.freePages, table.name);
        const std::vector<std::uint32_t> pages = pagesInMap(pager_, table.ownedPages);
        for (const std::uint32_t page : pages) {
            claim(page, table.name);
        }
        requireWithin(pagesInMap(pager_, table.freePages), pages);
        checkRows(table, pages);
        checkLongValuePages(table);
        for (const IndexDefinition &index : table.indexes) {
            guarded([&] { checkIndex(table, index, pages); });
        }
    }

    void requireWithin(const std::vector<std::uint32_t> &some, const std::vector<std::uint32_t> &all)
    {
        if (!std::includes(all.begin(), all.end(), some.begin(), some.end())) {
            report(QStringLiteral("the map of pages with free space names a page that is not the table's"));
        }
    }

    void checkFreeBytes(std::uint32_t number, const DataPage &page)
    {
        if (page.freeBytes() != page.unusedBytes()) {
            report(QStringLiteral("page %1 counts %2 free bytes, but has %3")
                       .arg(number)
                       .arg(page.freeBytes())
                       .arg(page.unusedBytes()));
        }
    }

    void checkRows(const TableDefinition &table, const std::vector<std::uint32_t> &pages)
    {
        pieces_.clear();
        std::set<RowPosition> movedRows;
        std::set<RowPosition> pointers;
        for (const std::uint32_t number : pages) {
            const DataPage page(pager_.page(number, PageType::Data));
            checkFreeBytes(number, page);
            for (std::uint32_t slot = 0; slot < page.slotCount(); ++slot) {
                const RowPosition position{number, static_cast<std::uint8_t>(slot)};
                locating(number, slot, [&] { page.bytes(slot); });
                if (page.isSkipped(slot) && !page.isDeleted(slot)) {
                    movedRows.insert(position);
                } else if (page.isPointer(slot) && !page.isDeleted(slot)) {
                    const std::uint32_t pointer = page.bytes(slot).longAt(0);
                    pointers.insert({pointer >> 8, static_cast<std::uint8_t>(pointer)});
                }
            }
        }
        if (movedRows != pointers) {
            report(QStringLiteral("rows that have moved are not where their pointers lead"));
        }
        RowDecoder decoder(pager_, table);
        std::vector<Value> values;
        std::uint32_t rows = 0;
        forEachRow(pager_, table.page, pages, [&](RowPosition, Bytes bytes) {
            ++rows;
            decoder.decode(bytes, values);
            collectPieces(table, bytes);
        });
        report_.rows += rows;
        if (rows != table.rowCount) {
            report(QStringLiteral("%1 rows can be read, but its definition counts %2").arg(rows).arg(table.rowCount));
        }
    }

    void collectPieces(const TableDefinition &table, Bytes bytes)
    {
        const RowBytes row(bytes);
        for (const ColumnDefinition &column : table.columns) {
            if ((column.type == ColumnType::Memo || column.type == ColumnType::Ole) && row.bit(column.number)) {
                for (const RowPosition piece :
                     longValuePieces(pager_, row.variable(column.variableIndex), pager_.pageCount() * PageSize)) {
                    if (!pieces_.insert(piece).second) {
                        report(
                            QStringLiteral("page %1, row %2: two long values share a piece").arg(piece.page).arg(piece.slot + 1));
                    }
                }
            }
        }
    }

    void checkLongValuePages(const TableDefinition &table)
    {
        std::set<RowPosition> found;
        for (const LongValuePages &maps : table.longValues) {
            claimMap(maps.ownedPages, table.name);
            claimMap(maps.freePages, table.name);
            const std::vector<std::uint32_t> pages = pagesInMap(pager_, maps.ownedPages);
            requireWithin(pagesInMap(pager_, maps.freePages), pages);
            for (const std::uint32_t number : pages) {
                claim(number, table.name);
                const DataPage page(pager_.page(number, PageType::Data));
                checkFreeBytes(number, page);
                for (std::uint32_t slot = 0; slot < page.slotCount(); ++slot) {
                    if (!page.isDeleted(slot)) {
                        found.insert({number, static_cast<std::uint8_t>(slot)});
                    }
                }
            }
        }
        if (!std::includes(found.begin(), found.end(), pieces_.begin(), pieces_.end())) {
            report(QStringLiteral("a long value is on a page that is not in the map of its column"));
        }
    }

    void checkIndex(const TableDefinition &table, const IndexDefinition &index, const std::vector<std::uint32_t> &pages)
    {
        const QString subject = subject_;
        subject_ += QStringLiteral("index %1: ").arg(index.name);
        guarded([&] {
            IndexWalk walk = walkIndex(pager_, table, index, [&](const QString &fault) { report(fault); });
            claimMap(index.ownedPages, table.name);
            std::sort(walk.pages.begin(), walk.pages.end());
            for (const std::uint32_t page : walk.pages) {
                claim(page, table.name);
            }
            if (walk.pages != pagesInMap(pager_, index.ownedPages)) {
                report(QStringLiteral("its pages are not those of its map"));
            }
            if (index.distinctKeys < walk.distinctKeys) {
                report(QStringLiteral("%1 different keys, but the definition counts %2")
                           .arg(walk.distinctKeys)
                           .arg(index.distinctKeys));
            }
            report_.indexEntries += walk.entries.size();
            compareWithRows(table, index, pages, walk);
        });
        subject_ = subject;
    }

    /// Every entry against its row; where the order of a text is not known, the row alone.
    void compareWithRows(const TableDefinition &table, const IndexDefinition &index, const std::vector<std::uint32_t> &pages,
                         const IndexWalk &walk)
    {
        RowDecoder decoder(pager_, table);
        std::vector<Value> values;
        std::vector<std::string> expected;
        const bool isKnown = unsupportedIndex(table, index, table.isSystem).isEmpty();
        forEachRow(pager_, table.page, pages, [&](RowPosition position, Bytes bytes) {
            if (!isKnown) {
                expected.push_back(rowEntry({}, position));
                return;
            }
            decoder.decode(bytes, values);
            if (const std::optional<KeyBytes> key = indexKey(table, index, values)) {
                expected.push_back(rowEntry(*key, position));
            }
        });
        std::vector<std::string> found = walk.entries;
        if (!isKnown) {
            std::transform(found.begin(), found.end(), found.begin(),
                           [](const std::string &entry) { return rowEntry({}, rowOf(entry)); });
            std::sort(found.begin(), found.end());
        }
        std::sort(expected.begin(), expected.end());
        const auto [ours, theirs] = std::mismatch(expected.begin(), expected.end(), found.begin(), found.end());
        if (ours != expected.end() || theirs != found.end()) {
            const RowPosition row = rowOf(ours != expected.end() ? *ours : *theirs);
            report(QStringLiteral("%1 entries for %2 rows, the first that differs leads to page %3, row %4")
                       .arg(found.size())
                       .arg(expected.size())
                       .arg(row.page)
                       .arg(row.slot + 1));
        }
    }

    void checkFreePages()
    {
        const std::vector<std::uint32_t> freePages = pagesInMap(pager_, GlobalMap);
        for (const std::uint32_t page : freePages) {
            if (!uses_[page].isEmpty()) {
                report(QStringLiteral("page %1 is free by the map of free pages, but used by %2").arg(page).arg(uses_[page]));
            }
        }
        for (std::uint32_t page = 0; page < uses_.size(); ++page) {
            if (uses_[page].isEmpty() && !std::binary_search(freePages.begin(), freePages.end(), page)) {
                report(QStringLiteral("page %1 is neither free nor used").arg(page));
            }
        }
    }

    const Pager &pager_;
    CheckReport report_;
    /// Begins every fault.
    QString subject_;
    /// By page; empty for a page that nothing has claimed.
    std::vector<QString> uses_;
    /// Pieces of the long values of the table in hand.
    std::set<RowPosition> pieces_;
};

} // namespace

CheckReport check(const QString &path, const QString &password)
{
    // Opened first, for the errors of opening.
    Database::open(path, password);
    const Pager pager(path);
    return Checker(pager).run();
}

} // namespace jet
