// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CompoundFile.h"

#include "platform/excel/CompoundEntries.h"
#include "platform/excel/ExcelError.h"

#include <QtEndian>

#include <cstring>
#include <map>
#include <memory>

#include <windows.h>

#include <objbase.h>

// The system's structured storage, on bytes in memory.

namespace excel
{

namespace
{

struct Release {
    void operator()(IUnknown *object) const { object->Release(); }
};
template <typename Interface> using Owned = std::unique_ptr<Interface, Release>;

constexpr DWORD Reading = STGM_READ | STGM_SHARE_EXCLUSIVE;
constexpr DWORD Writing = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr qsizetype MaxName = 31;

/// Calls a function that gives out an object in its last parameter; nothing when it fails.
template <typename Interface, typename Call> Owned<Interface> made(Call &&call)
{
    Interface *object = nullptr;
    const HRESULT result = call(&object);
    Owned<Interface> owned(object);
    return SUCCEEDED(result) ? std::move(owned) : nullptr;
}

Owned<ILockBytes> newMemory()
{
    auto memory = made<ILockBytes>([](ILockBytes **object) { return CreateILockBytesOnHGlobal(nullptr, TRUE, object); });
    if (!memory) {
        throw ExcelError(QStringLiteral("there is not enough memory for it."));
    }
    return memory;
}

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// The system allocates what the header announces, so that must fit into the file. A sector has 512 or 4096 bytes, a small
/// one 64.
void checkHeader(const QByteArray &bytes)
{
    constexpr qsizetype HeaderSize = 512;
    constexpr qsizetype SectorShift = 30;
    constexpr qsizetype SmallSectorShift = 32;
    const auto number = [&bytes](qsizetype at) { return qFromLittleEndian<quint32>(bytes.constData() + at); };
    const auto shortNumber = [&bytes](qsizetype at) { return qFromLittleEndian<quint16>(bytes.constData() + at); };
    if (bytes.size() < HeaderSize || (shortNumber(SectorShift) != 9 && shortNumber(SectorShift) != 12)
        || shortNumber(SmallSectorShift) != 6) {
        damagedContainer();
    }
    const auto sectors = static_cast<quint32>(bytes.size() >> shortNumber(SectorShift));
    // Numbers of sectors: of folders, of the table of sectors, of small sectors, and of what the header does not hold of the
    // table.
    for (const qsizetype at : {40, 44, 64, 72}) {
        if (number(at) > sectors) {
            damagedContainer();
        }
    }
}

class ContainerReader
{
public:
    explicit ContainerReader(qsizetype fileSize) : entries_(fileSize) {}

    void readStorage(IStorage &storage, const QStringList &path);
    std::vector<CompoundEntry> take() { return entries_.take(); }

private:
    void readStream(IStorage &parent, const wchar_t *name, const QStringList &path);

    CompoundEntries entries_;
};

void ContainerReader::readStream(IStorage &parent, const wchar_t *name, const QStringList &path)
{
    const auto stream = made<IStream>([&](IStream **object) { return parent.OpenStream(name, nullptr, Reading, 0, object); });
    STATSTG status{};
    if (!stream || FAILED(stream->Stat(&status, STATFLAG_NONAME))) {
        damagedContainer();
    }
    QByteArray &bytes = entries_.addStream(path, static_cast<qint64>(status.cbSize.QuadPart));
    ULONG done = 0;
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &done))
        || static_cast<qsizetype>(done) != bytes.size()) {
        damagedContainer();
    }
}

void ContainerReader::readStorage(IStorage &storage, const QStringList &path)
{
    STATSTG status{};
    const auto names = made<IEnumSTATSTG>([&](IEnumSTATSTG **object) { return storage.EnumElements(0, nullptr, 0, object); });
    if (!names || FAILED(storage.Stat(&status, STATFLAG_NONAME))) {
        damagedContainer();
    }
    entries_.addStorage(path, QByteArray(reinterpret_cast<const char *>(&status.clsid), CompoundEntries::ClassIdLength));
    for (STATSTG element{}; names->Next(1, &element, nullptr) == S_OK;) {
        const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> name(element.pwcsName, CoTaskMemFree);
        const QStringList childPath = path + QStringList{QString::fromWCharArray(name.get())};
        if (element.type == STGTY_STREAM) {
            readStream(storage, name.get(), childPath);
            continue;
        }
        const auto child = made<IStorage>(
            [&](IStorage **object) { return storage.OpenStorage(name.get(), nullptr, Reading, nullptr, 0, object); });
        if (!child) {
            damagedContainer();
        }
        readStorage(*child, childPath);
    }
}

class ContainerWriter
{
public:
    explicit ContainerWriter(ILockBytes &memory)
    {
        storages_[{}] =
            made<IStorage>([&](IStorage **object) { return StgCreateDocfileOnILockBytes(&memory, Writing, 0, object); });
        require(storages_[{}] != nullptr);
    }

    void add(const CompoundEntry &entry)
    {
        if (entry.path.isEmpty()) {
            setClass(*storages_[{}], entry.classId);
            return;
        }
        const auto parent = storages_.find(entry.path.first(entry.path.size() - 1));
        if (parent == storages_.end()) {
            damagedContainer();
        }
        require(entry.path.last().size() <= MaxName);
        entry.isStorage ? addStorage(*parent->second, entry) : addStream(*parent->second, entry);
    }

    void finish()
    {
        // The deepest first.
        for (auto storage = storages_.rbegin(); storage != storages_.rend(); ++storage) {
            require(SUCCEEDED(storage->second->Commit(STGC_DEFAULT)));
            storage->second.reset();
        }
    }

private:
    static void require(bool isDone)
    {
        if (!isDone) {
            throw ExcelError(QStringLiteral("its container could not be written."));
        }
    }

    static void setClass(IStorage &storage, const QByteArray &classId)
    {
        CLSID id{};
        if (classId.size() == CompoundEntries::ClassIdLength) {
            std::memcpy(&id, classId.constData(), sizeof id);
            require(SUCCEEDED(storage.SetClass(id)));
        }
    }

    void addStorage(IStorage &parent, const CompoundEntry &entry)
    {
        auto storage = made<IStorage>(
            [&](IStorage **object) { return parent.CreateStorage(wide(entry.path.last()), Writing, 0, 0, object); });
        require(storage != nullptr);
        setClass(*storage, entry.classId);
        storages_[entry.path] = std::move(storage);
    }

    static void addStream(IStorage &parent, const CompoundEntry &entry)
    {
        const auto stream =
            made<IStream>([&](IStream **object) { return parent.CreateStream(wide(entry.path.last()), Writing, 0, 0, object); });
        ULONG done = 0;
        require(stream && SUCCEEDED(stream->Write(entry.bytes.constData(), static_cast<ULONG>(entry.bytes.size()), &done))
                && static_cast<qsizetype>(done) == entry.bytes.size());
    }

    std::map<QStringList, Owned<IStorage>> storages_;
};

} // namespace

std::vector<CompoundEntry> readCompound(const QByteArray &bytes)
{
    checkHeader(bytes);
    const Owned<ILockBytes> memory = newMemory();
    ULONG done = 0;
    if (FAILED(memory->WriteAt({}, bytes.constData(), static_cast<ULONG>(bytes.size()), &done))) {
        damagedContainer();
    }
    const auto root = made<IStorage>(
        [&](IStorage **object) { return StgOpenStorageOnILockBytes(memory.get(), nullptr, Reading, nullptr, 0, object); });
    if (!root) {
        damagedContainer();
    }
    ContainerReader reader(bytes.size());
    reader.readStorage(*root, {});
    return reader.take();
}

QByteArray writeCompound(const std::vector<CompoundEntry> &entries)
{
    const Owned<ILockBytes> memory = newMemory();
    ContainerWriter writer(*memory);
    for (const CompoundEntry &entry : entries) {
        writer.add(entry);
    }
    writer.finish();
    STATSTG status{};
    QByteArray bytes;
    ULONG done = 0;
    if (SUCCEEDED(memory->Stat(&status, STATFLAG_NONAME))) {
        bytes.resize(static_cast<qsizetype>(status.cbSize.QuadPart));
    }
    if (bytes.isEmpty() || FAILED(memory->ReadAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &done))) {
        throw ExcelError(QStringLiteral("its container could not be written."));
    }
    return bytes;
}

} // namespace excel
