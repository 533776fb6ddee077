// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/LineOrder.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>

namespace mainmodule
{

bool fitsFilter(const PageLine &line, const QString &filter)
{
    return filter.isEmpty() || std::any_of(line.texts.begin(), line.texts.end(), [&](const QString &text) {
               return text.contains(filter, Qt::CaseInsensitive);
           });
}

void sortLines(std::vector<PageLine> &lines, int column, bool descending)
{
    // The C locale would order by code points, with "Block 10" before "Block 2".
    QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    struct Entry {
        QCollatorSortKey key;
        std::size_t position;
    };
    std::vector<Entry> entries;
    entries.reserve(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        entries.push_back({collator.sortKey(lines[i].texts[column]), i});
    }
    std::stable_sort(entries.begin(), entries.end(), [descending](const Entry &one, const Entry &other) {
        return descending ? other.key < one.key : one.key < other.key;
    });
    std::vector<PageLine> sorted;
    sorted.reserve(lines.size());
    for (const Entry &entry : entries) {
        sorted.push_back(std::move(lines[entry.position]));
    }
    lines = std::move(sorted);
}

} // namespace mainmodule
