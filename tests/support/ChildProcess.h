// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <map>

/// A second process for a test: the test program itself in one of its roles. It reports by lines on its standard output.
class ChildProcess
{
public:
    using Role = int (*)(const QStringList &arguments);
    static constexpr char RoleOption[] = "--role";

    explicit ChildProcess(const QString &role, const QStringList &arguments = {})
    {
        process_.start(QCoreApplication::applicationFilePath(), QStringList{RoleOption, role} + arguments);
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    qint64 id() const { return process_.processId(); }
    /// The next line it reports; empty when it has ended or reports none in time.
    QByteArray line()
    {
        constexpr int Longest = 60000;
        while (!process_.canReadLine() && process_.waitForReadyRead(Longest)) {}
        return process_.readLine().trimmed();
    }
    /// Waits for its end.
    int exitCode()
    {
        return process_.waitForFinished() && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }
    /// Without any notice to the process.
    void kill()
    {
        process_.kill();
        process_.waitForFinished();
    }

    /// For roles.
    static void report(const char *line)
    {
        std::puts(line);
        std::fflush(stdout);
    }
    /// For roles: until it is killed or the test has ended.
    static void waitForTheEnd()
    {
        while (std::getchar() != EOF) {}
    }

    /// The main function of a test with roles.
    template <typename Test> static int runTestOrRole(int count, char **texts, const std::map<QString, Role> &roles)
    {
        QCoreApplication application(count, texts);
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.value(1) == QLatin1String(RoleOption)) {
            return roles.at(arguments.value(2))(arguments.mid(3));
        }
        Test test;
        return QTest::qExec(&test, count, texts);
    }

private:
    QProcess process_;
};
