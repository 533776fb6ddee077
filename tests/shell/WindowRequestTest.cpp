// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/WindowRequest.h"

#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// What another program asks the running copy of each program for.
class WindowRequestTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void requestsArriveOnceAtTheirProgram();
    void requestBeforeTheStartIsOutOfDate();
    void folderWithoutRightIsReported();
};

void WindowRequestTest::requestsArriveOnceAtTheirProgram()
{
    const QTemporaryDir folder;
    const WindowRequest mainModule(folder.path(), WindowRequest::Program::MainModule);
    const WindowRequest monitoring(folder.path(), WindowRequest::Program::Monitoring);
    const QSignalSpy pages(&mainModule, &WindowRequest::requested);
    const QSignalSpy others(&monitoring, &WindowRequest::requested);
    for (const QString &page : {QStringLiteral("blocks"), QString()}) {
        WindowRequest::leave(folder.path(), WindowRequest::Program::MainModule, page);
        const qsizetype count = pages.count();
        QTRY_COMPARE(pages.count(), count + 1);
        QCOMPARE(pages.last().front().toString(), page);
        QVERIFY(QDir(folder.path()).isEmpty());
    }
    QCOMPARE(others.count(), 0);
    WindowRequest::leave(folder.path(), WindowRequest::Program::Monitoring);
    QTRY_COMPARE(others.count(), 1);
    QCOMPARE(pages.count(), 2);
}

void WindowRequestTest::requestBeforeTheStartIsOutOfDate()
{
    const QTemporaryDir folder;
    WindowRequest::leave(folder.path(), WindowRequest::Program::MainModule, QStringLiteral("pests"));
    const WindowRequest request(folder.path(), WindowRequest::Program::MainModule);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void WindowRequestTest::folderWithoutRightIsReported()
{
    const QTemporaryDir folder;
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError,
                             WindowRequest::leave(folder.filePath(QStringLiteral("none")), WindowRequest::Program::Monitoring));
}

QTEST_GUILESS_MAIN(WindowRequestTest)
#include "WindowRequestTest.moc"
