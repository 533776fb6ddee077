// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Header.h"

#include <QFile>
#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace jet
{

/// A cheap look at a file, to learn whether somebody has changed it: every engine that writes counts up its commit bytes on the
/// first page. Clocks of file systems are coarse: two changes within 20 ms may leave one time.
struct Stamp {
    qint64 size = -1;
    /// Milliseconds since 1970.
    qint64 modified = 0;
    std::size_t firstPage = 0;
    bool operator==(const Stamp &) const = default;
};

/// Stamp of a file that may be absent or unreadable: size -1.
Stamp stampOf(const QString &path);

/// The pages of a Jet 4 file, decoded, read when they are first asked for and held from then on. What it hands out is good for
/// as long as the pager lives.
class Pager
{
public:
    /// Error 3024 no such file, 3051 cannot be read, 3343 no Jet 4 file, 3049 no whole number of pages.
    explicit Pager(const QString &path);

    const QString &path() const { return path_; }
    const Header &header() const { return header_; }
    std::uint32_t pageCount() const { return pageCount_; }
    /// A Fault for a number beyond the end.
    Bytes page(std::uint32_t number) const;
    /// The same, and a Fault unless the page begins with that type.
    Bytes page(std::uint32_t number, std::uint8_t type) const;

private:
    static constexpr std::uint32_t PagesPerChunk = 16;
    using Chunk = std::array<unsigned char, PagesPerChunk * PageSize>;

    void readChunk(std::uint32_t chunk) const;

    QString path_;
    mutable QFile file_;
    std::uint32_t pageCount_ = 0;
    Header header_;
    mutable std::vector<std::unique_ptr<Chunk>> chunks_;
};

/// First byte of a page.
namespace PageType
{
constexpr std::uint8_t Data = 1;
constexpr std::uint8_t Definition = 2;
constexpr std::uint8_t IndexNode = 3;
constexpr std::uint8_t IndexLeaf = 4;
constexpr std::uint8_t UsageMap = 5;
} // namespace PageType

} // namespace jet
