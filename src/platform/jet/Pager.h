// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Header.h"

#include <QFile>
#include <QString>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace jet
{

/// A cheap look at a file, to learn whether it has changed: every program that writes counts up its commit bytes on the
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

/// A page that has been changed in memory.
struct PageEdit {
    std::uint32_t page = 0;
    /// Nothing for a page that the file does not have yet.
    const unsigned char *before = nullptr;
    const unsigned char *after = nullptr;
};

/// The pages of a Jet 4 file, decoded, read when they are first asked for and held from then on. Bytes that it returns stay good
/// as long as the pager lives, but change with their page. Changes stay in memory: see PageCommit.
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

    /// Forgets what was read, unless something is changed. What `page` has returned is gone.
    void releasePages();

    /// The bytes of a page that is to be changed.
    unsigned char *edit(std::uint32_t number);
    /// A page of zeros behind the last one.
    std::uint32_t append();
    /// Ascending.
    std::vector<PageEdit> edits() const;
    bool hasEdits() const { return !edits_.empty(); }
    /// How many pages the file itself has.
    std::uint32_t filePageCount() const { return filePageCount_; }
    /// The changes are in the file now.
    void acceptEdits();
    /// Everything as it was.
    void revertEdits();
    /// The bytes of a page as they are in the file.
    std::array<unsigned char, PageSize> encoded(std::uint32_t number, const unsigned char *bytes) const;

private:
    using Page = std::array<unsigned char, PageSize>;
    static constexpr std::uint32_t PagesPerChunk = 16;
    using Chunk = std::array<unsigned char, PagesPerChunk * PageSize>;

    unsigned char *bytesOf(std::uint32_t number) const;
    void readChunk(std::uint32_t chunk) const;

    QString path_;
    mutable QFile file_;
    std::uint32_t pageCount_ = 0;
    std::uint32_t filePageCount_ = 0;
    Header header_;
    /// What changed pages held before; nothing for pages that are new.
    std::map<std::uint32_t, std::unique_ptr<Page>> edits_;
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
