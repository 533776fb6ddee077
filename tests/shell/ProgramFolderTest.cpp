// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ProgramFolder.h"
#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// Which folder the program uses, and what a first start creates in it.
class ProgramFolderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void databasesOrTemplatesNextToTheProgramDecide_data();
    void databasesOrTemplatesNextToTheProgramDecide();
    void firstStartMakesTheTemplates();
    void existingTemplateIsPreserved();
    void failureToMakeTheFolderIsReported();
    void firstFarmTextNamesTheFolder();

private:
    static void write(const QString &path, const QByteArray &text);
    static QByteArray read(const QString &path);

    std::unique_ptr<QTemporaryDir> root_;
    ProgramFolders folders_;
};

void ProgramFolderTest::write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QByteArray ProgramFolderTest::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ProgramFolderTest::init()
{
    root_ = std::make_unique<QTemporaryDir>();
    folders_ = {.program = root_->filePath(QStringLiteral("bin")),
                .user = root_->filePath(QStringLiteral("home/of user/farm-monitoring")),
                .templates = root_->filePath(QStringLiteral("share/Templates"))};
    QVERIFY(QDir().mkpath(folders_.program));
    QVERIFY(QDir().mkpath(folders_.templates));
    const QString installed = folders_.templates + QStringLiteral("/PestMoni.xls");
    write(installed, "installed");
    QVERIFY(QFile::setPermissions(installed, QFile::ReadOwner));
}

void ProgramFolderTest::databasesOrTemplatesNextToTheProgramDecide_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("a farm") << "DATABASES";
    QTest::newRow("an unpacked program without a farm") << "templates";
}

void ProgramFolderTest::databasesOrTemplatesNextToTheProgramDecide()
{
    QFETCH(QString, folder);
    QCOMPARE(programFolder(folders_), folders_.user);
    QVERIFY(QDir(folders_.program).mkdir(folder));
    QCOMPARE(programFolder(folders_), folders_.program);
}

void ProgramFolderTest::firstStartMakesTheTemplates()
{
    makeProgramFolder(folders_.user, folders_.templates);
    const QString own = folders_.user + QStringLiteral("/Templates/PestMoni.xls");
    QCOMPARE(read(own), QByteArray("installed"));
    QVERIFY(QFile::permissions(own) & QFile::WriteOwner);
    QVERIFY(!holdsDatabases(folders_.user));
}

void ProgramFolderTest::existingTemplateIsPreserved()
{
    QVERIFY(QDir().mkpath(folders_.user + QStringLiteral("/templates")));
    write(folders_.user + QStringLiteral("/templates/PESTMONI.XLS"), "with logo");
    makeProgramFolder(folders_.user, folders_.templates);
    QCOMPARE(read(folders_.user + QStringLiteral("/templates/PESTMONI.XLS")), QByteArray("with logo"));
    QCOMPARE(QDir(folders_.user + QStringLiteral("/templates")).entryList(QDir::Files).size(), 1);
}

void ProgramFolderTest::failureToMakeTheFolderIsReported()
{
    write(root_->filePath(QStringLiteral("home")), "a file in the way");
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, makeProgramFolder(folders_.user, folders_.templates));
}

void ProgramFolderTest::firstFarmTextNamesTheFolder()
{
    const QString text = firstFarmText(folders_.user);
    const QString databases = QDir::toNativeSeparators(folders_.user + QStringLiteral("/Databases"));
    for (const char *command : {"import FOLDER", "demo"}) {
        const QString line = QStringLiteral("farmdata %1 \"%2\"").arg(QLatin1String(command), databases);
        QVERIFY2(text.contains(line), qPrintable(text));
    }
}

QTEST_MAIN(ProgramFolderTest)
#include "ProgramFolderTest.moc"
