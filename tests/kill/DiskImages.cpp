// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskImages.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>

using diskCalls::Call;
using diskCalls::Kind;

namespace
{

constexpr qint64 SectorSize = 512;

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

DiskImages::DiskImages(const QString &folder, diskCalls::Kinds ignored) : folder_(QFile::encodeName(folder)), ignored_(ignored)
{
    add(true);
    load(folder, Root);
    safeNames_ = names_;
}

void DiskImages::load(const QString &path, int folder)
{
    for (const QFileInfo &info : QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const int node = add(info.isDir());
        names_[{folder, QFile::encodeName(info.fileName())}] = node;
        if (info.isDir()) {
            load(info.filePath(), node);
        } else {
            nodes_[static_cast<std::size_t>(node)].safe = read(info.filePath());
        }
    }
}

int DiskImages::add(bool isFolder)
{
    nodes_.push_back({isFolder, {}, {}});
    return static_cast<int>(nodes_.size()) - 1;
}

QByteArray DiskImages::below(const QByteArray &path) const
{
    return path.mid(folder_.size() + 1);
}

DiskImages::Entry DiskImages::entryOf(const QByteArray &path) const
{
    const QByteArray relative = below(path);
    const qsizetype slash = relative.lastIndexOf('/');
    return {slash < 0 ? Root : nodeOf(folder_ + '/' + relative.left(slash)), relative.mid(slash + 1)};
}

int DiskImages::nodeOf(const QByteArray &path) const
{
    int node = Root;
    for (const QByteArray &name : below(path).split('/')) {
        const auto found = names_.find({node, name});
        if (!name.isEmpty()) {
            node = found == names_.end() ? NoNode : found->second;
        }
    }
    return node;
}

void DiskImages::apply(const Call &call)
{
    if (call.kind == Kind::Note || ignored_.testFlag(call.kind)) {
        return;
    }
    const int node = call.path.isEmpty() ? NoNode : nodeOf(call.path);
    switch (call.kind) {
    case Kind::Create:
    case Kind::MakeFolder:
        return change({{entryOf(call.path), add(call.kind == Kind::MakeFolder)}});
    case Kind::Remove:
        return change({{entryOf(call.path), NoNode}});
    case Kind::Link:
        return change({{entryOf(call.target), node}});
    case Kind::Rename:
        return change({{entryOf(call.path), NoNode}, {entryOf(call.target), node}});
    default:
        break;
    }
    if (node == NoNode) {
        return;
    }
    Node &file = nodes_[static_cast<std::size_t>(node)];
    if (call.kind == Kind::SyncFolder) {
        syncFolder(node);
    } else if (call.kind == Kind::Sync) {
        for (const Change &change : file.pending) {
            applyTo(file.safe, change);
        }
        file.pending.clear();
    } else {
        file.pending.push_back({call.offset, call.bytes, call.kind == Kind::Truncate});
    }
}

void DiskImages::change(NameChange change)
{
    applyNames(names_, change);
    pendingNames_.push_back(std::move(change));
}

void DiskImages::syncFolder(int folder)
{
    const auto concerns = [folder](const NameChange &change) {
        return std::any_of(change.begin(), change.end(), [folder](const auto &entry) { return entry.first.first == folder; });
    };
    for (const NameChange &change : pendingNames_) {
        if (concerns(change)) {
            applyNames(safeNames_, change);
        }
    }
    pendingNames_.erase(std::remove_if(pendingNames_.begin(), pendingNames_.end(), concerns), pendingNames_.end());
}

void DiskImages::applyTo(QByteArray &content, const Change &change)
{
    if (change.isTruncation) {
        content.resize(std::min<qsizetype>(content.size(), change.offset));
    }
    const qsizetype end = change.offset + change.bytes.size();
    if (content.size() < end) {
        content.append(end - content.size(), '\0');
    }
    std::copy(change.bytes.begin(), change.bytes.end(), content.begin() + change.offset);
}

void DiskImages::applyNames(std::map<Entry, int> &names, const NameChange &change)
{
    for (const auto &[entry, node] : change) {
        if (node == NoNode) {
            names.erase(entry);
        } else {
            names[entry] = node;
        }
    }
}

QByteArray DiskImages::content(const Node &node, Survivors survivors, std::mt19937 &random) const
{
    QByteArray content = node.safe;
    if (survivors == Survivors::None || survivors == Survivors::Names) {
        return content;
    }
    std::bernoulli_distribution survives(std::array{0.1, 0.5, 0.9}[random() % 3]);
    for (const Change &change : node.pending) {
        if (survivors != Survivors::Random) {
            applyTo(content, change);
            continue;
        }
        if (change.isTruncation) {
            if (survives(random)) {
                applyTo(content, change);
            }
            continue;
        }
        for (qint64 at = change.offset; at < change.offset + change.bytes.size();) {
            const qint64 next = std::min((at / SectorSize + 1) * SectorSize, change.offset + change.bytes.size());
            if (survives(random)) {
                applyTo(content, {at, change.bytes.mid(at - change.offset, next - at), false});
            }
            at = next;
        }
    }
    return content;
}

DiskImages::Image DiskImages::image(Survivors survivors, std::mt19937 &random) const
{
    std::map<Entry, int> names = safeNames_;
    std::bernoulli_distribution survives(std::array{0.1, 0.5, 0.9}[random() % 3]);
    for (const NameChange &change : pendingNames_) {
        if (survivors == Survivors::All || survivors == Survivors::Names
            || (survivors == Survivors::Random && survives(random))) {
            applyNames(names, change);
        }
    }
    Image image;
    collect(image, names, Root, {}, survivors, random);
    return image;
}

void DiskImages::collect(Image &image, const std::map<Entry, int> &names, int folder, const QByteArray &prefix,
                         Survivors survivors, std::mt19937 &random) const
{
    for (auto name = names.lower_bound({folder, {}}); name != names.end() && name->first.first == folder; ++name) {
        const Node &node = nodes_[static_cast<std::size_t>(name->second)];
        const QByteArray path = prefix + name->first.second;
        const QByteArray bytes = node.isFolder ? QByteArray() : content(node, survivors, random);
        image.insert(path, !node.isFolder && bytes.isNull() ? QByteArray("") : bytes);
        if (node.isFolder) {
            collect(image, names, name->second, path + '/', survivors, random);
        }
    }
}

void DiskImages::write(const Image &image, const QString &folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    for (auto entry = image.begin(); entry != image.end(); ++entry) {
        const QString path = folder + u'/' + QFile::decodeName(entry.key());
        if (entry.value().isNull()) {
            QDir().mkpath(path);
            continue;
        }
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(entry.value()) != entry.value().size()) {
            qFatal("%s cannot be written", qPrintable(path));
        }
    }
}
