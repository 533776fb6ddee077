// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/PageRequest.h"

#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using mainmodule::PageRequest;

/// What a second start asks the first copy for.
class PageRequestTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void requestsArriveOnce();
    void requestBeforeTheStartIsOutOfDate();
    void folderWithoutRightIsReported();
};

void PageRequestTest::requestsArriveOnce()
{
    const QTemporaryDir folder;
    PageRequest request(folder.path());
    const QSignalSpy spy(&request, &PageRequest::requested);
    for (const QString &page : {QStringLiteral("blocks"), QString()}) {
        PageRequest::leave(folder.path(), page);
        const qsizetype count = spy.count();
        QTRY_COMPARE(spy.count(), count + 1);
        QCOMPARE(spy.last().front().toString(), page);
        QVERIFY(QDir(folder.path()).isEmpty());
    }
}

void PageRequestTest::requestBeforeTheStartIsOutOfDate()
{
    const QTemporaryDir folder;
    PageRequest::leave(folder.path(), QStringLiteral("pests"));
    const PageRequest request(folder.path());
    QVERIFY(QDir(folder.path()).isEmpty());
}

void PageRequestTest::folderWithoutRightIsReported()
{
    const QTemporaryDir folder;
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, PageRequest::leave(folder.filePath(QStringLiteral("none")), QString()));
}

QTEST_GUILESS_MAIN(PageRequestTest)
#include "PageRequestTest.moc"
