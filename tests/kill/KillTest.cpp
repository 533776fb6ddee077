// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashChild.h"
#include "WriteLog.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>

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

struct Tally {
    int kills = 0;
    int atStart = 0;
    int insideWrite = 0;
    int withJournal = 0;
    QMap<QString, int> byKind;
    int faults = 0;
};

/// The process of a crash child and the pipe on which it reports.
class Worker
{
public:
    Worker(const QString &appPath, unsigned int seed)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            qFatal("no pipe");
        }
        const QByteArray folder = appPath.toUtf8();
        const QByteArray number = QByteArray::number(seed);
        process_ = ::fork();
        if (process_ == 0) {
            const int nowhere = ::open("/dev/null", O_WRONLY);
            ::dup2(nowhere, STDOUT_FILENO);
            ::dup2(ends[1], ReportsFd);
            ::execl("/proc/self/exe", "KillTest", "--crash-child", folder.constData(), "--seed", number.constData(), nullptr);
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

    /// False when it had ended before, which it never does by itself.
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
    QByteArray buffer_;
};

/// Chooses the moments: most within a write, which takes a few milliseconds, some at any time, some while the program starts.
class KillTiming
{
public:
    explicit KillTiming(unsigned int seed) : random_(seed) {}

    /// Lets the crash child work up to the moment; false when it fell silent before. What it reports goes to the write log.
    bool wait(Worker &worker, WriteLog &writeLog, Tally &tally)
    {
        const int choice = below(100);
        if (choice < 10) {
            ++tally.atStart;
            pause(below(250'000));
            return true;
        }
        int writes = 1 + below(20);
        QElapsedTimer since;
        for (QString line = worker.nextLine(SilenceMilliseconds); !line.isEmpty(); line = worker.nextLine(SilenceMilliseconds)) {
            writeLog.note(line);
            if (!writeLog.writeIsOpen()) {
                learn(since);
                continue;
            }
            kind_ = writeLog.openKind();
            since.start();
            if (--writes == 0) {
                pause(below(choice < 25 ? 100'000 : std::max(100, usual_.value(kind_, 5000))));
                return true;
            }
        }
        return false;
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    static void pause(int microseconds) { ::usleep(static_cast<useconds_t>(microseconds)); }

    void learn(const QElapsedTimer &since)
    {
        if (!since.isValid()) {
            return;
        }
        int &usual = usual_[kind_];
        const int took = static_cast<int>(since.nsecsElapsed() / 1000);
        usual = usual == 0 ? took : (7 * usual + took) / 8;
    }

    std::mt19937 random_;
    QString kind_;
    /// Microseconds that a write of a kind has been taking.
    QHash<QString, int> usual_;
};

void killOnce(WriteLog &writeLog, KillTiming &killTiming, unsigned int seed, Tally &tally)
{
    Worker worker(writeLog.appPath(), seed);
    const bool wasAlive = killTiming.wait(worker, writeLog, tally);
    QStringList faults;
    if (!worker.kill() || !wasAlive) {
        faults.append(QStringLiteral("the crash child ended by itself"));
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
    faults += writeLog.faults();
    for (const QString &fault : faults) {
        std::printf("FAULT after kill %d (crash child %u): %s\n", tally.kills, seed, qPrintable(fault));
    }
    tally.faults += static_cast<int>(faults.size());
}

int killMany(int kills, unsigned int seed)
{
    Tally tally;
    KillTiming killTiming(seed);
    std::unique_ptr<WriteLog> writeLog;
    for (int i = 0; i < kills; ++i) {
        if (i % KillsPerFarm == 0) {
            writeLog = std::make_unique<WriteLog>();
        }
        killOnce(*writeLog, killTiming, seed + static_cast<unsigned int>(i), tally);
    }
    std::printf("%d kills (seed %u), %d while starting, %d inside an open write, %d with a journal left behind\n", tally.kills,
                seed, tally.atStart, tally.insideWrite, tally.withJournal);
    for (auto kind = tally.byKind.begin(); kind != tally.byKind.end(); ++kind) {
        std::printf("  inside %s: %d\n", qPrintable(kind.key()), kind.value());
    }
    std::printf("%d faults\n", tally.faults);
    return tally.faults == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("kills"), QStringLiteral("How often to kill."), QStringLiteral("number"), QStringLiteral("20")},
         {QStringLiteral("seed"), QStringLiteral("Where the random numbers begin."), QStringLiteral("number"),
          QStringLiteral("1")},
         {QStringLiteral("crash-child"), QStringLiteral("Be the program that is killed."), QStringLiteral("folder")}});
    parser.process(application);
    const unsigned int seed = parser.value(QStringLiteral("seed")).toUInt();
    if (parser.isSet(QStringLiteral("crash-child"))) {
        return crashChild::workUntilKilled(
            {parser.value(QStringLiteral("crash-child")), QStringLiteral(JET_FIXTURES), seed, ReportsFd});
    }
    return killMany(parser.value(QStringLiteral("kills")).toInt(), seed);
}
