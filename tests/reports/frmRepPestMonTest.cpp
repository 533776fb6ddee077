// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmRepPestMon.h"

#include "platform/controls/FileList.h"
#include "support/FakeScreenHost.h"
#include "support/TemporaryFarm.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class frmRepPestMonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void absentFolderIsEmpty();
    void listsTheFilesOfItsFolder();
    void opensOnceUnread_data();
    void opensOnceUnread();
    void aMissingFileIsReported();
    void aMissingProgramIsReported();
    void closes();

private:
    /// Stored as other systems may spell the folder.
    void store(const QString &name)
    {
        QDir(farm_->appPath()).mkpath(QStringLiteral("reports/PEST monitor/inner"));
        QFile file(farm_->appPath() + QStringLiteral("/reports/PEST monitor/") + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not a workbook");
    }
    void open()
    {
        screen_ = std::make_unique<frmRepPestMon>(*host_);
        screen_->resize(1366, 700);
        screen_->show();
        files_ = screen_->findChild<controls::FileList *>(QStringLiteral("filePre"));
    }
    QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < files_->ListCount(); ++row) {
            names.append(files_->item(row)->text());
        }
        return names;
    }

    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<FakeScreenHost> host_;
    std::unique_ptr<frmRepPestMon> screen_;
    controls::FileList *files_ = nullptr;
};

void frmRepPestMonTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    host_ = std::make_unique<FakeScreenHost>(farm_->session);
}

void frmRepPestMonTest::cleanup()
{
    screen_.reset();
    QVERIFY(host_->dialogs().allAsExpected());
    QVERIFY(host_->errors.isEmpty());
}

void frmRepPestMonTest::absentFolderIsEmpty()
{
    open();
    QCOMPARE(listed(), QStringList());
    QTest::keyClick(files_, Qt::Key_Return);
    QVERIFY(host_->launcher().opened.isEmpty());
    QVERIFY(!QDir(farm_->appPath() + QStringLiteral("/Reports")).exists());
    QCOMPARE(screen_->windowTitle(), QStringLiteral(" Pest Monitoring: Existing Field Sheets"));
}

void frmRepPestMonTest::listsTheFilesOfItsFolder()
{
    store(QStringLiteral("b.xlsx"));
    QDir(farm_->appPath()).mkpath(QStringLiteral("reports/Pest Monitor Reports"));
    open();
    QCOMPARE(listed(), QStringList{QStringLiteral("b.xlsx")});
    store(QStringLiteral("A.xlsx"));
    screen_->activateScreen();
    QCOMPARE(listed(), (QStringList{QStringLiteral("A.xlsx"), QStringLiteral("b.xlsx")}));
    QCOMPARE(files_->currentItem()->text(), QStringLiteral("b.xlsx"));
}

void frmRepPestMonTest::opensOnceUnread_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("click") << 0;
    QTest::newRow("double click") << 1;
    QTest::newRow("Enter") << 2;
    QTest::newRow("Space") << 3;
}

void frmRepPestMonTest::opensOnceUnread()
{
    store(QStringLiteral("a.xlsx"));
    open();
    const QPoint place = files_->visualItemRect(files_->item(0)).center();
    QFETCH(int, way);
    if (way < 2) {
        QTest::mouseClick(files_->viewport(), Qt::LeftButton, {}, place);
    }
    if (way == 1) {
        QTest::mouseDClick(files_->viewport(), Qt::LeftButton, {}, place);
    }
    if (way >= 2) {
        QTest::keyClick(files_, way == 2 ? Qt::Key_Enter : Qt::Key_Space);
    }
    // A system without case in its names takes them as the program spells them.
    QCOMPARE(host_->launcher().opened.size(), 1);
    QCOMPARE(QFileInfo(host_->launcher().opened[0]),
             QFileInfo(farm_->appPath() + QStringLiteral("/reports/PEST monitor/a.xlsx")));
    QVERIFY(!host_->excelApplication());
}

void frmRepPestMonTest::aMissingFileIsReported()
{
    store(QStringLiteral("a.xlsx"));
    open();
    QVERIFY(QFile::remove(farm_->appPath() + QStringLiteral("/reports/PEST monitor/a.xlsx")));
    host_->dialogs().expectMessage();
    QTest::keyClick(files_, Qt::Key_Return);
    QCOMPARE(host_->dialogs().takeLastText(),
             QStringLiteral("Please make sure that Microsoft Excel is loaded on the workstation."));
    QVERIFY2(host_->failure.startsWith(QStringLiteral("The sheet no longer exists: ")), qPrintable(host_->failure));
    QCOMPARE(listed(), QStringList());
}

void frmRepPestMonTest::aMissingProgramIsReported()
{
    store(QStringLiteral("a.xlsx"));
    open();
    host_->launcher().hasProgram = false;
    host_->dialogs().expectMessage();
    QTest::keyClick(files_, Qt::Key_Return);
    QCOMPARE(host_->dialogs().takeLastText(),
             QStringLiteral("Please make sure that Microsoft Excel is loaded on the workstation."));
    QVERIFY2(host_->note.contains(QLatin1String("a.xlsx")) && host_->failure.isEmpty(), qPrintable(host_->note));
    // A program was installed meanwhile.
    host_->launcher().hasProgram = true;
    QTest::keyClick(files_, Qt::Key_Return);
    QCOMPARE(host_->launcher().opened.size(), 1);
    QCOMPARE(host_->status, QStringLiteral("a.xlsx opened"));
}

void frmRepPestMonTest::closes()
{
    open();
    QSignalSpy closed(screen_.get(), &ChildScreen::closeRequested);
    screen_->findChild<QPushButton *>(QStringLiteral("Command1"))->click();
    QCOMPARE(closed.size(), 1);
}

QTEST_MAIN(frmRepPestMonTest)
#include "frmRepPestMonTest.moc"
