// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/FileCopy.h"
#include "platform/jet/Pager.h"

#include <QFile>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace dao
{

class JetCopy;

/// Lets the commits of one open Jet file and the steps of its copies take turns, and passes on which pages were written.
class JetCommits
{
public:
    /// Runs a commit, which returns the numbers of the pages that it wrote.
    void run(const std::function<std::vector<std::uint32_t>()> &commit);

private:
    friend class JetCopy;

    std::mutex mutex_;
    std::vector<JetCopy *> copies_;
};

/// A copy of a Jet file, page by page. Pages that commits have written meanwhile are copied again, so the copy is the state of
/// the last step; a write of another program makes it begin anew.
class JetCopy : public FileCopy
{
public:
    /// `path` is an empty file.
    JetCopy(std::shared_ptr<JetCommits> commits, const QString &source, const QString &path, QString password);
    ~JetCopy() override;

    bool step() override;
    int percent() const override;
    void finish() override;
    QStringList check() override;

private:
    friend class JetCommits;

    /// Under the lock, after a commit.
    void note(const std::vector<std::uint32_t> &pages);
    void begin();
    /// Copies what is next. False when the copy equals the file.
    bool advance();
    void copy(qint64 position, qint64 length);

    std::shared_ptr<JetCommits> commits_;
    QFile source_;
    QFile copy_;
    QString password_;
    /// Of the source when this pass began, or after the last commit.
    jet::Stamp stamp_;
    qint64 position_ = 0;
    /// Pages that are in the copy as they were before a commit.
    std::set<std::uint32_t> outdated_;
    int restarts_ = 0;
};

} // namespace dao
