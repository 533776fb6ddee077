// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/SiblingProgram.h"

#include "support/ChildProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace
{

/// Role: writes its second argument into the file that its first one names.
int beSibling(const QStringList &arguments)
{
    QFile file(arguments.at(0));
    return file.open(QIODevice::WriteOnly) && file.write(arguments.at(1).toUtf8()) > 0 ? 0 : 1;
}

} // namespace

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
    const QFileInfo test(QCoreApplication::applicationFilePath());
    const QString name = QStringLiteral("sibling-%1").arg(QCoreApplication::applicationPid());
    const QString path = test.path() + u'/' + name + (test.suffix().isEmpty() ? QString() : u'.' + test.suffix());
    const QString written = folder.filePath(QStringLiteral("page"));
    QVERIFY(QFile::copy(test.filePath(), path));
    QCOMPARE(startSibling({QStringLiteral("none"), name},
                          {ChildProcess::RoleOption, QStringLiteral("sibling"), written, QStringLiteral("blocks")}),
             QString());
    QTRY_COMPARE(QFile(written).size(), qint64(6));
    // Not before it has ended on Windows.
    QTRY_VERIFY(QFile::remove(path) || !QFile::exists(path));
}

void SiblingProgramTest::missingProgramIsNamed()
{
    const QString reason = startSibling(mainModuleProgram());
    QVERIFY2(reason.startsWith(QLatin1String("The program MainModule is not in ")), qPrintable(reason));
}

int main(int argc, char *argv[])
{
    return ChildProcess::runTestOrRole<SiblingProgramTest>(argc, argv, {{"sibling", beSibling}});
}

#include "SiblingProgramTest.moc"
