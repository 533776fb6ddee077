// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/XlsxWriter.h"

#include "platform/excel/ColumnFit.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/HeaderText.h"
#include "platform/excel/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <algorithm>
#include <clocale>
#include <string>

namespace excel
{

using model::Book;
using model::Cell;
using model::Content;
using model::Sheet;
using model::Style;
using model::Trait;

namespace
{

/// Page breaks that a sheet can have.
constexpr std::size_t MaxBreaks = 1023;
/// The library formats numbers by the C locale; this sets a decimal point for the duration of a save.
class PointDecimals
{
public:
    PointDecimals() : before_(std::setlocale(LC_NUMERIC, nullptr)) { std::setlocale(LC_NUMERIC, "C"); }
    ~PointDecimals() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    Q_DISABLE_COPY_MOVE(PointDecimals)

private:
    std::string before_;
};

struct FreeBook {
    void operator()(lxw_workbook *book) const { lxw_workbook_free(book); }
};

void check(lxw_error error)
{
    if (error != LXW_NO_ERROR) {
        throw ExcelError(QStringLiteral("it could not be written: %1").arg(QString::fromUtf8(lxw_strerror(error))));
    }
}

/// UTF-8 without the characters that no XML file may hold.
QByteArray storedText(const QString &text)
{
    const auto outlaw = [](QChar letter) { return letter.isNull() || letter.unicode() >= 0xFFFE; };
    if (std::none_of(text.begin(), text.end(), outlaw)) {
        return text.toUtf8();
    }
    QString stored = text;
    std::replace_if(stored.begin(), stored.end(), outlaw, QChar(QChar::ReplacementCharacter));
    return stored.toUtf8();
}

class XlsxWriter
{
public:
    XlsxWriter(const Book &book, lxw_workbook *target) : book_(book), target_(target), formats_(book.styles.size()) {}

    void write()
    {
        setFont(STAILQ_FIRST(target_->formats), book_.styles.at(0));
        for (std::size_t number = 0; number < book_.sheets.size(); ++number) {
            const Sheet &sheet = *book_.sheets[number];
            lxw_worksheet *to = workbook_add_worksheet(target_, sheet.name.toUtf8().constData());
            if (!to) {
                throw ExcelError(QStringLiteral("the sheet \"%1\" could not be made.").arg(sheet.name));
            }
            writeColumns(sheet, to);
            writeMerges(sheet, to);
            writeCells(sheet, to);
            writePage(sheet.page, to);
            if (number == book_.activeSheet) {
                worksheet_activate(to);
            }
        }
    }

private:
    void writeColumns(const Sheet &sheet, lxw_worksheet *to) const
    {
        for (const auto &[column, settings] : sheet.columns) {
            if (settings.width != model::Unset) {
                const auto index = static_cast<lxw_col_t>(column);
                lxw_row_col_options options{};
                options.hidden = settings.width == 0;
                check(worksheet_set_column_opt(to, index, index, characterWidth(book_, settings.width), nullptr, &options));
            }
        }
    }

    void writeMerges(const Sheet &sheet, lxw_worksheet *to)
    {
        for (const Area &area : sheet.merges()) {
            check(worksheet_merge_range(to, static_cast<lxw_row_t>(area.top), static_cast<lxw_col_t>(area.left),
                                        static_cast<lxw_row_t>(area.bottom), static_cast<lxw_col_t>(area.right), "",
                                        format(sheet.styleAt(area.top, area.left))));
        }
    }

    void writeCells(const Sheet &sheet, lxw_worksheet *to)
    {
        for (std::size_t number = 0; number < sheet.rows.size(); ++number) {
            const model::Row &row = sheet.rows[number];
            const auto index = static_cast<lxw_row_t>(number);
            const std::optional<int> height = row.height != model::Unset ? row.height : heightForFonts(sheet, row);
            if (height) {
                lxw_row_col_options options{};
                options.hidden = *height == 0;
                check(worksheet_set_row_opt(to, index, *height / 20.0, nullptr, &options));
            }
            for (const Cell &cell : row.cells) {
                writeCell(cell, index, to);
            }
        }
    }

    void writeCell(const Cell &cell, lxw_row_t row, lxw_worksheet *to)
    {
        lxw_format *look = format(cell.style);
        if (cell.content == Content::Number) {
            check(worksheet_write_number(to, row, cell.column, cell.number, look));
        } else if (cell.content == Content::Text) {
            check(worksheet_write_string(to, row, cell.column, storedText(book_.texts.at(cell.index).text).constData(), look));
        } else {
            check(worksheet_write_blank(to, row, cell.column, look));
        }
    }

    static void writePage(const model::Page &page, lxw_worksheet *to)
    {
        worksheet_set_paper(to, static_cast<std::uint8_t>(page.paper));
        page.orientation == xlLandscape ? worksheet_set_landscape(to) : worksheet_set_portrait(to);
        worksheet_set_margins(to, page.margins[0], page.margins[1], page.margins[2], page.margins[3]);
        const QString header = joinedHeader(page.header);
        const QString footer = joinedHeader(page.footer);
        if (!header.isEmpty()) {
            check(worksheet_set_header(to, header.toUtf8().constData()));
        }
        if (!footer.isEmpty()) {
            check(worksheet_set_footer(to, footer.toUtf8().constData()));
        }
        if (page.titleRows) {
            check(worksheet_repeat_rows(to, static_cast<lxw_row_t>(page.titleRows->first),
                                        static_cast<lxw_row_t>(page.titleRows->last)));
        }
        if (page.titleColumns) {
            check(worksheet_repeat_columns(to, static_cast<lxw_col_t>(page.titleColumns->first),
                                           static_cast<lxw_col_t>(page.titleColumns->last)));
        }
        if (!page.breaks.empty()) {
            // The list ends with a 0.
            std::vector<lxw_row_t> breaks(page.breaks.begin(), page.breaks.end());
            breaks.resize(std::min<std::size_t>(breaks.size(), MaxBreaks));
            breaks.push_back(0);
            check(worksheet_set_h_pagebreaks(to, breaks.data()));
        }
        if (page.pagesWide > 0) {
            worksheet_fit_to_pages(to, static_cast<std::uint16_t>(page.pagesWide), 0);
        }
    }

    lxw_format *format(std::uint32_t style)
    {
        if (style != 0 && !formats_[style]) {
            formats_[style] = newFormat(book_.styles.at(style));
        }
        return formats_[style];
    }

    void setFont(lxw_format *format, const Style &style) const
    {
        format_set_font_name(format, book_.styles.fontNames.at(style[Trait::FontName]).toUtf8().constData());
        format_set_font_size(format, style[Trait::FontSize] / 20.0);
    }

    lxw_format *newFormat(const Style &style) const
    {
        lxw_format *format = workbook_add_format(target_);
        setFont(format, style);
        if (style[Trait::Bold] != 0) {
            format_set_bold(format);
        }
        format_set_underline(format, static_cast<std::uint8_t>(style[Trait::Underline]));
        constexpr std::array<std::uint8_t, 7> across{LXW_ALIGN_NONE, LXW_ALIGN_LEFT,    LXW_ALIGN_CENTER,       LXW_ALIGN_RIGHT,
                                                     LXW_ALIGN_FILL, LXW_ALIGN_JUSTIFY, LXW_ALIGN_CENTER_ACROSS};
        constexpr std::array<std::uint8_t, 4> down{LXW_ALIGN_VERTICAL_TOP, LXW_ALIGN_VERTICAL_CENTER, LXW_ALIGN_VERTICAL_BOTTOM,
                                                   LXW_ALIGN_VERTICAL_JUSTIFY};
        const auto horizontal = static_cast<std::size_t>(style[Trait::Horizontal]);
        const auto vertical = static_cast<std::size_t>(style[Trait::Vertical]);
        format_set_align(format, horizontal < across.size() ? across[horizontal] : std::uint8_t{LXW_ALIGN_NONE});
        format_set_align(format, vertical < down.size() ? down[vertical] : std::uint8_t{LXW_ALIGN_VERTICAL_BOTTOM});
        if (style[Trait::Wrap] != 0) {
            format_set_text_wrap(format);
        }
        // The library's number for stacked letters.
        format_set_rotation(format, static_cast<std::int16_t>(style[Trait::Rotation] == 255 ? 270 : style[Trait::Rotation]));
        format_set_num_format(format, book_.styles.numberFormats.at(style[Trait::NumberFormat]).toUtf8().constData());
        format_set_left(format, static_cast<std::uint8_t>(style[Trait::LeftLine]));
        format_set_right(format, static_cast<std::uint8_t>(style[Trait::RightLine]));
        format_set_top(format, static_cast<std::uint8_t>(style[Trait::TopLine]));
        format_set_bottom(format, static_cast<std::uint8_t>(style[Trait::BottomLine]));
        if (const std::int32_t shade = style.shade(); shade >= 0) {
            format_set_pattern(format, LXW_PATTERN_SOLID);
            format_set_fg_color(format, static_cast<lxw_color_t>(shade));
        }
        return format;
    }

    const Book &book_;
    lxw_workbook *target_;
    std::vector<lxw_format *> formats_;
};

void refuseLosses(const Book &book)
{
    for (const auto &sheet : book.sheets) {
        if (sheet->holdsXlsContent || (book.passthrough && !sheet->passthrough)) {
            throw ExcelError(
                QStringLiteral("the sheet \"%1\" holds formulas, notes or images that only a .xls can hold.").arg(sheet->name));
        }
    }
}
} // namespace

QByteArray xlsxBytes(const Book &book)
{
    refuseLosses(book);
    const PointDecimals pointDecimals;
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        throw ExcelError(QStringLiteral("there is no space for temporary files: %1").arg(folder.errorString()));
    }
    const QString path = folder.filePath(QStringLiteral("book.xlsx"));
    QByteArray folderName = QFile::encodeName(folder.path());
    lxw_workbook_options options{};
    options.tmpdir = folderName.data();
    std::unique_ptr<lxw_workbook, FreeBook> target(workbook_new_opt(QFile::encodeName(path).constData(), &options));
    if (!target) {
        throw ExcelError(QStringLiteral("there is not enough memory for it."));
    }
    XlsxWriter(book, target.get()).write();
    check(workbook_close(target.release()));
    return wholeFile(path);
}

} // namespace excel
