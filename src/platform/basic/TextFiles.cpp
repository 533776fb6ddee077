// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/TextFiles.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace basic
{

namespace
{

// Bytes 0x80 to 0x9F of Windows-1252; the five unused bytes are the control characters of the same number.
constexpr std::array<char16_t, 32> UpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromWindows1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F) {
            c = UpperControls[c.unicode() - 0x80U];
        }
    }
    return text;
}

QString withSlashes(QString path)
{
    return path.replace(u'\\', u'/');
}

/// The entry of `folder` called `name`, an exact match before one in other letter case.
std::optional<QString> findEntry(const QString &folder, const QString &name)
{
    const QDir directory(folder);
    if (directory.exists(name)) {
        return directory.filePath(name);
    }
    const QStringList entries =
        directory.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const QString &entry) { return entry.compare(name, Qt::CaseInsensitive) == 0; });
    return found == entries.end() ? std::nullopt : std::optional(directory.filePath(*found));
}

struct FoundPath {
    QString path;
    bool complete = true;
};

/// "/", on Windows "C:/" or "//SERVER/SHARE/"; empty for a relative path.
QString rootOf(const QString &path)
{
#ifdef Q_OS_WIN
    static const QRegularExpression root(QStringLiteral("^([A-Za-z]:/|//[^/]+/[^/]+(/|$))"));
    if (const QRegularExpressionMatch match = root.match(path); match.hasMatch()) {
        return match.captured();
    }
#endif
    return path.startsWith(u'/') ? QStringLiteral("/") : QString();
}

/// Follows the parts of a path as far as they exist; the rest is appended unchanged.
FoundPath followPath(const QString &requested)
{
    const QString path = withSlashes(requested);
    const QString root = rootOf(path);
    FoundPath found{root.isEmpty() ? QStringLiteral(".") : root, !path.isEmpty()};
    for (const QString &part : path.mid(root.size()).split(u'/', Qt::SkipEmptyParts)) {
        const auto entry = found.complete ? findEntry(found.path, part) : std::nullopt;
        found.complete = found.complete && entry;
        found.path = entry ? *entry : found.path + u'/' + part;
    }
    return found;
}

QByteArray readWhole(const QString &requested)
{
    const auto path = findPath(requested);
    if (!path) {
        throw RunTimeError(ErrorNumber::FileNotFound, QStringLiteral("File not found: %1").arg(requested));
    }
    QFile file(*path);
    if (QFileInfo(*path).isDir() || !file.open(QIODevice::ReadOnly)) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The file %1 cannot be read.").arg(*path));
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The file %1 cannot be read.").arg(*path));
    }
    return bytes;
}

} // namespace

std::optional<QString> findPath(const QString &path)
{
    const FoundPath found = followPath(path);
    return found.complete ? std::optional(QDir::cleanPath(found.path)) : std::nullopt;
}

QString pathForWriting(const QString &path)
{
    return QDir::cleanPath(followPath(path).path);
}

QString decodeText(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    // An unfinished sequence at the end is an error only once the decoder is flushed, so the decoded text is checked for it.
    const bool wellFormed =
        !decoder.hasError() && text.toUtf8().size() + (bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0) == bytes.size();
    return wellFormed ? text : fromWindows1252(bytes);
}

QString readFirstItem(const QString &path)
{
    const QString text = decodeText(readWhole(path));
    if (text.isEmpty()) {
        throw RunTimeError(ErrorNumber::InputPastEnd, QStringLiteral("The file %1 is empty.").arg(path));
    }
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    if (first != text.end() && *first == u'"') {
        return QString(first + 1, std::find(first + 1, text.end(), u'"') - (first + 1));
    }
    const auto last =
        std::find_if(first, text.end(), [](QChar c) { return c == u',' || c == u'\r' || c == u'\n' || c == QChar(0x1A); });
    return QString(first, last - first).trimmed();
}

std::int32_t readFirstLong(const QString &path)
{
    const QString item = readFirstItem(path).trimmed();
    if (item.isEmpty()) {
        return 0;
    }
    const bool isPlain = std::all_of(item.begin(), item.end(), [](QChar c) { return QStringView(u"0123456789+-.").contains(c); });
    bool isNumber = false;
    const double value = QLocale::c().toDouble(item, &isNumber);
    const QString description =
        QStringLiteral("The file %1 holds \"%2\" where a number is expected. Correct or delete it.").arg(path, item);
    if (!isPlain || !isNumber) {
        throw RunTimeError(ErrorNumber::TypeMismatch, description);
    }
    try {
        return toLong32(value);
    } catch (const RunTimeError &) {
        throw RunTimeError(ErrorNumber::Overflow, description);
    }
}

void writeLine(const QString &path, const QString &line)
{
    const QString file = pathForWriting(path);
    const bool isNew = !QFileInfo::exists(file);
    if (const QString failure = writeWholeFile(file, line.toUtf8() + '\n'); !failure.isEmpty()) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The file %1 cannot be written: %2").arg(file, failure));
    }
    if (isNew) {
        followFolder(file);
    }
}

} // namespace basic
