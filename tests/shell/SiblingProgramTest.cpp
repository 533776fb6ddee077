// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/SiblingProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// A program in the folder of this one is started under either of its names.
class SiblingProgramTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void programIsStartedUnderEitherName();
    void missingProgramIsNamed();
};

void SiblingProgramTest::programIsStartedUnderEitherName()
{
    const QTemporaryDir folder;
    const QString name = QStringLiteral("sibling-%1").arg(QCoreApplication::applicationPid());
    const QString path = QCoreApplication::applicationDirPath() + u'/' + name;
    const QString written = folder.filePath(QStringLiteral("page"));
    QFile script(path);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\nprintf %s \"$2\" > \"$1\"\n");
    script.close();
    QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(startSibling({QStringLiteral("none"), name}, {written, QStringLiteral("blocks")}), QString());
    QTRY_COMPARE(QFile(written).size(), qint64(6));
    QVERIFY(script.remove());
}

void SiblingProgramTest::missingProgramIsNamed()
{
    const QString reason = startSibling(mainModuleProgram());
    QVERIFY2(reason.startsWith(QLatin1String("The program MainModule is not in ")), qPrintable(reason));
}

QTEST_GUILESS_MAIN(SiblingProgramTest)
#include "SiblingProgramTest.moc"
