// SPDX-License-Identifier: GPL-3.0-or-later
#include "FarmdataProcess.h"

#include "platform/jet/Check.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using store::DatabaseFile;

/// What "farmdata export" writes, against a reader that is not ours.
class ExportTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void jetFilesAreReadByOthers();
    void jetFilesComeBack();
    void csvHasEveryRow();
    void aFullFolderIsRefused();
    void aMissingFileLeavesNothing();

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    static QByteArray exported(const QString &file, const QString &table);
    static QByteArray bytes(const QString &file);

    QTemporaryDir folder_;
};

void ExportTest::initTestCase()
{
    QCOMPARE(farmdata({"demo", path("farm")}).status, 0);
    const FarmdataRun run = farmdata({"export", path("farm"), path("jet"), "--jet"});
    QVERIFY2(run.status == 0, qPrintable(run.errors));
    QVERIFY(run.output.contains("every row compared"));
}

QByteArray ExportTest::exported(const QString &file, const QString &table)
{
    QProcess process;
    process.start("mdb-export", {"-T", "%Y-%m-%d %H:%M:%S", file, table});
    process.waitForFinished();
    return process.readAllStandardOutput();
}

QByteArray ExportTest::bytes(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

void ExportTest::jetFilesAreReadByOthers()
{
#ifdef Q_OS_WIN
    QSKIP("mdb-export does not run on Windows.");
#endif
    const auto source = dao::Workspace::OpenDatabase(path("farm/PestMon.mdb"), false, true, store::connectText());
    for (const store::SchemaTable &table : store::schema()) {
        if (table.file != DatabaseFile::Pest) {
            continue;
        }
        const QByteArray lines = exported(path("jet/PestMon.mdb"), table.name);
        const int rows = source->OpenRecordset("Select Count(*) from " + table.name).longValue(0);
        QVERIFY2(lines.count('\n') == rows + 1, qPrintable(table.name));
    }
    QVERIFY(exported(path("jet/ZN4.mdb"), "tblWorker").contains("D'Arcy"));
    for (const DatabaseFile file : store::AllDatabaseFiles) {
        const jet::CheckReport report = jet::check(path("jet/" + store::fileName(file)), QStringLiteral("krelpon"));
        QVERIFY2(report.faults.isEmpty(), qPrintable(report.faults.join('\n')));
    }
}

void ExportTest::jetFilesComeBack()
{
    QCOMPARE(farmdata({"check", path("jet")}).status, 0);
    const FarmdataRun run = farmdata({"import", path("jet"), path("again")});
    QVERIFY2(run.status == 0, qPrintable(run.errors));
    QCOMPARE(farmdata({"export", path("farm"), path("csv1")}).status, 0);
    QCOMPARE(farmdata({"export", path("again"), path("csv2")}).status, 0);
    for (const QString &name : QDir(path("csv1")).entryList(QDir::Files)) {
        QVERIFY2(bytes(path("csv1/" + name)) == bytes(path("csv2/" + name)), qPrintable(name));
    }
}

void ExportTest::csvHasEveryRow()
{
    QCOMPARE(farmdata({"export", path("jet"), path("csv")}).status, 0);
    QCOMPARE(QDir(path("csv")).entryList(QDir::Files).size(), static_cast<qsizetype>(store::schema().size()));
    const QList<QByteArray> lines = bytes(path("csv/tblPMTrans.csv")).split('\n');
    QVERIFY(lines.first().startsWith("\"PMTransID\",\"BlockID\","));
    QVERIFY(lines.first().endsWith('\r'));
    QVERIFY(lines[1].contains("\"Citrus, weekly\""));
    QVERIFY(lines[1].contains(",True"));
}

void ExportTest::aFullFolderIsRefused()
{
    const QByteArray before = bytes(path("farm/ZN4.mdb"));
    for (const QStringList &options : {QStringList{}, QStringList{"--jet"}}) {
        const FarmdataRun run = farmdata(QStringList{"export", path("jet"), path("farm")} + options);
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains(path("farm")), qPrintable(run.errors));
    }
    QVERIFY(bytes(path("farm/ZN4.mdb")) == before);
}

void ExportTest::aMissingFileLeavesNothing()
{
    QVERIFY(QDir().mkpath(path("part")));
    QVERIFY(QFile::copy(path("farm/ZN4.mdb"), path("part/ZN4.mdb")));
    QCOMPARE(farmdata({"export", path("part"), path("gone")}).status, 1);
    QCOMPARE(farmdata({"export", path("part"), path("gone"), "--jet"}).status, 1);
    QVERIFY(!QFile::exists(path("gone")) || QDir(path("gone")).isEmpty());
}

QTEST_GUILESS_MAIN(ExportTest)
#include "ExportTest.moc"
