// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/JetCopy.h"

#include "platform/basic/DiskSync.h"
#include "platform/dao/DataError.h"
#include "platform/jet/Check.h"
#include "platform/jet/PageCommit.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace dao
{

namespace
{

constexpr qint64 PageBytes = static_cast<qint64>(jet::PageSize);
constexpr qint64 BytesPerStep = 1 << 20;
constexpr std::size_t PagesPerStep = BytesPerStep / PageBytes;
constexpr int MaxRestarts = 1000;

[[noreturn]] void fail(const QFile &file)
{
    throw DataError(DataErrorNumber::DiskError,
                    QStringLiteral("%1 cannot be copied: %2").arg(file.fileName(), file.errorString()));
}

} // namespace

void JetCommits::run(const std::function<std::vector<std::uint32_t>()> &commit)
{
    const std::lock_guard guard(mutex_);
    const std::vector<std::uint32_t> pages = commit();
    for (JetCopy *copy : copies_) {
        copy->note(pages);
    }
}

JetCopy::JetCopy(std::shared_ptr<JetCommits> commits, const QString &source, const QString &path, QString password)
    : commits_(std::move(commits)), source_(source), copy_(path), password_(std::move(password))
{
    if (!source_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fail(source_);
    }
    if (!copy_.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        fail(copy_);
    }
    const std::lock_guard guard(commits_->mutex_);
    begin();
    commits_->copies_.push_back(this);
}

JetCopy::~JetCopy()
{
    const std::lock_guard guard(commits_->mutex_);
    std::erase(commits_->copies_, this);
}

void JetCopy::begin()
{
    stamp_ = jet::stampOf(source_.fileName());
    position_ = 0;
    outdated_.clear();
    if (!copy_.resize(0)) {
        fail(copy_);
    }
}

void JetCopy::note(const std::vector<std::uint32_t> &pages)
{
    stamp_ = jet::stampOf(source_.fileName());
    std::copy_if(pages.begin(), pages.end(), std::inserter(outdated_, outdated_.end()),
                 [this](std::uint32_t page) { return page * PageBytes < position_; });
}

bool JetCopy::step()
{
    bool isIncomplete = true;
    {
        const std::lock_guard guard(commits_->mutex_);
        isIncomplete = advance();
    }
    // A commit must not wait behind a long queue of pages of the copy.
    basic::syncToDisk(copy_.fileName());
    return isIncomplete;
}

bool JetCopy::advance()
{
    if (position_ < source_.size()) {
        const qint64 length = std::min(BytesPerStep, source_.size() - position_);
        copy(position_, length);
        position_ += length;
    }
    for (std::size_t pages = 0; pages < PagesPerStep && !outdated_.empty(); ++pages) {
        copy(*outdated_.begin() * PageBytes, PageBytes);
        outdated_.erase(outdated_.begin());
    }
    if (position_ < source_.size() || !outdated_.empty()) {
        return true;
    }
    // Of two writes within one tick of the file system's clock the commit bytes of the first page show the second.
    if (stamp_ == jet::stampOf(source_.fileName()) && !jet::hasRollback(source_.fileName())) {
        return false;
    }
    if (++restarts_ > MaxRestarts) {
        throw DataError(DataErrorNumber::Locked,
                        QStringLiteral("%1 is being written all the time, so it could not be copied.").arg(source_.fileName()));
    }
    begin();
    return true;
}

void JetCopy::copy(qint64 position, qint64 length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    if (!source_.seek(position) || source_.read(bytes.data(), length) != length) {
        fail(source_);
    }
    if (!copy_.seek(position) || copy_.write(bytes) != length) {
        fail(copy_);
    }
}

int JetCopy::percent() const
{
    return static_cast<int>(100 * position_ / std::max<qint64>(source_.size(), 1));
}

void JetCopy::finish()
{
    copy_.close();
    basic::syncToDisk(copy_.fileName());
}

QStringList JetCopy::check()
{
    return jet::check(copy_.fileName(), password_).faults;
}

} // namespace dao
