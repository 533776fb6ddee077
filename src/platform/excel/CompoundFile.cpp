// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/CompoundFile.h"

#include "platform/excel/CompoundEntries.h"
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
    explicit ContainerReader(qsizetype fileSize) : entries_(fileSize) {}

    void readStorage(GsfInfile *storage, const QStringList &path);
    std::vector<CompoundEntry> take() { return entries_.take(); }

private:
    void readStream(GsfInput *input, const QStringList &path);

    CompoundEntries entries_;
};

void ContainerReader::readStream(GsfInput *input, const QStringList &path)
{
    QByteArray &bytes = entries_.addStream(path, gsf_input_size(input));
    if (!bytes.isEmpty()
        && !gsf_input_read(input, static_cast<std::size_t>(bytes.size()), reinterpret_cast<guint8 *>(bytes.data()))) {
        damagedContainer();
    }
}

void ContainerReader::readStorage(GsfInfile *storage, const QStringList &path)
{
    QByteArray classId(CompoundEntries::ClassIdLength, '\0');
    gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(storage), reinterpret_cast<guint8 *>(classId.data()));
    entries_.addStorage(path, classId);
    const int count = gsf_infile_num_children(storage);
    for (int number = 0; number < count; ++number) {
        const Owned<GsfInput> child(gsf_infile_child_by_index(storage, number));
        const char *name = gsf_infile_name_by_index(storage, number);
        if (!child || !name) {
            damagedContainer();
        }
        const QStringList childPath = path + QStringList{QString::fromUtf8(name)};
        if (GSF_IS_INFILE_MSOLE(child.get()) && gsf_infile_num_children(GSF_INFILE(child.get())) >= 0) {
            readStorage(GSF_INFILE(child.get()), childPath);
        } else {
            readStream(child.get(), childPath);
        }
    }
}
} // namespace

std::vector<CompoundEntry> readCompound(const QByteArray &bytes)
{
    gsf_init();
    const QuietLibrary quietLibrary;
    const Owned<GsfInput> input(gsf_input_memory_new(reinterpret_cast<const guint8 *>(bytes.constData()), bytes.size(), FALSE));
    const Owned<GsfInfile> root(gsf_infile_msole_new(input.get(), nullptr));
    if (!root) {
        damagedContainer();
    }
    ContainerReader reader(bytes.size());
    reader.readStorage(root.get(), {});
    return reader.take();
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
                damagedContainer();
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
        if (entry.classId.size() == CompoundEntries::ClassIdLength) {
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
