// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Application.h"

#include "platform/excel/BiffReader.h"
#include "platform/excel/Model.h"
#include "platform/excel/SavedFile.h"

#include <QFileInfo>

#include <utility>

namespace excel
{

using model::Book;
using model::Session;

namespace
{
[[noreturn]] void holdsNothing(const QString &what)
{
    throw basic::RunTimeError(basic::ErrorNumber::ObjectNotSet, QStringLiteral("There is no open %1.").arg(what));
}
} // namespace

Worksheets::Worksheets(std::shared_ptr<Book> book) : book_(std::move(book)) {}

int Worksheets::Count() const
{
    return static_cast<int>(book_->sheets.size());
}

Worksheet Worksheets::Add(const Worksheet &after)
{
    const std::size_t position = book_->positionOf(after.sheet()) + 1;
    if (position > book_->sheets.size()) {
        throw ExcelError(QStringLiteral("The sheet \"%1\" belongs to another workbook.").arg(after.Name()));
    }
    model::Sheet &sheet = book_->addSheet(position);
    book_->activeSheet = position;
    return {book_, &sheet};
}

Worksheet Worksheets::Item(int index) const
{
    if (index < 1 || index > Count()) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange,
                                  QStringLiteral("The workbook has %1 sheets; there is no sheet %2.").arg(Count()).arg(index));
    }
    return {book_, book_->sheets[static_cast<std::size_t>(index - 1)].get()};
}

Workbook::Workbook(std::shared_ptr<Session> session, std::shared_ptr<Book> book)
    : session_(std::move(session)), book_(std::move(book))
{
}

Book &Workbook::book() const
{
    if (!book_) {
        holdsNothing(QStringLiteral("workbook"));
    }
    return *book_;
}

Worksheets Workbook::Worksheets() const
{
    book();
    return excel::Worksheets(book_);
}

Worksheet Workbook::Worksheets(int index) const
{
    return Worksheets().Item(index);
}

Worksheet Workbook::ActiveSheet() const
{
    return {book_, book().sheets[book().activeSheet].get()};
}

void Workbook::SaveAs(const QString &fileName, std::optional<int> fileFormat)
{
    Book &target = book();
    const bool oldEnding = fileName.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive);
    const int format = fileFormat.value_or(target.format.value_or(oldEnding ? xlExcel8 : xlOpenXMLWorkbook));
    if (format != xlOpenXMLWorkbook && format != xlExcel8) {
        throw ExcelError(QStringLiteral("%1: there is no file format %2.").arg(fileName).arg(format));
    }
    if (session_->displayAlerts && QFileInfo(fileName).isFile()) {
        throw ExcelError(QStringLiteral("The file %1 exists already.").arg(fileName));
    }
    saveBook(target, fileName, format);
    target.path = fileName;
    target.format = format;
    target.saved = true;
    session_->handOver();
}

QString Workbook::FullName() const
{
    return book().path;
}

Workbooks::Workbooks(std::shared_ptr<Session> session) : session_(std::move(session)) {}

Workbook Workbooks::Add()
{
    const auto book = std::make_shared<Book>();
    book->addSheet(0);
    session_->books.push_back(book);
    session_->active = book;
    return {session_, book};
}

Workbook Workbooks::Open(const QString &path)
{
    const std::shared_ptr<Book> book = readXls(path);
    session_->books.push_back(book);
    session_->active = book;
    return {session_, book};
}

void Workbooks::OpenStored(const QString &path)
{
    if (!QFileInfo(path).isFile()) {
        throw ExcelError(QStringLiteral("The file %1 could not be found.").arg(path));
    }
    if (!session_->launcher || !session_->launcher->open(path)) {
        throw ExcelError(ExcelError::NoProgram, QStringLiteral("No program opens %1.").arg(path));
    }
}

int Workbooks::Count() const
{
    return static_cast<int>(session_->books.size());
}

Application::Application(Launcher *launcher) : session_(std::make_shared<Session>())
{
    session_->launcher = launcher;
}

Workbooks Application::Workbooks() const
{
    return excel::Workbooks(session_);
}

Workbook Application::ActiveWorkbook() const
{
    if (!session_->active) {
        holdsNothing(QStringLiteral("workbook"));
    }
    return {session_, session_->active};
}

Worksheet Application::ActiveSheet() const
{
    return ActiveWorkbook().ActiveSheet();
}

Range Application::Range(const QString &first, const QString &last) const
{
    return ActiveSheet().Range(first, last);
}

Range Application::Range(const QString &cell) const
{
    return ActiveSheet().Range(cell);
}

Columns Application::Columns(const QString &columns) const
{
    return ActiveSheet().Columns(columns);
}

double Application::CentimetersToPoints(double centimetres) const
{
    return centimetres * 72 / 2.54;
}

bool Application::Visible() const
{
    return session_->visible;
}

void Application::setVisible(bool visible)
{
    session_->visible = visible;
    session_->handOver();
}

bool Application::ScreenUpdating() const
{
    return session_->screenUpdating;
}

void Application::setScreenUpdating(bool updating)
{
    session_->screenUpdating = updating;
}

bool Application::DisplayAlerts() const
{
    return session_->displayAlerts;
}

void Application::setDisplayAlerts(bool alerts)
{
    session_->displayAlerts = alerts;
}

} // namespace excel
