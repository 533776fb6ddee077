// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ProgramFolder.h"
#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// Which folder is the program's, and what a first start makes in it.
class ProgramFolderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void databasesBesideTheProgramDecide();
    void firstStartMakesTheTemplates();
    void theOfficesOwnTemplateIsKept();
    void aFolderThatCannotBeMadeIsTold();
    void theFirstFarmIsToldWithItsPlace();

private:
    static void write(const QString &path, const QByteArray &text);
    static QByteArray read(const QString &path);

    std::unique_ptr<QTemporaryDir> root_;
    ProgramPlaces places_;
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
    places_ = {.program = root_->filePath(QStringLiteral("bin")),
               .user = root_->filePath(QStringLiteral("home/of user/farm-monitoring")),
               .templates = root_->filePath(QStringLiteral("share/Templates"))};
    QVERIFY(QDir().mkpath(places_.program));
    QVERIFY(QDir().mkpath(places_.templates));
    const QString installed = places_.templates + QStringLiteral("/PestMoni.xls");
    write(installed, "installed");
    QVERIFY(QFile::setPermissions(installed, QFile::ReadOwner));
}

void ProgramFolderTest::databasesBesideTheProgramDecide()
{
    QCOMPARE(programFolder(places_), places_.user);
    QVERIFY(QDir(places_.program).mkdir(QStringLiteral("DATABASES")));
    QCOMPARE(programFolder(places_), places_.program);
}

void ProgramFolderTest::firstStartMakesTheTemplates()
{
    makeProgramFolder(places_.user, places_.templates);
    const QString own = places_.user + QStringLiteral("/Templates/PestMoni.xls");
    QCOMPARE(read(own), QByteArray("installed"));
    QVERIFY(QFile::permissions(own) & QFile::WriteOwner);
    QVERIFY(!holdsDatabases(places_.user));
}

void ProgramFolderTest::theOfficesOwnTemplateIsKept()
{
    QVERIFY(QDir().mkpath(places_.user + QStringLiteral("/templates")));
    write(places_.user + QStringLiteral("/templates/PESTMONI.XLS"), "with logo");
    makeProgramFolder(places_.user, places_.templates);
    QCOMPARE(read(places_.user + QStringLiteral("/templates/PESTMONI.XLS")), QByteArray("with logo"));
    QCOMPARE(QDir(places_.user + QStringLiteral("/templates")).entryList(QDir::Files).size(), 1);
}

void ProgramFolderTest::aFolderThatCannotBeMadeIsTold()
{
    write(root_->filePath(QStringLiteral("home")), "a file in the way");
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, makeProgramFolder(places_.user, places_.templates));
}

void ProgramFolderTest::theFirstFarmIsToldWithItsPlace()
{
    const QString text = firstFarmText(places_.user);
    for (const char *command : {"import FOLDER", "demo", "create"}) {
        const QString line = QStringLiteral("farmdata %1 \"%2/Databases\"").arg(QLatin1String(command), places_.user);
        QVERIFY2(text.contains(line), qPrintable(text));
    }
}

QTEST_MAIN(ProgramFolderTest)
#include "ProgramFolderTest.moc"
