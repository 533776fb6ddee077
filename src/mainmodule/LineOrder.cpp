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
    // Not by its sort keys, which on Windows hold bytes that were never set.
    std::stable_sort(lines.begin(), lines.end(), [&](const PageLine &one, const PageLine &other) {
        const int order = collator.compare(one.texts[column], other.texts[column]);
        return descending ? order > 0 : order < 0;
    });
}

} // namespace mainmodule
