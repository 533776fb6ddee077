// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Value.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace jet
{

class Pager;
class RowPages;

/// A table that the file lists.
struct CatalogueEntry {
    QString name;
    std::uint32_t definitionPage = 0;
    /// A system table.
    bool isSystem = false;
    QByteArray properties;
    /// Why the properties cannot be read; empty when they can.
    QString propertiesFault;
    RowPosition position;
};

/// The tables of a file, from the table MSysObjects, whose definition is always on page 2.
struct Catalogue {
    std::vector<CatalogueEntry> tables;
    /// What is wrong with the list itself, so that a table may be missing from it; empty when nothing is.
    QString fault;

    /// By name without regard to case.
    const CatalogueEntry *find(const QString &name) const;
};

constexpr std::uint32_t CataloguePage = 2;

Catalogue readCatalogue(const Pager &pager, RowPages &rowPages);

} // namespace jet
