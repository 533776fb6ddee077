// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/HandOffFiles.h"

#include "common/SessionContext.h"
#include "platform/basic/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class HandOffFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void allFourAreRead();
    void missingSeasonKeyClearsTheFarmKey();
    void missingFilesEmptyTheValues();
    void badNumbersAreRefused_data();
    void badNumbersAreRefused();
    void periodStartComesBack();
    void noiseInThePeriodStartCountsAsMissing_data();
    void noiseInThePeriodStartCountsAsMissing();
    void farmNameIsHandedBack();
    void writtenChoiceIsReadBack();
    void seasonsKeyIsItsFirstYear();

private:
    void write(const QString &name, const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<SessionContext> session_;
};

void HandOffFilesTest::init()
{
    folder_ = std::make_unique<QTemporaryDir>();
    session_ = std::make_unique<SessionContext>();
    session_->AppPath = folder_->path();
}

void HandOffFilesTest::write(const QString &name, const QByteArray &bytes)
{
    QFile file(folder_->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void HandOffFilesTest::allFourAreRead()
{
    write(QStringLiteral("FINDFARM.TXT"), "\"Rivier, Oos\"\r\n");
    write(QStringLiteral("findfarmid.txt"), " 12 \r\n");
    write(QStringLiteral("FindYear.txt"), "Seisoen \xe9\x65n, rest\r\n");
    write(QStringLiteral("FindYearID.txt"), "3\n");
    Read_FindFarm(*session_);
    Read_FindFarmID(*session_);
    Read_FindYear(*session_);
    Read_FindYearID(*session_);
    QCOMPARE(session_->CurrentFarm, QStringLiteral("Rivier, Oos"));
    QCOMPARE(session_->CurrentFarmID, 12);
    QCOMPARE(session_->CurrentYear, QStringLiteral("Seisoen éen"));
    QCOMPARE(session_->CurrentYearID, 3);
}

void HandOffFilesTest::missingSeasonKeyClearsTheFarmKey()
{
    write(QStringLiteral("FindfarmID.txt"), "12\n");
    session_->CurrentYearID = 8;
    Read_FindFarmID(*session_);
    Read_FindYearID(*session_);
    QCOMPARE(session_->CurrentFarmID, 0);
    QCOMPARE(session_->CurrentYearID, 8);
}

void HandOffFilesTest::missingFilesEmptyTheValues()
{
    session_->CurrentFarm = QStringLiteral("left over");
    session_->CurrentFarmID = 9;
    session_->CurrentSDate = QStringLiteral("left over");
    // A folder is no file.
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("Findfarm.txt")));
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("FindfarmID.txt")));
    Read_FindFarm(*session_);
    Read_FindFarmID(*session_);
    QVERIFY(Read_FindSDate(*session_).isEmpty());
    QVERIFY(session_->CurrentFarm.isEmpty());
    QCOMPARE(session_->CurrentFarmID, 0);
    QVERIFY(session_->CurrentSDate.isEmpty());
}

void HandOffFilesTest::badNumbersAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("letters") << QByteArray("Oos\n");
    QTest::newRow("beyond a key") << QByteArray("99999999999\n");
    QTest::newRow("nothing at all") << QByteArray();
}

void HandOffFilesTest::badNumbersAreRefused()
{
    QFETCH(QByteArray, bytes);
    write(QStringLiteral("FindfarmID.txt"), bytes);
    try {
        Read_FindFarmID(*session_);
        QFAIL("a bad key was taken");
    } catch (const basic::RunTimeError &error) {
        QVERIFY2(error.description().contains(QStringLiteral("FindfarmID.txt")), qPrintable(error.description()));
    }
}

void HandOffFilesTest::periodStartComesBack()
{
    session_->CurrentSDate = QStringLiteral("2026/03/01");
    Write_FindSDate(*session_);
    session_->CurrentSDate.clear();
    QVERIFY(Read_FindSDate(*session_).isEmpty());
    QCOMPARE(session_->CurrentSDate, QStringLiteral("2026/03/01"));
}

void HandOffFilesTest::noiseInThePeriodStartCountsAsMissing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("words") << QByteArray("last week\n");
    QTest::newRow("no such day") << QByteArray("2026/02/30\n");
    QTest::newRow("noise") << QByteArray(2000, '\x81');
}

void HandOffFilesTest::noiseInThePeriodStartCountsAsMissing()
{
    QFETCH(QByteArray, bytes);
    write(QStringLiteral("FindSDate.txt"), bytes);
    QVERIFY(Read_FindSDate(*session_).contains(QStringLiteral("FindSDate.txt")));
    QVERIFY(session_->CurrentSDate.isEmpty());
}

void HandOffFilesTest::farmNameIsHandedBack()
{
    write(QStringLiteral("Findfarm.txt"), "Old\n");
    session_->CurrentFarm = QStringLiteral("Môregloed");
    Write_FindFarm(*session_);
    session_->CurrentFarm.clear();
    Read_FindFarm(*session_);
    QCOMPARE(session_->CurrentFarm, QStringLiteral("Môregloed"));
}

void HandOffFilesTest::writtenChoiceIsReadBack()
{
    for (const auto &[farm, season] : {std::pair(QStringLiteral("Dam, upper"), QStringLiteral("2026/2027")),
                                       std::pair(QStringLiteral("Môreson"), QString())}) {
        session_->CurrentFarm = farm;
        session_->CurrentFarmID = 12;
        session_->CurrentYear = season;
        session_->CurrentYearID = seasonKey(season);
        Write_HandOff(*session_);
        SessionContext read;
        read.AppPath = session_->AppPath;
        Read_FindFarm(read);
        Read_FindFarmID(read);
        Read_FindYear(read);
        Read_FindYearID(read);
        QCOMPARE(read.CurrentFarm, farm);
        QCOMPARE(read.CurrentFarmID, 12);
        QCOMPARE(read.CurrentYear, season);
        QCOMPARE(read.CurrentYearID, session_->CurrentYearID);
    }
}

void HandOffFilesTest::seasonsKeyIsItsFirstYear()
{
    QCOMPARE(seasonKey(QStringLiteral("2026/2027")), 2026);
    QCOMPARE(seasonKey(QStringLiteral("Winter")), 0);
    QCOMPARE(seasonKey(QStringLiteral("99999999999")), 0);
}

QTEST_GUILESS_MAIN(HandOffFilesTest)
#include "HandOffFilesTest.moc"
