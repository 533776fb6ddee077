// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/ZipArchive.h"

#include "platform/sheets/SheetError.h"

#include <unzip.h>

#include <array>

namespace sheets
{

namespace
{

constexpr qint64 MaxUnpacked = 256 * 1024 * 1024;
constexpr int IgnoreCase = 2;
constexpr uLong EncryptedFlag = 1;

// The library's access to the file, so that every path that Qt opens is opened.
QFile &fileOf(voidpf stream)
{
    return *static_cast<QFile *>(stream);
}

voidpf openFile(voidpf opaque, const void *, int)
{
    return fileOf(opaque).open(QIODevice::ReadOnly) ? opaque : nullptr;
}

uLong readFile(voidpf, voidpf stream, void *buffer, uLong size)
{
    const qint64 read = fileOf(stream).read(static_cast<char *>(buffer), static_cast<qint64>(size));
    return read < 0 ? 0 : static_cast<uLong>(read);
}

ZPOS64_T tellFile(voidpf, voidpf stream)
{
    return static_cast<ZPOS64_T>(fileOf(stream).pos());
}

long seekFile(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    QFile &file = fileOf(stream);
    const qint64 base = origin == ZLIB_FILEFUNC_SEEK_CUR ? file.pos() : origin == ZLIB_FILEFUNC_SEEK_END ? file.size() : 0;
    const qint64 target = base + static_cast<qint64>(offset);
    return target >= 0 && target <= file.size() && file.seek(target) ? 0 : -1;
}

int closeFile(voidpf, voidpf stream)
{
    fileOf(stream).close();
    return 0;
}

int errorOfFile(voidpf, voidpf stream)
{
    return fileOf(stream).error() == QFileDevice::NoError ? 0 : -1;
}

} // namespace

struct ZipArchive::Handle {
    unzFile file = nullptr;
    ~Handle()
    {
        if (file) {
            unzClose(file);
        }
    }
};

ZipArchive::ZipArchive(const QString &path) : file_(path), handle_(std::make_unique<Handle>())
{
    zlib_filefunc64_def access{openFile, readFile, nullptr, tellFile, seekFile, closeFile, errorOfFile, &file_};
    handle_->file = unzOpen2_64(path.toUtf8().constData(), &access);
    if (!handle_->file) {
        throw SheetError(QStringLiteral("is damaged: its list of contents cannot be read."));
    }
}

ZipArchive::~ZipArchive() = default;

bool ZipArchive::contains(const QString &name) const
{
    return unzLocateFile(handle_->file, name.toUtf8().constData(), IgnoreCase) == UNZ_OK;
}

QByteArray ZipArchive::read(const QString &name)
{
    const auto damaged = [&] { throw SheetError(QStringLiteral("is damaged: \"%1\" in it cannot be read.").arg(name)); };
    unz_file_info64 info{};
    if (!contains(name) || unzGetCurrentFileInfo64(handle_->file, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
        damaged();
    }
    if (info.flag & EncryptedFlag) {
        throw SheetError(QStringLiteral("is protected by a password. Save it without one, then open it again."));
    }
    if (unzOpenCurrentFile(handle_->file) != UNZ_OK) {
        damaged();
    }
    QByteArray bytes;
    std::array<char, 65536> buffer;
    int read = 0;
    while ((read = unzReadCurrentFile(handle_->file, buffer.data(), static_cast<unsigned>(buffer.size()))) > 0) {
        unpacked_ += read;
        if (unpacked_ > MaxUnpacked) {
            unzCloseCurrentFile(handle_->file);
            throw SheetError(QStringLiteral("is too large: it unpacks to more than %1 MB.").arg(MaxUnpacked / (1024 * 1024)));
        }
        bytes.append(buffer.data(), read);
    }
    if (unzCloseCurrentFile(handle_->file) != UNZ_OK || read < 0) {
        damaged();
    }
    return bytes;
}

} // namespace sheets
