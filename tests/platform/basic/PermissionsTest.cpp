// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Permissions.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

class PermissionsTest : public QObject
{
    Q_OBJECT

private:
    static struct stat statusOf(const QString &path)
    {
        struct stat status {
        };
        ::stat(QFile::encodeName(path).constData(), &status);
        return status;
    }
    static bool make(const QString &path, unsigned int mode)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && ::chmod(QFile::encodeName(path).constData(), mode) == 0;
    }
    static unsigned int modeOf(const QString &path) { return statusOf(path).st_mode & 07777; }

private Q_SLOTS:
    void newFilesFollowTheirFolder_data()
    {
        QTest::addColumn<unsigned int>("folder");
        QTest::addColumn<unsigned int>("file");
        QTest::addColumn<unsigned int>("below");
        QTest::newRow("private") << 0700U << 0600U << 0700U;
        QTest::newRow("of a group") << 02770U << 0660U << 02770U;
        QTest::newRow("readable by all") << 0755U << 0644U << 0755U;
        QTest::newRow("of everybody") << 0777U << 0666U << 0777U;
        QTest::newRow("for temporary files") << 01777U << 0644U << 0755U;
    }

    void newFilesFollowTheirFolder()
    {
        QFETCH(unsigned int, folder);
        const QTemporaryDir parent;
        QVERIFY(::chmod(QFile::encodeName(parent.path()).constData(), folder) == 0);
        QVERIFY(make(parent.filePath("new"), 0600));
        basic::followFolder(parent.filePath("new"));
        QTEST(modeOf(parent.filePath("new")), "file");
        QVERIFY(basic::makeFolder(parent.filePath("a/b")));
        QTEST(modeOf(parent.filePath("a")), "below");
        QTEST(modeOf(parent.filePath("a/b")), "below");
        QVERIFY(!basic::makeFolder(parent.filePath("new/c")));
        ::chmod(QFile::encodeName(parent.path()).constData(), 0700);
    }

    void rootGivesFilesToTheOwnerOfTheFolder()
    {
        if (::geteuid() != 0) {
            QSKIP("only root can give files away");
        }
        constexpr uid_t Nobody = 65534;
        const QTemporaryDir folder;
        QVERIFY(::chown(QFile::encodeName(folder.path()).constData(), Nobody, Nobody) == 0);
        QVERIFY(make(folder.filePath("new"), 0640) && make(folder.filePath("replacement"), 0600));
        basic::followFolder(folder.filePath("new"));
        QCOMPARE(statusOf(folder.filePath("new")).st_uid, Nobody);
        QVERIFY(::chmod(QFile::encodeName(folder.filePath("new")).constData(), 0640) == 0);
        basic::copyPermissions(folder.filePath("new"), folder.filePath("replacement"));
        QCOMPARE(statusOf(folder.filePath("replacement")).st_uid, Nobody);
        QCOMPARE(statusOf(folder.filePath("replacement")).st_gid, Nobody);
        QCOMPARE(modeOf(folder.filePath("replacement")), 0640U);
    }
};

QTEST_GUILESS_MAIN(PermissionsTest)
#include "PermissionsTest.moc"
