// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Pager.h"

#include "platform/basic/FileReplacement.h"
#include "platform/jet/Error.h"
#include "platform/jet/Rc4.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace jet
{

namespace
{

constexpr qint64 PageBytes = static_cast<qint64>(PageSize);
/// Row pointers have three bytes for the page.
constexpr qint64 MostPages = 0xFFFFFF;

Bytes viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

void requireJet4(const QString &path, const QByteArray &firstPage)
{
    switch (fileKind(viewOf(firstPage))) {
    case FileKind::Jet4:
        return;
    case FileKind::TooOld:
        throw Error(ErrorNumber::UnrecognizedFormat,
                    QStringLiteral("%1 is a Jet 3 database; only Jet 4 can be read. Convert it in the suite first.").arg(path));
    case FileKind::TooNew:
        throw Error(ErrorNumber::UnrecognizedFormat,
                    QStringLiteral("%1 is a database of a version after Jet 4. Convert it in the suite first.").arg(path));
    case FileKind::Other:
        break;
    }
    throw Error(ErrorNumber::UnrecognizedFormat, QStringLiteral("%1 is no Jet database.").arg(path));
}

std::array<unsigned char, 4> keyOf(std::uint32_t codingKey, std::uint32_t page)
{
    std::array<unsigned char, 4> key;
    qToLittleEndian<std::uint32_t>(codingKey ^ page, key.data());
    return key;
}

} // namespace

Stamp stampOf(const QString &path)
{
    QFile file(path);
    Stamp stamp;
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return stamp;
    }
    stamp.firstPage = qHash(file.read(PageBytes));
    stamp.size = file.size();
    stamp.modified = file.fileTime(QFileDevice::FileModificationTime).toMSecsSinceEpoch();
    return stamp;
}

Pager::Pager(const QString &path) : path_(path), file_(path)
{
    if (!QFileInfo(path).isFile()) {
        throw Error(ErrorNumber::FileNotFound, QStringLiteral("%1 does not exist or is no file.").arg(path));
    }
    if (!basic::openWhenFree(file_, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        throw Error(ErrorNumber::CannotOpenFile, QStringLiteral("%1 cannot be read: %2.").arg(path, file_.errorString()));
    }
    const QByteArray firstPage = file_.read(PageBytes);
    requireJet4(path, firstPage);
    const qint64 size = file_.size();
    if (size % PageBytes != 0 || size < 3 * PageBytes || size / PageBytes > MostPages) {
        throw Error(ErrorNumber::Damaged,
                    QStringLiteral("%1 is damaged: its length is no whole number of pages. Repair it in the suite first, or take "
                                   "a copy from before the damage.")
                        .arg(path));
    }
    pageCount_ = static_cast<std::uint32_t>(size / PageBytes);
    filePageCount_ = pageCount_;
    header_ = readHeader(viewOf(firstPage));
    chunks_.resize((pageCount_ + PagesPerChunk - 1) / PagesPerChunk);
}

Bytes Pager::page(std::uint32_t number) const
{
    if (number >= pageCount_) {
        throw Fault(QStringLiteral("it leads to page %1, but the file has %2").arg(number).arg(pageCount_));
    }
    return {bytesOf(number), PageSize};
}

Bytes Pager::page(std::uint32_t number, std::uint8_t type) const
{
    const Bytes bytes = page(number);
    if (bytes.byteAt(0) != type) {
        throw Fault(
            QStringLiteral("it leads to page %1, which is of kind %2 and not %3").arg(number).arg(bytes.byteAt(0)).arg(type));
    }
    return bytes;
}

void Pager::releasePages()
{
    if (!hasEdits()) {
        std::for_each(chunks_.begin(), chunks_.end(), [](std::unique_ptr<Chunk> &chunk) { chunk.reset(); });
    }
}

unsigned char *Pager::edit(std::uint32_t number)
{
    page(number);
    unsigned char *const bytes = bytesOf(number);
    const auto [edit, isNew] = edits_.try_emplace(number);
    if (isNew) {
        edit->second = std::make_unique<Page>();
        std::copy_n(bytes, PageSize, edit->second->begin());
    }
    return bytes;
}

std::uint32_t Pager::append()
{
    if (pageCount_ >= MostPages) {
        throw Fault(QStringLiteral("it is full"));
    }
    const std::uint32_t number = pageCount_++;
    const std::uint32_t chunk = number / PagesPerChunk;
    if (chunk == chunks_.size()) {
        chunks_.push_back(std::make_unique<Chunk>());
    }
    std::fill_n(bytesOf(number), PageSize, std::uint8_t{0});
    edits_.try_emplace(number);
    return number;
}

std::vector<PageEdit> Pager::edits() const
{
    std::vector<PageEdit> edits;
    for (const auto &[number, before] : edits_) {
        edits.push_back({number, before ? before->data() : nullptr, bytesOf(number)});
    }
    return edits;
}

void Pager::acceptEdits()
{
    edits_.clear();
    filePageCount_ = pageCount_;
}

void Pager::revertEdits()
{
    for (const auto &[number, before] : edits_) {
        if (before) {
            std::copy_n(before->begin(), PageSize, bytesOf(number));
        }
    }
    edits_.clear();
    pageCount_ = filePageCount_;
    chunks_.resize((pageCount_ + PagesPerChunk - 1) / PagesPerChunk);
}

std::array<unsigned char, PageSize> Pager::encoded(std::uint32_t number, const unsigned char *bytes) const
{
    Page page;
    std::copy_n(bytes, PageSize, page.begin());
    if (header_.codingKey != 0 && number != 0) {
        applyRc4(keyOf(header_.codingKey, number), page);
    }
    return page;
}

unsigned char *Pager::bytesOf(std::uint32_t number) const
{
    const std::uint32_t chunk = number / PagesPerChunk;
    if (!chunks_[chunk]) {
        readChunk(chunk);
    }
    return chunks_[chunk]->data() + number % PagesPerChunk * PageSize;
}

void Pager::readChunk(std::uint32_t chunk) const
{
    const std::uint32_t first = chunk * PagesPerChunk;
    // Pages behind those of the file are in memory alone.
    const std::uint32_t count = std::min(PagesPerChunk, filePageCount_ - first);
    auto pages = std::make_unique<Chunk>();
    const qint64 length = count * PageBytes;
    if (!file_.seek(first * PageBytes) || file_.read(reinterpret_cast<char *>(pages->data()), length) != length) {
        Fault fault(QStringLiteral("it cannot be read from the disk"));
        fault.locate(first);
        throw fault;
    }
    if (header_.codingKey != 0) {
        for (std::uint32_t i = first == 0 ? 1 : 0; i < count; ++i) {
            applyRc4(keyOf(header_.codingKey, first + i), std::span(pages->data() + i * PageSize, PageSize));
        }
    }
    chunks_[chunk] = std::move(pages);
}

} // namespace jet
