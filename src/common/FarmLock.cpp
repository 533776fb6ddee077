// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/FarmLock.h"

#include "platform/basic/Clock.h"
#include "platform/basic/FileLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryFile>

#include <utility>

namespace
{

constexpr auto Computer = "computer";
constexpr auto User = "user";
constexpr auto Process = "process";
constexpr auto Since = "since";
constexpr auto Machine = "machine";

/// Two computers may have the same name.
QString machine()
{
    const QByteArray unique = QSysInfo::machineUniqueId();
    return QSysInfo::machineHostName() + u'/' + QString::fromLatin1(unique.left(8));
}

QString userName()
{
    return qEnvironmentVariable("USER", qEnvironmentVariable("USERNAME", QDir::home().dirName()));
}

QByteArray ownText()
{
    QString text;
    for (const auto &[key, value] :
         {std::pair{Computer, QSysInfo::machineHostName()}, std::pair{User, userName()},
          std::pair{Process, QString::number(QCoreApplication::applicationPid())},
          std::pair{Since, basic::Clock::now().toString(Qt::ISODate)}, std::pair{Machine, machine()}}) {
        text += QStringLiteral("%1=%2\n").arg(QLatin1String(key), value);
    }
    return text.toUtf8();
}

/// Nothing for an empty file: its holder gave the lock back.
std::optional<FarmHolder> holderIn(const QByteArray &text)
{
    const QStringList lines = QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
    if (lines.isEmpty()) {
        return std::nullopt;
    }
    const auto value = [&lines](const char *key) {
        const QString start = QLatin1String(key) + u'=';
        for (const QString &line : lines) {
            if (line.startsWith(start)) {
                return line.mid(start.size());
            }
        }
        return QString();
    };
    return FarmHolder{value(Computer), value(User), QDateTime::fromString(value(Since), Qt::ISODate), value(Process).toLongLong(),
                      value(Machine) == machine()};
}

/// How long ago the file was written, by the clock that the folder's file system uses for new files.
FarmLock::Milliseconds age(const QString &path)
{
    QTemporaryFile probe(path + QStringLiteral(".XXXXXX"));
    const QDateTime now = probe.open() ? QFileInfo(probe.fileName()).lastModified() : QDateTime::currentDateTime();
    return FarmLock::Milliseconds(QFileInfo(path).lastModified().msecsTo(now));
}

} // namespace

QString FarmHolder::text() const
{
    if (computer.isEmpty()) {
        return QStringLiteral("another program");
    }
    return QStringLiteral("%1 on %2 since %3")
        .arg(user, computer, since.toLocalTime().toString(QStringLiteral("yyyy/MM/dd HH:mm")));
}

FarmLock::Attempt FarmLock::tryLock(const QString &databasesFolder, Milliseconds heartbeat)
{
    const QString path = QDir(databasesFolder).filePath(QStringLiteral("PestMon.lock"));
    std::unique_ptr<basic::FileLock> file = basic::FileLock::tryLock(path);
    if (!file) {
        QFile held(path);
        const QByteArray text = held.open(QIODevice::ReadOnly) ? held.readAll() : QByteArray();
        return {nullptr, holderIn(text).value_or(FarmHolder())};
    }
    std::optional<FarmHolder> former = holderIn(file->text());
    if (former && !former->isThisComputer && age(path) < Stale) {
        return {nullptr, former};
    }
    QByteArray text = ownText();
    file->setText(text);
    return {std::unique_ptr<FarmLock>(new FarmLock(std::move(file), std::move(text), heartbeat)), former};
}

FarmLock::FarmLock(std::unique_ptr<basic::FileLock> file, QByteArray text, Milliseconds heartbeat)
    : file_(std::move(file)), text_(std::move(text)), heartbeat_([this, heartbeat] { keepAlive(heartbeat); })
{
}

FarmLock::~FarmLock()
{
    {
        const std::lock_guard guard(mutex_);
        isEnding_ = true;
    }
    wakeUp_.notify_all();
    heartbeat_.join();
    if (!isLost_) {
        file_->setText({});
    }
}

void FarmLock::setLostHandler(std::function<void()> handler)
{
    const std::lock_guard guard(mutex_);
    lostHandler_ = std::move(handler);
}

void FarmLock::keepAlive(Milliseconds heartbeat)
{
    std::unique_lock lock(mutex_);
    while (!wakeUp_.wait_for(lock, heartbeat, [this] { return isEnding_; })) {
        const QByteArray present = file_->text();
        isLost_ = !present.isEmpty() && present != text_;
        if (isLost_) {
            if (lostHandler_) {
                lostHandler_();
            }
            return;
        }
        file_->setText(text_);
    }
}
