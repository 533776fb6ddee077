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

namespace
{
[[noreturn]] void refuse(const QString &reason)
{
    throw ExcelError(reason);
}

/// The records up to the end of their substream.
std::vector<BiffRecord> recordsFrom(const QByteArray &stream, std::size_t offset, qsizetype &budget)
{
    if (offset >= static_cast<std::size_t>(stream.size())) {
        refuse(QStringLiteral("it is damaged: a sheet begins after its end."));
    }
    Reader reader(QByteArrayView(stream).sliced(static_cast<qsizetype>(offset)));
    const qsizetype start = reader.left();
    std::vector<BiffRecord> records;
    int depth = 0;
    do {
        BiffRecord record;
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
        refuse(QStringLiteral("it is damaged: its sheets overlap."));
    }
    return records;
}

class BookReader
{
public:
    BookReader(Book &book, const QByteArray &stream) : book_(book), stream_(stream), budget_(stream.size()) {}

    void read()
    {
        const std::vector<BiffRecord> records = recordsFrom(stream_, 0, budget_);
        checkKind(records.front());
        for (std::size_t at = 0; at < records.size(); ++at) {
            takeGlobal(records, at);
        }
        completeBook(book_.passthrough->globals);
        if (book_.passthrough->palette.empty()) {
            book_.passthrough->palette = standardPalette();
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
    static void checkKind(const BiffRecord &begin)
    {
        constexpr std::uint16_t kindOfBook = 5;
        if (u16At(begin.body, 0) != Version8) {
            refuse(QStringLiteral("its format is too old; save it as .xls of 97 to 2003."));
        }
        if (u16At(begin.body, 2) != kindOfBook) {
            refuse(QStringLiteral("it is not a workbook."));
        }
    }

    void hold(std::uint16_t id)
    {
        if (held_.insert(id).second) {
            book_.passthrough->globals.push_back({id, {}});
        }
    }

    using Records = std::vector<BiffRecord>;
    /// Reads a record into the model and adds its placeholder.
    struct Handler {
        std::uint16_t id;
        void (*take)(BookReader &reader, const Records &records, std::size_t at);
    };

    static const Handler *handlerFor(std::uint16_t id)
    {
        using Self = BookReader;
        static constexpr std::array<Handler, 10> all{{
            {FilePass, [](Self &, const Records &, std::size_t) { refuse(QStringLiteral("it is protected by a password.")); }},
            {FontRecord,
             [](Self &self, const Records &records, std::size_t at) { self.collect(&BookPassthrough::fonts, records[at], 16); }},
            {NumberFormat,
             [](Self &self, const Records &records, std::size_t at) {
                 self.collect(&BookPassthrough::numberFormats, records[at], 5);
             }},
            {ExtendedFormat,
             [](Self &self, const Records &records, std::size_t at) {
                 self.collect(&BookPassthrough::formats, records[at], 20);
             }},
            {BoundSheet, [](Self &self, const Records &records, std::size_t at) { self.takeBoundSheet(records[at].body); }},
            {Palette, [](Self &self, const Records &records, std::size_t at) { self.takePalette(records[at].body); }},
            {SheetNumbers, [](Self &self, const Records &, std::size_t) { self.hold(SheetNumbers); }},
            {SharedTextIndex, [](Self &, const Records &, std::size_t) {}},
            {SharedTexts, [](Self &self, const Records &records, std::size_t at) { self.takeTexts(records, at); }},
            {ExternSheet, [](Self &self, const Records &records, std::size_t at) { self.takeReferences(records, at); }},
        }};
        const auto found = std::find_if(all.begin(), all.end(), [id](const Handler &handler) { return handler.id == id; });
        return found == all.end() ? nullptr : &*found;
    }

    void takeGlobal(const Records &records, std::size_t at)
    {
        const BiffRecord &record = records[at];
        if (record.id == Continuation && lastWasModelled_) {
            // It was read with the record that it continues.
            return;
        }
        const Handler *handler = handlerFor(record.id);
        lastWasModelled_ = handler != nullptr;
        if (handler != nullptr) {
            handler->take(*this, records, at);
            return;
        }
        if (record.id == Window1) {
            activeSheet_ = u16At(record.body, 10);
            Reader(record.body).skip(18);
        }
        book_.passthrough->globals.push_back(record);
    }

    /// Records shorter than `least` are damage.
    void collect(std::vector<QByteArray> BookPassthrough::*list, const BiffRecord &record, qsizetype least)
    {
        Reader(record.body).skip(least);
        ((*book_.passthrough).*list).push_back(record.body);
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
        book_.sheetOrderIsFixed = true;
        book_.passthrough->globals.push_back({ExternSheet, body});
    }

    void takeBoundSheet(const QByteArray &body)
    {
        Reader reader(body);
        offsets_.push_back(reader.u32());
        model::Sheet &sheet = *book_.sheets.emplace_back(std::make_unique<model::Sheet>());
        sheet.book = &book_;
        sheet.passthrough = std::make_shared<SheetPassthrough>();
        sheet.passthrough->kind = static_cast<std::uint16_t>(reader.u16());
        sheet.name = takeShortText(reader);
        hold(BoundSheet);
    }

    void takePalette(const QByteArray &body)
    {
        Reader reader(body);
        auto &colours = book_.passthrough->palette;
        // The last of several palettes applies.
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
        const BookPassthrough &passthrough = *book_.passthrough;
        if (passthrough.formats.empty() || passthrough.fonts.empty()) {
            refuse(QStringLiteral("it is damaged: it has no formats."));
        }
        const FormatReader reader(passthrough, book_.styles);
        const std::size_t standard = std::min<std::size_t>(StandardFormat, passthrough.formats.size() - 1);
        book_.styles.setStandard(reader.style(standard));
        for (std::size_t format = 0; format < passthrough.formats.size(); ++format) {
            shared_.styles.push_back(book_.styles.indexOf(reader.style(format)));
        }
    }

    void readTexts()
    {
        if (textParts_.empty()) {
            return;
        }
        for (model::Text &text : takeSharedTexts(textParts_)) {
            const bool plain = text.runs.isEmpty() && text.reading.isEmpty();
            shared_.texts.push_back(plain ? book_.texts.indexOf(text.text) : book_.texts.add(std::move(text)));
        }
    }

    void readSheetAt(std::size_t offset, model::Sheet &sheet)
    {
        std::vector<BiffRecord> records = recordsFrom(stream_, offset, budget_);
        sheet.hasCells = (sheet.passthrough->kind >> 8) == 0 && u16At(records.front().body, 2) == KindOfWorksheet;
        if (sheet.hasCells) {
            biff::readSheet(records, shared_, sheet);
        } else {
            sheet.passthrough->records = std::move(records);
            sheet.holdsXlsContent = true;
        }
    }

    Book &book_;
    const QByteArray &stream_;
    qsizetype budget_;
    std::vector<std::size_t> offsets_;
    std::vector<QByteArray> textParts_;
    SharedParts shared_;
    /// Modelled records that have their placeholder.
    std::set<std::uint16_t> held_;
    std::size_t activeSheet_ = 0;
    bool lastWasModelled_ = false;
};

void checkContainer(const QByteArray &bytes)
{
    if (bytes.isEmpty()) {
        refuse(QStringLiteral("it is empty."));
    }
    if (bytes.startsWith("PK\x03\x04")) {
        refuse(QStringLiteral("it is a workbook of another format (.xlsx) in spite of its name."));
    }
    if (!isCompound(bytes)) {
        refuse(QStringLiteral("it is not a .xls workbook."));
    }
}
} // namespace

std::shared_ptr<Book> bookFromXls(const QByteArray &bytes)
{
    checkContainer(bytes);
    auto book = std::make_shared<Book>();
    book->passthrough = std::make_shared<BookPassthrough>();
    book->format = xlExcel8;
    book->rowLimit = RowsOfXls;
    book->columnLimit = ColumnsOfXls;
    auto &container = book->passthrough->container;
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
                                                  : QStringLiteral("it does not contain a workbook."));
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
