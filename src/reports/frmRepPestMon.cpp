// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmRepPestMon.h"

#include "platform/basic/TextFiles.h"
#include "platform/controls/Dialogs.h"
#include "reports/TemplateReport.h"
#include "screens/Icons.h"
#include "ui_frmRepPestMon.h"

#include <QDir>

frmRepPestMon::frmRepPestMon(ScreenHost &host, QWidget *parent)
    : ChildScreen(host, parent), ui_(std::make_unique<Ui::frmRepPestMon>())
{
    ui_->setupUi(this);
    ui_->picFarm->setAttribute(Qt::WA_StyledBackground);
    setLabelIcon(*ui_->Image2, BannerIcon, QStringLiteral("field-sheets"));
    setIcons({{ui_->Command1, "close"}});
    ui_->filePre->setEmptyText(
        QStringLiteral("No field sheets are stored yet. Print one from an instruction in Pest Monitoring."));
    on(ui_->filePre, &controls::FileList::Click, [this](const QString &file) { openSheet(file); });
    on(ui_->Command1, &QPushButton::clicked, [this] { closeScreen(); });
    reports::sessionApplication(host);
    Refresh_List();
}

frmRepPestMon::~frmRepPestMon() = default;

QString frmRepPestMon::screenTitle() const
{
    return QStringLiteral(" Pest Monitoring: Existing Field Sheets");
}

QString frmRepPestMon::folder() const
{
    return basic::pathForWriting(session().AppPath + QStringLiteral("/Reports/Pest Monitor"));
}

void frmRepPestMon::Refresh_List()
{
    ui_->filePre->setPath(folder());
    ui_->filePre->show();
    ui_->fraPre->show();
}

void frmRepPestMon::openSheet(const QString &file)
{
    const QString path = folder() + u'/' + file;
    try {
        excel::Application &application = reports::sessionApplication(host());
        application.Workbooks().OpenStored(path);
        application.setVisible(true);
        host().showStatus(QStringLiteral("%1 opened").arg(file));
    } catch (const basic::RunTimeError &) {
        const bool exists = QFileInfo::exists(path);
        const QString shownPath = QDir::toNativeSeparators(path);
        if (exists) {
            host().showNote(QStringLiteral("The sheet is saved at %1").arg(shownPath));
        } else {
            host().showFailure(QStringLiteral("The sheet no longer exists: %1").arg(shownPath));
            Refresh_List();
        }
        dialogs().message(QStringLiteral("Please make sure that Microsoft Excel is loaded on the workstation."));
    }
    host().excelApplication().reset();
}
