// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

#include <QByteArray>
#include <QString>

namespace jet
{

constexpr std::size_t PageSize = 4096;

enum class FileKind {
    /// No Jet file at all.
    Other,
    /// Jet 3 and below: pages of 2 KB and another layout of rows.
    TooOld,
    Jet4,
    /// Later formats, which share the first bytes.
    TooNew,
};

/// Looks at the first bytes of a file; 24 are enough.
FileKind fileKind(Bytes start);

/// What the first page says of the file, unmasked.
struct Header {
    /// Up to 20 characters; empty when none is asked for.
    QString password;
    /// Not zero: the other pages are encoded with this key XOR the number of the page.
    std::uint32_t codingKey = 0;
    /// Days since 1899-12-30.
    double created = 0.0;
    /// Locale of the sort order, 0x0409 being the general one, and in the high bytes its version.
    std::uint32_t sortOrder = 0;
};

/// Reads the first page of a Jet 4 file.
Header readHeader(Bytes page);
/// The first page of a new file.
QByteArray newHeader(const QString &password, double created);

} // namespace jet
