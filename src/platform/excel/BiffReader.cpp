// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffReader.h"

#include "platform/excel/BiffFormats.h"
#include "platform/excel/BiffLayout.h"
#include "platform/excel/BiffNames.h"
#include "platform/excel/BiffSheetReader.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/WholeFile.h"

#include <algorithm>
#include <array>
#include <set>

namespace excel
{

using namespace biff;
using model::Book;
using model::Record;

namespace
{
[[noreturn]] void refuse(const QString &reason)
{
    throw ExcelError(reason);
}

/// The records from a begin to its end.
std::vector<Record> recordsFrom(const QByteArray &stream, std::size_t offset, qsizetype &budget)
{
    if (offset >= static_cast<std::size_t>(stream.size())) {
        refuse(QStringLiteral("it is damaged: a sheet lies behind its end."));
    }
    Reader reader(QByteArrayView(stream).sliced(static_cast<qsizetype>(offset)));
    const qsizetype start = reader.left();
    std::vector<Record> records;
    int depth = 0;
    do {
        Record record;
        record.id = static_cast<std::uint16_t>(reader.u16());
        const auto length = static_cast<qsizetype>(reader.u16());
        record.body = reader.raw(length).toByteArray();
        depth += record.id == BeginOfStream ? 1 : record.id == EndOfStream ? -1 : 0;
        if (records.empty() && record.id != BeginOfStream) {
            refuse(QStringLiteral("it is damaged: a sheet has no beginning."));
        }
        records.push_back(std::move(record));
    } while (depth > 0);
    budget -= start - reader.left();
    if (budget < 0) {
        refuse(QStringLiteral("it is damaged: its sheets lie over each other."));
    }
    return records;
}

class BookReader
{
public:
    BookReader(Book &book, const QByteArray &stream) : book_(book), stream_(stream), budget_(stream.size()) {}

    void read()
    {
        const std::vector<Record> records = recordsFrom(stream_, 0, budget_);
        checkKind(records.front());
        for (std::size_t at = 0; at < records.size(); ++at) {
            takeGlobal(records, at);
        }
        completeBook(book_.kept->globals);
        if (book_.kept->palette.empty()) {
            book_.kept->palette = standardPalette();
        }
        readFormats();
        readTexts();
        if (offsets_.empty()) {
            refuse(QStringLiteral("it has no sheets."));
        }
        for (std::size_t number = 0; number < offsets_.size(); ++number) {
            readSheetAt(offsets_[number], *book_.sheets[number]);
        }
        readTitleNames(book_);
        book_.activeSheet = activeSheet_ < book_.sheets.size() ? activeSheet_ : 0;
    }

private:
    static void checkKind(const Record &begin)
    {
        constexpr std::uint16_t kindOfBook = 5;
        if (u16At(begin.body, 0) != Version8) {
            refuse(QStringLiteral("it was written by a spreadsheet program that is too old; save it as .xls of 97 to 2003."));
        }
        if (u16At(begin.body, 2) != kindOfBook) {
            refuse(QStringLiteral("it is no workbook."));
        }
    }

    void hold(std::uint16_t id)
    {
        if (held_.insert(id).second) {
            book_.kept->globals.push_back({id, {}});
        }
    }

    using Records = std::vector<Record>;
    /// Takes what a record tells, and gives it its place among the kept ones.
    struct Told {
        std::uint16_t id;
        void (*take)(BookReader &reader, const Records &records, std::size_t at);
    };

    static const Told *toldBy(std::uint16_t id)
    {
        using Self = BookReader;
        using Kept = model::KeptBook;
        static constexpr std::array<Told, 10> all{{
            {FilePass, [](Self &, const Records &, std::size_t) { refuse(QStringLiteral("it is protected by a password.")); }},
            {FontRecord, [](Self &self, const Records &records, std::size_t at) { self.collect(&Kept::fonts, records[at], 16); }},
            {NumberFormat,
             [](Self &self, const Records &records, std::size_t at) { self.collect(&Kept::numberFormats, records[at], 5); }},
            {ExtendedFormat,
             [](Self &self, const Records &records, std::size_t at) { self.collect(&Kept::formats, records[at], 20); }},
            {BoundSheet, [](Self &self, const Records &records, std::size_t at) { self.takeBoundSheet(records[at].body); }},
            {Palette, [](Self &self, const Records &records, std::size_t at) { self.takePalette(records[at].body); }},
            {SheetNumbers, [](Self &self, const Records &, std::size_t) { self.hold(SheetNumbers); }},
            {SharedTextIndex, [](Self &, const Records &, std::size_t) {}},
            {SharedTexts, [](Self &self, const Records &records, std::size_t at) { self.takeTexts(records, at); }},
            {ExternSheet, [](Self &self, const Records &records, std::size_t at) { self.takeReferences(records, at); }},
        }};
        const auto found = std::find_if(all.begin(), all.end(), [id](const Told &told) { return told.id == id; });
        return found == all.end() ? nullptr : &*found;
    }

    void takeGlobal(const Records &records, std::size_t at)
    {
        const Record &record = records[at];
        if (record.id == Continuation && lastWasTold_) {
            // It was read with the record that it goes on from.
            return;
        }
        const Told *told = toldBy(record.id);
        lastWasTold_ = told != nullptr;
        if (told != nullptr) {
            told->take(*this, records, at);
            return;
        }
        if (record.id == Window1) {
            activeSheet_ = u16At(record.body, 10);
            Reader(record.body).skip(18);
        }
        book_.kept->globals.push_back(record);
    }

    /// Each record of the list is at least so long.
    void collect(std::vector<QByteArray> model::KeptBook::*list, const Record &record, qsizetype least)
    {
        Reader(record.body).skip(least);
        ((*book_.kept).*list).push_back(record.body);
        hold(record.id);
    }

    void takeTexts(const Records &records, std::size_t at)
    {
        textParts_.push_back(records[at].body);
        for (std::size_t next = at + 1; next < records.size() && records[next].id == Continuation; ++next) {
            textParts_.push_back(records[next].body);
        }
        hold(SharedTexts);
    }

    void takeReferences(const Records &records, std::size_t at)
    {
        QByteArray body = records[at].body;
        for (std::size_t next = at + 1; next < records.size() && records[next].id == Continuation; ++next) {
            body += records[next].body;
        }
        book_.kept->countsOnSheetPlaces = true;
        book_.kept->globals.push_back({ExternSheet, body});
    }

    void takeBoundSheet(const QByteArray &body)
    {
        Reader reader(body);
        offsets_.push_back(reader.u32());
        model::Sheet &sheet = *book_.sheets.emplace_back(std::make_unique<model::Sheet>());
        sheet.book = &book_;
        sheet.kind = static_cast<std::uint16_t>(reader.u16());
        sheet.name = takeShortText(reader);
        hold(BoundSheet);
    }

    void takePalette(const QByteArray &body)
    {
        Reader reader(body);
        auto &colours = book_.kept->palette;
        // Of several palettes the last one counts.
        colours.clear();
        for (std::size_t rest = std::min<std::size_t>(reader.u16(), 56); rest > 0; --rest) {
            const std::size_t red = reader.u8();
            const std::size_t green = reader.u8();
            colours.push_back(static_cast<std::int32_t>((red << 16) | (green << 8) | reader.u8()));
            reader.skip(1);
        }
        hold(Palette);
    }

    void readFormats()
    {
        const model::KeptBook &kept = *book_.kept;
        if (kept.formats.empty() || kept.fonts.empty()) {
            refuse(QStringLiteral("it is damaged: it tells no formats."));
        }
        const FormatReader reader(kept, book_.styles);
        const std::size_t standard = std::min<std::size_t>(StandardFormat, kept.formats.size() - 1);
        book_.styles.setStandard(reader.style(standard));
        for (std::size_t format = 0; format < kept.formats.size(); ++format) {
            shared_.styles.push_back(book_.styles.place(reader.style(format)));
        }
    }

    void readTexts()
    {
        if (textParts_.empty()) {
            return;
        }
        for (model::Text &text : takeSharedTexts(textParts_)) {
            const bool plain = text.runs.isEmpty() && text.reading.isEmpty();
            shared_.texts.push_back(plain ? book_.texts.place(text.text) : book_.texts.add(std::move(text)));
        }
    }

    void readSheetAt(std::size_t offset, model::Sheet &sheet)
    {
        std::vector<Record> records = recordsFrom(stream_, offset, budget_);
        sheet.hasCells = (sheet.kind >> 8) == 0 && u16At(records.front().body, 2) == KindOfWorksheet;
        if (sheet.hasCells) {
            biff::readSheet(records, shared_, sheet);
        } else {
            sheet.kept = std::move(records);
        }
    }

    Book &book_;
    const QByteArray &stream_;
    qsizetype budget_;
    std::vector<std::size_t> offsets_;
    std::vector<QByteArray> textParts_;
    SharedParts shared_;
    /// Told records that have their place in the kept ones.
    std::set<std::uint16_t> held_;
    std::size_t activeSheet_ = 0;
    bool lastWasTold_ = false;
};

void checkContainer(const QByteArray &bytes)
{
    if (bytes.isEmpty()) {
        refuse(QStringLiteral("it is empty."));
    }
    if (bytes.startsWith("PK\x03\x04")) {
        refuse(QStringLiteral("it is a workbook of another format (.xlsx), whatever its name."));
    }
    if (!isCompound(bytes)) {
        refuse(QStringLiteral("it is no .xls workbook."));
    }
}
} // namespace

std::shared_ptr<Book> bookFromXls(const QByteArray &bytes)
{
    checkContainer(bytes);
    auto book = std::make_shared<Book>();
    book->kept.emplace();
    book->format = xlExcel8;
    book->rowLimit = RowsOfXls;
    book->columnLimit = ColumnsOfXls;
    auto &container = book->kept->container;
    container = readCompound(bytes);
    const auto holds = [&](QLatin1String name) {
        return std::any_of(container.begin(), container.end(), [&](const CompoundEntry &entry) { return isStream(entry, name); });
    };
    const auto found = std::find_if(container.begin(), container.end(),
                                    [](const CompoundEntry &entry) { return isStream(entry, StreamOfBook); });
    if (found == container.end()) {
        refuse(holds(QLatin1String("EncryptedPackage")) ? QStringLiteral("it is protected by a password.")
                   : holds(QLatin1String("Book")) ? QStringLiteral("it was written by a spreadsheet program that is too old; "
                                                                   "save it as .xls of 97 to 2003.")
                                                  : QStringLiteral("it holds no workbook."));
    }
    const QByteArray stream = std::exchange(found->bytes, QByteArray());
    BookReader(*book, stream).read();
    return book;
}

std::shared_ptr<Book> readXls(const QString &path)
{
    std::shared_ptr<Book> book;
    try {
        book = bookFromXls(wholeFile(path));
    } catch (const ExcelError &error) {
        throw ExcelError(QStringLiteral("The file %1 cannot be opened: %2").arg(path, error.description()));
    }
    book->path = path;
    return book;
}

} // namespace excel
