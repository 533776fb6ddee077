// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>

namespace sheets
{

/// A zip archive opened for reading. Whatever cannot be read raises SheetError.
class ZipArchive
{
public:
    explicit ZipArchive(const QString &path);
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    /// Names are compared without regard to case.
    bool contains(const QString &name) const;
    /// The whole part, unpacked and checked against its check sum. All parts read from one archive may unpack to 256 MB together,
    /// so that a small file cannot fill the memory.
    QByteArray read(const QString &name);

private:
    struct Handle;

    QFile file_;
    std::unique_ptr<Handle> handle_;
    qint64 unpacked_ = 0;
};

} // namespace sheets
