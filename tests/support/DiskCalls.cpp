// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the C library that a program defines itself are found first, by the libraries it uses as well.
#undef _FORTIFY_SOURCE
#include "support/DiskCalls.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <optional>
#include <utility>

namespace
{

using diskCalls::Call;
using diskCalls::Effect;
using diskCalls::Kind;

struct State {
    std::mutex mutex;
    QByteArray folder;
    int number = 0;
    int counted = 0;
    bool hasFailed = false;
    Effect effect = Effect::Fail;
    diskCalls::Kinds kinds;
    diskCalls::Duration duration = diskCalls::Duration::Once;
    bool isRecording = false;
    std::vector<Call> record;
};

State &state()
{
    // Never destroyed: files are closed and removed while the program ends.
    static auto *state = new State;
    return *state;
}

bool isWatched(const QByteArray &path)
{
    const QByteArray &folder = state().folder;
    return !folder.isEmpty() && path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

QByteArray absolute(const char *path)
{
    return path[0] == '/' ? QByteArray(path) : QFile::encodeName(QDir::currentPath()) + '/' + path;
}

/// Empty for a file without a name.
QByteArray nameOf(int file)
{
    std::array<char, PATH_MAX> link{};
    std::array<char, PATH_MAX> name{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", file);
    const ssize_t size = syscall(SYS_readlink, link.data(), name.data(), name.size());
    const QByteArray path(name.data(), size > 0 ? size : 0);
    return path.endsWith(" (deleted)") ? QByteArray() : path;
}

[[noreturn]] void endProcess()
{
    kill(getpid(), SIGKILL);
    for (;;) {
        pause();
    }
}

/// What is to happen to a call instead of its success.
std::optional<Effect> effectOf(const Call &call)
{
    State &s = state();
    if (s.number == 0 || !s.kinds.testFlag(call.kind)) {
        return std::nullopt;
    }
    ++s.counted;
    const bool isDue = s.counted == s.number || (s.counted > s.number && s.duration == diskCalls::Duration::FromNowOn);
    if (!isDue) {
        return std::nullopt;
    }
    s.hasFailed = true;
    return s.effect;
}

/// Runs `body(bool onlyHalf)`, which makes the call and returns its result, unless the call is to fail or to be the last.
template <typename Body> auto through(Call call, Body &&body) -> decltype(body(false))
{
    if (!isWatched(call.path) && !isWatched(call.target)) {
        return body(false);
    }
    const std::lock_guard guard(state().mutex);
    const std::optional<Effect> effect = effectOf(call);
    if (effect == Effect::Kill) {
        endProcess();
    }
    if (effect == Effect::Fail || effect == Effect::FailFull) {
        errno = effect == Effect::Fail ? EIO : ENOSPC;
        return -1;
    }
    const auto result = body(effect.has_value());
    if (effect == Effect::KillHalfway) {
        endProcess();
    }
    if (result >= 0 && state().isRecording && call.kind != Kind::Read) {
        if (call.kind == Kind::Write) {
            call.bytes.truncate(static_cast<qsizetype>(result));
        }
        state().record.push_back(std::move(call));
    }
    return result;
}

bool isIdle()
{
    return state().folder.isEmpty();
}

size_t part(size_t size, bool onlyHalf)
{
    return onlyHalf && size > 1 ? size / 2 : size;
}

ssize_t writeAt(int file, const void *bytes, size_t size, std::optional<off64_t> offset)
{
    const auto call = [&](bool onlyHalf) -> ssize_t {
        return offset ? syscall(SYS_pwrite64, file, bytes, part(size, onlyHalf), *offset)
                      : syscall(SYS_write, file, bytes, part(size, onlyHalf));
    };
    if (isIdle() || file <= STDERR_FILENO) {
        return call(false);
    }
    const qint64 position = offset ? *offset : syscall(SYS_lseek, file, 0, SEEK_CUR);
    return through({Kind::Write, nameOf(file), {}, position, {static_cast<const char *>(bytes), static_cast<qsizetype>(size)}},
                   call);
}

ssize_t readAt(int file, void *bytes, size_t size, std::optional<off64_t> offset)
{
    const auto call = [&](bool onlyHalf) -> ssize_t {
        return offset ? syscall(SYS_pread64, file, bytes, part(size, onlyHalf), *offset)
                      : syscall(SYS_read, file, bytes, part(size, onlyHalf));
    };
    if (isIdle() || !state().kinds.testFlag(Kind::Read)) {
        return call(false);
    }
    return through({Kind::Read, nameOf(file)}, call);
}

int syncFile(long number, int file)
{
    const auto call = [&](bool) { return static_cast<int>(syscall(number, file)); };
    if (isIdle()) {
        return call(false);
    }
    struct stat status {
    };
    const bool isFolder = ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    return through({isFolder ? Kind::SyncFolder : Kind::Sync, nameOf(file)}, call);
}

int truncateFile(int file, off64_t length)
{
    return through({Kind::Truncate, isIdle() ? QByteArray() : nameOf(file), {}, length},
                   [&](bool) { return static_cast<int>(syscall(SYS_ftruncate, file, length)); });
}

int openFile(const char *path, int flags, mode_t mode)
{
    const auto call = [&](bool) { return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode)); };
    if (isIdle()) {
        return call(false);
    }
    const QByteArray name = absolute(path);
    if (isWatched(name) && (flags & O_TMPFILE) == O_TMPFILE) {
        // A file without a name would get one by a way that is not watched; Qt then makes one with a name.
        errno = EOPNOTSUPP;
        return -1;
    }
    struct stat status {
    };
    const bool exists = ::stat(path, &status) == 0;
    if (!exists && (flags & O_CREAT) != 0) {
        return through({Kind::Create, name}, call);
    }
    if (exists && (flags & O_TRUNC) != 0 && status.st_size > 0) {
        return through({Kind::Truncate, name}, call);
    }
    return call(false);
}

int moveFile(const char *from, const char *to, unsigned int flags)
{
    return through({Kind::Rename, absolute(from), absolute(to)},
                   [&](bool) { return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, flags)); });
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

namespace diskCalls
{

void watch(const QString &folder)
{
    State &s = state();
    const std::lock_guard guard(s.mutex);
    s.folder = QFile::encodeName(folder);
    s.number = 0;
    s.kinds = {};
    s.hasFailed = s.isRecording = false;
    s.record.clear();
}

void failAt(int number, Effect effect, Kinds kinds, Duration duration)
{
    State &s = state();
    const std::lock_guard guard(s.mutex);
    s.number = number;
    s.counted = 0;
    s.hasFailed = false;
    s.effect = effect;
    s.kinds = number == 0 ? Kinds() : kinds;
    s.duration = duration;
}

int calls()
{
    return state().counted;
}

bool hasFailed()
{
    return state().hasFailed;
}

void record()
{
    state().isRecording = true;
}

std::vector<Call> takeRecord()
{
    state().isRecording = false;
    return std::exchange(state().record, {});
}

void note(const QByteArray &text)
{
    const std::lock_guard guard(state().mutex);
    if (state().isRecording) {
        state().record.push_back({Kind::Note, text});
    }
}

} // namespace diskCalls

extern "C" {

ssize_t write(int file, const void *bytes, size_t size)
{
    return writeAt(file, bytes, size, std::nullopt);
}
ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t offset)
{
    return writeAt(file, bytes, size, offset);
}
ssize_t read(int file, void *bytes, size_t size)
{
    return readAt(file, bytes, size, std::nullopt);
}
ssize_t pread64(int file, void *bytes, size_t size, off64_t offset)
{
    return readAt(file, bytes, size, offset);
}
int fsync(int file)
{
    return syncFile(SYS_fsync, file);
}
int fdatasync(int file)
{
    return syncFile(SYS_fdatasync, file);
}
int ftruncate64(int file, off64_t length) noexcept
{
    return truncateFile(file, length);
}
int ftruncate(int file, off_t length) noexcept
{
    return truncateFile(file, length);
}
int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile(path, flags, mode);
}
int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile(path, flags, mode);
}
int unlink(const char *path) noexcept
{
    return through({Kind::Remove, absolute(path)}, [&](bool) { return static_cast<int>(syscall(SYS_unlink, path)); });
}
int rmdir(const char *path) noexcept
{
    return through({Kind::Remove, absolute(path)}, [&](bool) { return static_cast<int>(syscall(SYS_rmdir, path)); });
}
int rename(const char *from, const char *to) noexcept
{
    return moveFile(from, to, 0);
}
int renameat2(int, const char *from, int, const char *to, unsigned int flags) noexcept
{
    return moveFile(from, to, flags);
}
int link(const char *from, const char *to) noexcept
{
    return through({Kind::Link, absolute(from), absolute(to)},
                   [&](bool) { return static_cast<int>(syscall(SYS_link, from, to)); });
}
int mkdir(const char *path, mode_t mode) noexcept
{
    return through({Kind::MakeFolder, absolute(path)}, [&](bool) { return static_cast<int>(syscall(SYS_mkdir, path, mode)); });
}
/// Its callers copy by reading and writing then.
ssize_t sendfile(int out, int in, off_t *offset, size_t count) noexcept
{
    if (isIdle()) {
        return syscall(SYS_sendfile, out, in, offset, count);
    }
    errno = EINVAL;
    return -1;
}
}
