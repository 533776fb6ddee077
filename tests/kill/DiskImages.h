// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/DiskCalls.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <map>
#include <random>
#include <utility>
#include <vector>

/// What the disk below a folder may hold when the power fails after some recorded calls. A file's content is safe after a sync of
/// the file, its name after one of its folder; of all else any part may survive, in sectors of 512 bytes.
class DiskImages
{
public:
    /// Which of the changes that were not synced survive.
    enum class Survivors { None, All, Contents, Names, Random };
    /// Files by path below the folder; null for a folder.
    using Image = QMap<QByteArray, QByteArray>;

    /// What the folder holds now is safe. Syncs of the ignored kinds do nothing, which a test must then find to be a fault.
    explicit DiskImages(const QString &folder, diskCalls::Kinds ignored = {});

    void apply(const diskCalls::Call &call);
    Image image(Survivors survivors, std::mt19937 &random) const;
    static void write(const Image &image, const QString &folder);

private:
    struct Change {
        qint64 offset;
        QByteArray bytes;
        bool isTruncation;
    };
    struct Node {
        bool isFolder = false;
        QByteArray safe;
        std::vector<Change> pending;
    };
    /// Folder and name there.
    using Entry = std::pair<int, QByteArray>;
    /// Entries that change in one step, with their new nodes; NoNode for an entry that goes.
    using NameChange = std::vector<std::pair<Entry, int>>;
    static constexpr int NoNode = -1;
    static constexpr int Root = 0;

    void load(const QString &path, int folder);
    int add(bool isFolder);
    QByteArray below(const QByteArray &path) const;
    int nodeOf(const QByteArray &path) const;
    Entry entryOf(const QByteArray &path) const;
    void change(NameChange change);
    void syncFolder(int folder);
    static void applyTo(QByteArray &content, const Change &change);
    static void applyNames(std::map<Entry, int> &names, const NameChange &change);
    QByteArray content(const Node &node, Survivors survivors, std::mt19937 &random) const;
    void collect(Image &image, const std::map<Entry, int> &names, int folder, const QByteArray &prefix, Survivors survivors,
                 std::mt19937 &random) const;

    QByteArray folder_;
    diskCalls::Kinds ignored_;
    std::vector<Node> nodes_;
    std::map<Entry, int> names_;
    std::map<Entry, int> safeNames_;
    std::vector<NameChange> pendingNames_;
};
