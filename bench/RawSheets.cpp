// SPDX-License-Identifier: GPL-3.0-or-later
#include "RawSheets.h"

#include <QFile>

#include <xlsxwriter.h>

#include <array>
#include <string>

namespace
{

struct CellStyle {
    double size;
    bool bold = false;
    std::uint8_t line = LXW_BORDER_NONE;
    std::uint8_t across = LXW_ALIGN_NONE;
    std::uint8_t down = LXW_ALIGN_VERTICAL_CENTER;
    std::int16_t turn = 0;
    bool wrap = false;
};

struct Heading {
    lxw_row_t row;
    lxw_col_t first;
    lxw_col_t last;
    const char *text;
    lxw_format *style;
};

class RawSheets
{
public:
    explicit RawSheets(const QString &path) : book_(workbook_new(QFile::encodeName(path).constData()))
    {
        title_ = add({.size = 15, .bold = true, .across = LXW_ALIGN_CENTER});
        format_set_pattern(title_, LXW_PATTERN_SOLID);
        format_set_fg_color(title_, 0xD9D9D9);
        farm_ = add({.size = 11, .bold = true});
        bold_ = add({.size = 10, .bold = true});
        plain_ = add({.size = 10});
        variety_ = add({.size = 12, .bold = true, .down = LXW_ALIGN_VERTICAL_TOP, .wrap = true});
        box_ = add({.size = 10, .bold = true, .line = LXW_BORDER_HAIR, .across = LXW_ALIGN_LEFT});
        pest_ =
            add({.size = 8, .line = LXW_BORDER_THIN, .across = LXW_ALIGN_CENTER, .down = LXW_ALIGN_VERTICAL_BOTTOM, .turn = 90});
        number_ = add({.size = 8, .bold = true, .line = LXW_BORDER_THIN, .across = LXW_ALIGN_LEFT});
        label_ = add({.size = 8, .bold = true, .line = LXW_BORDER_THIN});
        cell_ = add({.size = 11, .line = LXW_BORDER_THIN, .down = LXW_ALIGN_VERTICAL_BOTTOM});
    }

    void writeSheet(const std::string &block, int points, int pests)
    {
        lxw_worksheet *sheet = workbook_add_worksheet(book_, block.c_str());
        writeHeading(sheet, block);
        writeGrid(sheet, points, pests);
        worksheet_set_column(sheet, 0, 15, 5, nullptr);
        worksheet_set_paper(sheet, 9);
        worksheet_set_portrait(sheet);
        worksheet_set_margins(sheet, 1.25 / 2.54, 0.7, 0.75, 0.75);
        worksheet_set_header(sheet, "&LDate &D Time &T&RPage #&P Of &N Pages");
        worksheet_repeat_rows(sheet, 0, 6);
        worksheet_repeat_columns(sheet, 0, 0);
        worksheet_fit_to_pages(sheet, 1, 0);
    }

    void close()
    {
        workbook_add_worksheet(book_, nullptr);
        if (workbook_close(book_) != LXW_NO_ERROR) {
            qFatal("the raw workbook was not written");
        }
    }

private:
    lxw_format *add(const CellStyle &style)
    {
        lxw_format *format = workbook_add_format(book_);
        format_set_font_name(format, "Calibri");
        format_set_font_size(format, style.size);
        if (style.bold) {
            format_set_bold(format);
        }
        format_set_border(format, style.line);
        format_set_align(format, style.across);
        format_set_align(format, style.down);
        format_set_rotation(format, style.turn);
        if (style.wrap) {
            format_set_text_wrap(format);
        }
        return format;
    }

    void writeHeading(lxw_worksheet *sheet, const std::string &block)
    {
        const std::array<Heading, 18> headings{{{0, 0, 15, "Pest Monitoring: Count", title_},
                                                {2, 0, 7, "Farm", farm_},
                                                {2, 8, 8, "Block:", bold_},
                                                {2, 9, 10, block.c_str(), bold_},
                                                {3, 0, 2, "Cultivars:", bold_},
                                                {3, 3, 15, "Variety", variety_},
                                                {4, 0, 2, "Completion Date:", plain_},
                                                {4, 3, 5, "23/11/2026", bold_},
                                                {4, 6, 8, "Date Completed:", plain_},
                                                {4, 9, 10, "", bold_},
                                                {4, 11, 13, "Instruction To:", plain_},
                                                {4, 14, 15, "Anna", bold_},
                                                {5, 0, 15, "", plain_},
                                                {6, 0, 2, "Person", bold_},
                                                {6, 3, 6, "", box_},
                                                {6, 7, 9, "Signed", bold_},
                                                {6, 10, 15, "", box_},
                                                {7, 0, 15, "", plain_}}};
        for (const Heading &heading : headings) {
            worksheet_set_row(sheet, heading.row, heading.row == 3 ? 75 : 18, nullptr);
            if (heading.first == heading.last) {
                worksheet_write_string(sheet, heading.row, heading.first, heading.text, heading.style);
            } else {
                worksheet_merge_range(sheet, heading.row, heading.first, heading.row, heading.last, heading.text, heading.style);
            }
        }
    }

    void writeGrid(lxw_worksheet *sheet, int points, int pests)
    {
        constexpr lxw_row_t firstRow = 8;
        worksheet_set_row(sheet, firstRow, 95, nullptr);
        worksheet_write_string(sheet, firstRow, 0, "Pnt", label_);
        for (int pest = 1; pest <= pests; ++pest) {
            const std::string name = "Pest " + std::to_string(pest);
            worksheet_write_string(sheet, firstRow, static_cast<lxw_col_t>(pest), name.c_str(), pest_);
        }
        for (int line = 1; line <= points + 2; ++line) {
            const lxw_row_t row = firstRow + static_cast<lxw_row_t>(line);
            if (line <= points) {
                worksheet_set_row(sheet, row, 18, nullptr);
                worksheet_write_number(sheet, row, 0, line, number_);
            } else if (line == points + 1) {
                worksheet_write_blank(sheet, row, 0, cell_);
            } else {
                worksheet_set_row(sheet, row, 18, nullptr);
                worksheet_write_string(sheet, row, 0, "Tot", label_);
            }
            for (int pest = 1; pest <= pests; ++pest) {
                worksheet_write_blank(sheet, row, static_cast<lxw_col_t>(pest), cell_);
            }
        }
    }

    lxw_workbook *book_;
    lxw_format *title_;
    lxw_format *farm_;
    lxw_format *bold_;
    lxw_format *plain_;
    lxw_format *variety_;
    lxw_format *box_;
    lxw_format *pest_;
    lxw_format *number_;
    lxw_format *label_;
    lxw_format *cell_;
};

} // namespace

void writeRawBlockSheets(const QString &path, int blocks, int points, int pests)
{
    RawSheets sheets(path);
    for (int block = 1; block <= blocks; ++block) {
        sheets.writeSheet("Block " + std::to_string(block), points, pests);
    }
    sheets.close();
}
