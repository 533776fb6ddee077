// SPDX-License-Identifier: GPL-3.0-or-later
#include "FarmdataProcess.h"

#include "support/TemporaryFarm.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using store::DatabaseFile;

/// `farmdata lists`, as it is called from a shell.
class ListsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { farm_.reset(); }
    void exportedListsComeBackUnchanged();
    void importAddsAndChanges();
    void dryRunWritesNothing();
    void anyFaultStopsAll();
    void badCallsAndFilesAreReported();

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    QString csv(const QString &name, const QByteArray &text) const;
    QStringList blocks();

    QTemporaryDir folder_;
    std::unique_ptr<TemporaryFarm> farm_;
};

void ListsTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Môreson"));
    farm_->addBlock({QStringLiteral("Dam"), 1, 8, true});
}

QString ListsTest::csv(const QString &name, const QByteArray &text) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qFatal("the file was not written");
    }
    return file.fileName();
}

QStringList ListsTest::blocks()
{
    return farm_->rows(DatabaseFile::Main, QStringLiteral("Select BlockID, Block, NoofMpoints from tblBlock order by BlockID"));
}

void ListsTest::exportedListsComeBackUnchanged()
{
    for (const QString &name : {QStringLiteral("all.xlsx"), QStringLiteral("Blocks.csv")}) {
        QCOMPARE(farmdata({"lists", "export", farm_->databasesPath(), path(name)}).status, 0);
        const FarmdataRun run = farmdata({"lists", "import", farm_->databasesPath(), path(name)});
        QVERIFY2(run.status == 0 && run.output.contains(QLatin1String("0 rows were written")),
                 qPrintable(run.output + run.errors));
    }
    QCOMPARE(blocks(), QStringList(QStringLiteral("1|Dam|8")));
}

void ListsTest::importAddsAndChanges()
{
    const QString file = csv(QStringLiteral("Blocks.csv"), "Block key;Block;Points\n1;Dam;9\n;Hill, upper;\n");
    const FarmdataRun run = farmdata({"lists", "import", farm_->databasesPath(), file});
    QVERIFY2(run.status == 0 && run.output.contains(QLatin1String("1 new, 1 changed, 0 refused")),
             qPrintable(run.output + run.errors));
    QCOMPARE(blocks(), QStringList({QStringLiteral("1|Dam|9"), QStringLiteral("2|Hill, upper|5")}));
    const QString named = csv(QStringLiteral("Blocks.csv"), "Block,Points\ndam,7\n");
    QCOMPARE(farmdata({"lists", "import", "--by-name", farm_->databasesPath(), named}).status, 0);
    QCOMPARE(blocks().front(), QStringLiteral("1|dam|7"));
}

void ListsTest::dryRunWritesNothing()
{
    const QString file = csv(QStringLiteral("Blocks.csv"), "Block\nHill\n");
    const FarmdataRun run = farmdata({"lists", "import", "--dry-run", farm_->databasesPath(), file});
    QVERIFY2(run.status == 0 && run.output.contains(QLatin1String("1 new")) && run.output.contains(QLatin1String("dry run")),
             qPrintable(run.output + run.errors));
    QCOMPARE(blocks().size(), 1);
}

void ListsTest::anyFaultStopsAll()
{
    const QString file = csv(QStringLiteral("Blocks.csv"), "Block,Points\nHill,5\nVale,many\n");
    const FarmdataRun run = farmdata({"lists", "import", farm_->databasesPath(), file});
    QCOMPARE(run.status, 1);
    QVERIFY2(run.output.contains(QLatin1String("REFUSED: Blocks, row 3, Points, \"many\"")), qPrintable(run.output));
    QVERIFY(run.output.contains(QLatin1String("Nothing was written")));
    QCOMPARE(blocks().size(), 1);
}

void ListsTest::badCallsAndFilesAreReported()
{
    QCOMPARE(farmdata({"lists"}).status, 2);
    QCOMPARE(farmdata({"lists", "export", farm_->databasesPath()}).status, 2);
    const FarmdataRun missing = farmdata({"lists", "import", farm_->databasesPath(), path(QStringLiteral("none.xlsx"))});
    QVERIFY(missing.status == 1 && missing.errors.contains(QLatin1String("File not found")));
    const FarmdataRun other = farmdata({"lists", "import", farm_->databasesPath(), csv(QStringLiteral("x.csv"), "Price\n12\n")});
    QVERIFY(other.status == 1 && other.errors.contains(QLatin1String("no farm list in it")));
    const FarmdataRun nowhere = farmdata({"lists", "export", path(QStringLiteral("nowhere")), path(QStringLiteral("none.xlsx"))});
    QVERIFY(nowhere.status == 1 && !QFile::exists(path(QStringLiteral("none.xlsx"))));
}

QTEST_GUILESS_MAIN(ListsTest)
#include "ListsTest.moc"
