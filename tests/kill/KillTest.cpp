// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashChild.h"
#include "WriteLog.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMap>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <random>

namespace
{

/// Kills on one farm, before a new one is made.
constexpr int KillsPerFarm = 40;
constexpr int ReportsFd = 3;
constexpr int SilenceMilliseconds = 60000;
/// A kill lies within one of so many first writes of a crash child.
constexpr unsigned int MaxWrites = 20;

struct Task {
    int kills = 40;
    unsigned int seed = 1;
    /// Proves that the kills find what they are to find.
    bool withoutJournal = false;
};

struct Tally {
    int kills = 0;
    int atStart = 0;
    int insideWrite = 0;
    int withJournal = 0;
    QMap<QString, int> byKind;
    int faults = 0;
    int lostChildren = 0;
};

/// The process of a crash child and the pipe on which it reports.
class Worker
{
public:
    /// With `lastWrite` it kills itself.
    Worker(const QString &appPath, unsigned int seed, int lastWrite, bool withoutJournal)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            qFatal("no pipe");
        }
        const QByteArray folder = appPath.toUtf8();
        const QByteArray number = QByteArray::number(seed);
        const QByteArray last = QByteArray::number(lastWrite);
        const char *journal = withoutJournal ? "--without-journal" : nullptr;
        process_ = ::fork();
        if (process_ == 0) {
            const int nowhere = ::open("/dev/null", O_WRONLY);
            ::dup2(nowhere, STDOUT_FILENO);
            ::dup2(ends[1], ReportsFd);
            ::execl("/proc/self/exe", "KillTest", "--crash-child", folder.constData(), "--seed", number.constData(),
                    "--last-write", last.constData(), journal, nullptr);
            ::_exit(127);
        }
        ::close(ends[1]);
        pipe_ = ends[0];
    }
    ~Worker() { ::close(pipe_); }
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// The next line, empty when none came in time or the crash child is gone.
    QString nextLine(int milliseconds)
    {
        while (!buffer_.contains('\n')) {
            pollfd wait{pipe_, POLLIN, 0};
            std::array<char, 512> bytes{};
            const ssize_t count = ::poll(&wait, 1, milliseconds) > 0 ? ::read(pipe_, bytes.data(), bytes.size()) : 0;
            hasEnded_ = hasEnded_ || (count == 0 && wait.revents != 0);
            if (count <= 0) {
                return {};
            }
            buffer_.append(bytes.data(), static_cast<qsizetype>(count));
        }
        const qsizetype end = buffer_.indexOf('\n');
        QString line = QString::fromUtf8(buffer_.constData(), end);
        buffer_.remove(0, end + 1);
        return line;
    }

    bool hasEnded() const { return hasEnded_; }

    /// False when it had ended before otherwise than by a kill.
    bool kill()
    {
        ::kill(process_, SIGKILL);
        int status = 0;
        ::waitpid(process_, &status, 0);
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private:
    pid_t process_ = -1;
    int pipe_ = -1;
    bool hasEnded_ = false;
    QByteArray buffer_;
};

/// Reads the reports up to the end of a crash child that kills itself; false when it falls silent before.
bool readToEnd(Worker &worker, WriteLog &writeLog)
{
    for (QString line = worker.nextLine(SilenceMilliseconds); !line.isEmpty(); line = worker.nextLine(SilenceMilliseconds)) {
        writeLog.note(line);
    }
    return worker.hasEnded();
}

/// Lets a crash child work for some writes and for another moment.
void readSome(Worker &worker, WriteLog &writeLog, unsigned int writes, useconds_t microseconds)
{
    while (writes > 0) {
        const QString line = worker.nextLine(SilenceMilliseconds);
        if (line.isEmpty()) {
            return;
        }
        writeLog.note(line);
        writes -= writeLog.writeIsOpen() ? 1 : 0;
    }
    ::usleep(microseconds);
}

/// Most kills lie at a call inside a write, some at any time, some while the program starts.
void killOnce(WriteLog &writeLog, std::mt19937 &random, const Task &task, Tally &tally)
{
    const unsigned int seed = task.seed + static_cast<unsigned int>(tally.kills);
    const auto choice = static_cast<unsigned int>(random() % 100);
    const auto writes = static_cast<unsigned int>(1 + random() % MaxWrites);
    const bool isInside = choice >= 20;
    // The first write is the block copy at the start.
    const int lastWrite = !isInside ? 0 : choice < 30 ? 1 : static_cast<int>(writes);
    Worker worker(writeLog.appPath(), seed, lastWrite, task.withoutJournal);
    bool isKilled = true;
    if (isInside) {
        isKilled = readToEnd(worker, writeLog);
    } else if (choice < 10) {
        ++tally.atStart;
        readSome(worker, writeLog, 0, static_cast<useconds_t>(random() % 250'000));
    } else {
        readSome(worker, writeLog, writes, static_cast<useconds_t>(random() % 100'000));
    }
    if (!worker.kill() || !isKilled) {
        std::printf("FAULT: the crash child %u ended by itself or fell silent\n", seed);
        ++tally.lostChildren;
    }
    for (QString line = worker.nextLine(0); !line.isEmpty(); line = worker.nextLine(0)) {
        writeLog.note(line);
    }
    ++tally.kills;
    tally.withJournal += writeLog.hotJournal() ? 1 : 0;
    if (writeLog.writeIsOpen()) {
        ++tally.insideWrite;
        ++tally.byKind[writeLog.openKind()];
    }
    if (task.withoutJournal) {
        writeLog.removeJournal();
    }
    const QStringList faults = writeLog.faults();
    for (const QString &fault : faults) {
        std::printf("FAULT after kill %d (crash child %u): %s\n", tally.kills, seed, qPrintable(fault));
    }
    tally.faults += static_cast<int>(faults.size());
}

int killMany(const Task &task)
{
    Tally tally;
    std::mt19937 random(task.seed);
    std::unique_ptr<WriteLog> writeLog;
    // What follows a fault is no longer known.
    while (tally.kills < task.kills && (tally.faults == 0 || !task.withoutJournal)) {
        if (tally.kills % KillsPerFarm == 0) {
            writeLog = std::make_unique<WriteLog>();
        }
        killOnce(*writeLog, random, task, tally);
    }
    std::printf("%d kills (seed %u), %d while starting, %d inside an open write, %d with a journal left behind\n", tally.kills,
                task.seed, tally.atStart, tally.insideWrite, tally.withJournal);
    for (auto kind = tally.byKind.begin(); kind != tally.byKind.end(); ++kind) {
        std::printf("  inside %s: %d\n", qPrintable(kind.key()), kind.value());
    }
    std::printf("%d faults\n", tally.faults);
    return tally.lostChildren == 0 && (tally.faults == 0) != task.withoutJournal ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false;default.warning=false");
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("kills"), QStringLiteral("How often to kill."), QStringLiteral("number"), QStringLiteral("40")},
         {QStringLiteral("seed"), QStringLiteral("Where the random numbers begin."), QStringLiteral("number"),
          QStringLiteral("1")},
         {QStringLiteral("without-journal"), QStringLiteral("Write without a journal; succeeds when that is found.")},
         {QStringLiteral("crash-child"), QStringLiteral("Be the program that is killed."), QStringLiteral("folder")},
         {QStringLiteral("last-write"), QStringLiteral("The write in which it kills itself."), QStringLiteral("number")}});
    parser.process(application);
    const unsigned int seed = parser.value(QStringLiteral("seed")).toUInt();
    const bool withoutJournal = parser.isSet(QStringLiteral("without-journal"));
    if (parser.isSet(QStringLiteral("crash-child"))) {
        return crashChild::workUntilKilled({parser.value(QStringLiteral("crash-child")), QStringLiteral(JET_FIXTURES), seed,
                                            ReportsFd, parser.value(QStringLiteral("last-write")).toInt(), withoutJournal});
    }
    return killMany({parser.value(QStringLiteral("kills")).toInt(), seed, withoutJournal});
}
