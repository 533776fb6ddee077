// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Application.h"
#include "platform/excel/Readers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace excel;

/// How a .xls is printed, as a spreadsheet program understands it.
class PageSetupTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pageIsUnderstood();

private:
    /// The page set-up that the program finds in `name` of the folder.
    QStringList understood(const QString &name) const;

    QTemporaryDir folder_;
};

QStringList PageSetupTest::understood(const QString &name) const
{
    // A profile of its own: it neither meets nor waits for a program of the user that runs.
    QProcess program;
    program.start(QStringLiteral(SPREADSHEET_PROGRAM),
                  {QStringLiteral("-env:UserInstallation=file://") + folder_.filePath(QStringLiteral("profile")),
                   QStringLiteral("--headless"), QStringLiteral("--convert-to"), QStringLiteral("xlsx"),
                   QStringLiteral("--outdir"), folder_.filePath(QStringLiteral("converted")), folder_.filePath(name)});
    if (!program.waitForFinished(180000) || program.exitCode() != 0) {
        return {QStringLiteral("no conversion: ") + program.errorString()
                + QString::fromLocal8Bit(program.readAllStandardError())};
    }
    return readBack({QStringLiteral("--page"), folder_.filePath(QStringLiteral("converted/") + name + u'x')});
}

void PageSetupTest::pageIsUnderstood()
{
    NEEDS_READERS();
    Application application;
    Workbook book = application.Workbooks().Add();
    Worksheet sheet = book.Worksheets(1);
    sheet.Range("A1", "P60").setValue("x");
    PageSetup page = sheet.PageSetup();
    page.setPrintTitleRows("$1:$7");
    page.setPrintTitleColumns("A:A");
    page.setLeftHeader("Date &D Time &T");
    page.setCenterHeader("Môreson en Seun");
    page.setRightHeader("Page #&P Of &N Pages");
    page.setCenterFooter("below");
    page.setOrientation(xlLandscape);
    page.setLeftMargin(application.CentimetersToPoints(1.25));
    page.setRightMargin(36);
    page.setTopMargin(54);
    page.setBottomMargin(90);
    page.setFitToPagesWide(1);
    sheet.addPageBreak(5);
    sheet.addPageBreak(5);
    sheet.addPageBreak(40);
    // A second sheet without page set-up.
    book.Worksheets().Add(sheet).Range("A1", "A1").setValue("y");
    book.SaveAs(folder_.filePath("page.xls"));
    // Read as a template and saved again it is printed alike.
    Application again;
    again.Workbooks().Open(folder_.filePath("page.xls")).SaveAs(folder_.filePath("again.xls"));
    for (const QString name : {"page.xls", "again.xls"}) {
        compareLines(understood(name),
                     {"sheet Sheet1", "paper 9 landscape", "margins 0.49 0.50 0.75 1.25", "breaks 4 39", "fit 1 0",
                      "titles $A:$A $1:$7", "head [Date &D Time &T] [Môreson en Seun] [Page #&P Of &N Pages]",
                      "head [None] [below] [None]", "sheet Sheet2", "paper 9 portrait", "margins 0.70 0.70 0.75 0.75", "breaks ",
                      "scale 100", "titles None None", "head [None] [None] [None]", "head [None] [None] [None]"});
    }
}

QTEST_GUILESS_MAIN(PageSetupTest)
#include "PageSetupTest.moc"
