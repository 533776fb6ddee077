// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CompoundFile.h"

#include "platform/excel/ExcelError.h"

#include <gsf/gsf.h>

#include <array>
#include <map>
#include <memory>
#include <utility>

namespace excel
{

namespace
{
struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object> using Owned = std::unique_ptr<Object, Unref>;

constexpr qsizetype Deepest = 16;
constexpr std::size_t MaxEntries = 4096;
constexpr qsizetype ClassIdLength = 16;

[[noreturn]] void damaged()
{
    throw ExcelError(QStringLiteral("its container is damaged."));
}

/// Suppresses what the library prints to stderr about damage; the caller gets an error instead.
class QuietLibrary
{
public:
    QuietLibrary()
    {
        for (std::size_t at = 0; at < Domains.size(); ++at) {
            handlers_[at] = g_log_set_handler(
                Domains[at], Levels, [](const gchar *, GLogLevelFlags, const gchar *, gpointer) {}, nullptr);
        }
    }
    ~QuietLibrary()
    {
        for (std::size_t at = 0; at < Domains.size(); ++at) {
            g_log_remove_handler(Domains[at], handlers_[at]);
        }
    }
    Q_DISABLE_COPY_MOVE(QuietLibrary)

private:
    static constexpr std::array<const char *, 3> Domains{nullptr, "libgsf", "libgsf:msole"};
    static constexpr auto Levels = static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE);
    std::array<guint, Domains.size()> handlers_{};
};

class ContainerReader
{
public:
    /// Entries of an undamaged container share no bytes, so together they are no larger than the file.
    explicit ContainerReader(qsizetype fileSize) : bytesLeft_(fileSize) {}

    void readStorage(GsfInfile *storage, const QStringList &path);
    std::vector<CompoundEntry> takeEntries() { return std::move(entries_); }

private:
    QByteArray bytesOf(GsfInput *input);
    void add(CompoundEntry entry);

    qsizetype bytesLeft_;
    std::vector<CompoundEntry> entries_;
};

QByteArray ContainerReader::bytesOf(GsfInput *input)
{
    const gsf_off_t size = gsf_input_size(input);
    if (size < 0 || size > bytesLeft_) {
        damaged();
    }
    if (size == 0) {
        return {};
    }
    bytesLeft_ -= size;
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    if (!gsf_input_read(input, static_cast<std::size_t>(size), reinterpret_cast<guint8 *>(bytes.data()))) {
        damaged();
    }
    return bytes;
}

void ContainerReader::add(CompoundEntry entry)
{
    if (entries_.size() >= MaxEntries) {
        damaged();
    }
    entries_.push_back(std::move(entry));
}

void ContainerReader::readStorage(GsfInfile *storage, const QStringList &path)
{
    if (path.size() > Deepest) {
        damaged();
    }
    QByteArray classId(ClassIdLength, '\0');
    gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(storage), reinterpret_cast<guint8 *>(classId.data()));
    add({path, true, {}, classId});
    const int count = gsf_infile_num_children(storage);
    for (int number = 0; number < count; ++number) {
        const Owned<GsfInput> child(gsf_infile_child_by_index(storage, number));
        const char *name = gsf_infile_name_by_index(storage, number);
        if (!child || !name) {
            damaged();
        }
        const QStringList childPath = path + QStringList{QString::fromUtf8(name)};
        if (GSF_IS_INFILE_MSOLE(child.get()) && gsf_infile_num_children(GSF_INFILE(child.get())) >= 0) {
            readStorage(GSF_INFILE(child.get()), childPath);
        } else {
            add({childPath, false, bytesOf(child.get()), {}});
        }
    }
}
} // namespace

bool isStream(const CompoundEntry &entry, QLatin1String name)
{
    return !entry.isStorage && entry.path.size() == 1 && entry.path.first().compare(name, Qt::CaseInsensitive) == 0;
}

bool isCompound(const QByteArray &bytes)
{
    return bytes.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

std::vector<CompoundEntry> readCompound(const QByteArray &bytes)
{
    gsf_init();
    const QuietLibrary quietLibrary;
    const Owned<GsfInput> input(gsf_input_memory_new(reinterpret_cast<const guint8 *>(bytes.constData()), bytes.size(), FALSE));
    const Owned<GsfInfile> root(gsf_infile_msole_new(input.get(), nullptr));
    if (!root) {
        damaged();
    }
    ContainerReader reader(bytes.size());
    reader.readStorage(root.get(), {});
    return reader.takeEntries();
}

QByteArray writeCompound(const std::vector<CompoundEntry> &entries)
{
    gsf_init();
    const Owned<GsfOutput> memory(gsf_output_memory_new());
    std::map<QStringList, Owned<GsfOutfile>> storages;
    std::vector<GsfOutfile *> order;
    bool written = true;
    for (const CompoundEntry &entry : entries) {
        if (entry.path.isEmpty()) {
            storages[entry.path].reset(gsf_outfile_msole_new(memory.get()));
        } else {
            const auto parent = storages.find(entry.path.first(entry.path.size() - 1));
            if (parent == storages.end()) {
                damaged();
            }
            const QByteArray name = entry.path.last().toUtf8();
            Owned<GsfOutput> child(gsf_outfile_new_child(parent->second.get(), name.constData(), entry.isStorage));
            if (!entry.isStorage) {
                written = child
                    && gsf_output_write(child.get(), static_cast<std::size_t>(entry.bytes.size()),
                                        reinterpret_cast<const guint8 *>(entry.bytes.constData()))
                    && gsf_output_close(child.get()) && written;
                continue;
            }
            storages[entry.path].reset(GSF_OUTFILE(child.release()));
        }
        GsfOutfile *storage = storages[entry.path].get();
        if (entry.classId.size() == ClassIdLength) {
            gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(storage),
                                           reinterpret_cast<const guint8 *>(entry.classId.constData()));
        }
        order.push_back(storage);
    }
    for (auto storage = order.rbegin(); storage != order.rend(); ++storage) {
        written = gsf_output_close(GSF_OUTPUT(*storage)) && written;
    }
    if (!written) {
        throw ExcelError(QStringLiteral("its container could not be written."));
    }
    return {reinterpret_cast<const char *>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()))),
            static_cast<qsizetype>(gsf_output_size(memory.get()))};
}

} // namespace excel
