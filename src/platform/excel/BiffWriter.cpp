// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/BiffWriter.h"

#include "platform/excel/BiffLayout.h"
#include "platform/excel/BiffNames.h"
#include "platform/excel/BiffSheetWriter.h"
#include "platform/excel/ExcelError.h"

#include <algorithm>
#include <array>

namespace excel
{

using namespace biff;
using model::Book;
using model::Sheet;

namespace
{
constexpr qsizetype ShortestStream = 4096;

void checkLimits(const Book &book)
{
    for (const auto &sheet : book.sheets) {
        Area extent = sheet->used().value_or(Area{0, 0, -1, -1});
        for (const Area &merge : sheet->merges()) {
            extent.bottom = std::max(extent.bottom, merge.bottom);
            extent.right = std::max(extent.right, merge.right);
        }
        if (!sheet->columns.empty()) {
            extent.right = std::max(extent.right, sheet->columns.rbegin()->first);
        }
        const auto tell = [&](const QString &what, int count, int most) {
            throw ExcelError(QStringLiteral("the sheet \"%1\" has %2 %3; %4 are the most that a .xls holds.")
                                 .arg(sheet->name)
                                 .arg(count)
                                 .arg(what)
                                 .arg(most));
        };
        if (extent.bottom >= RowsOfXls) {
            tell(QStringLiteral("rows"), extent.bottom + 1, RowsOfXls);
        }
        if (extent.right >= ColumnsOfXls) {
            tell(QStringLiteral("columns"), extent.right + 1, ColumnsOfXls);
        }
    }
}

class BookWriter
{
public:
    explicit BookWriter(const Book &book)
        : book_(book), passthrough_(book.passthrough ? *book.passthrough : standardBook()), formats_(book, passthrough_),
          texts_(book), names_(book, passthrough_)
    {
    }

    QByteArray stream()
    {
        for (const BiffRecord &record : passthrough_.globals) {
            if (!putModelled(record)) {
                stream_.record(record.id, record.body);
            }
        }
        for (std::size_t number = 0; number < book_.sheets.size(); ++number) {
            // The list of sheets holds the offset of each.
            const auto start = static_cast<std::uint32_t>(stream_.size());
            stream_.patch(startOffsets_[number], start);
            putSheet(stream_, *book_.sheets[number], number == book_.activeSheet, formats_, texts_);
        }
        // A shorter stream would be stored among the container's small streams, which some programs do not read.
        if (stream_.size() < ShortestStream) {
            stream_.raw(QByteArray(ShortestStream - stream_.size(), '\0'));
        }
        return stream_.bytes();
    }

private:
    struct Handler {
        std::uint16_t id;
        void (*put)(BookWriter &writer, const QByteArray &asRead);
    };

    /// Writes a modelled record; false for one that is passed through.
    bool putModelled(const BiffRecord &record)
    {
        using Self = BookWriter;
        static constexpr std::array<Handler, 12> all{{
            {FontRecord, [](Self &self, const QByteArray &) { self.formats_.putFonts(self.stream_); }},
            {NumberFormat, [](Self &self, const QByteArray &) { self.formats_.putNumberFormats(self.stream_); }},
            {ExtendedFormat, [](Self &self, const QByteArray &) { self.formats_.putFormats(self.stream_); }},
            {Palette, [](Self &self, const QByteArray &) { self.formats_.putPalette(self.stream_); }},
            {SheetNumbers, [](Self &self, const QByteArray &) { self.putSheetNumbers(); }},
            {BoundSheet, [](Self &self, const QByteArray &) { self.putSheetList(); }},
            {Window1, [](Self &self, const QByteArray &asRead) { self.putWindow(asRead); }},
            {SupplyBook, [](Self &self, const QByteArray &asRead) { self.names_.putSupplyBook(self.stream_, asRead); }},
            {ExternSheet, [](Self &self, const QByteArray &) { self.names_.putReferences(self.stream_); }},
            {DefinedName, [](Self &self, const QByteArray &asRead) { self.names_.putName(self.stream_, asRead); }},
            {NewNames, [](Self &self, const QByteArray &) { self.names_.putNewNames(self.stream_); }},
            {SharedTexts,
             [](Self &self, const QByteArray &) { putSharedTexts(self.stream_, self.texts_.texts(), self.texts_.uses()); }},
        }};
        const auto found = std::find_if(all.begin(), all.end(), [&](const Handler &handler) { return handler.id == record.id; });
        if (found == all.end()) {
            return false;
        }
        found->put(*this, record.body);
        return true;
    }

    void putSheetNumbers()
    {
        stream_.head(SheetNumbers, 2 * book_.sheets.size());
        for (std::size_t number = 1; number <= book_.sheets.size(); ++number) {
            stream_.u16(number);
        }
    }

    void putSheetList()
    {
        for (const auto &sheet : book_.sheets) {
            Bytes body;
            body.u32(0).u16(sheet->passthrough ? sheet->passthrough->kind : 0);
            putShortText(body, sheet->name);
            startOffsets_.push_back(stream_.size() + 4);
            stream_.record(BoundSheet, body.bytes());
        }
    }

    void putWindow(const QByteArray &asRead)
    {
        QByteArray body = asRead;
        const auto active = static_cast<std::uint16_t>(book_.activeSheet);
        if (u16At(body, 10) != active) {
            setU16(body, 10, active);
            setU16(body, 12, 0);
        }
        setU16(body, 14, 1);
        stream_.record(Window1, body);
    }

    const Book &book_;
    const BookPassthrough &passthrough_;
    FormatWriter formats_;
    TextNumbers texts_;
    NameWriter names_;
    Bytes stream_;
    std::vector<qsizetype> startOffsets_;
};
} // namespace

QByteArray xlsBytes(const Book &book)
{
    checkLimits(book);
    std::vector<CompoundEntry> container = (book.passthrough ? *book.passthrough : standardBook()).container;
    const auto own = std::find_if(container.begin(), container.end(),
                                  [](const CompoundEntry &entry) { return isStream(entry, StreamOfBook); });
    own->bytes = BookWriter(book).stream();
    return writeCompound(container);
}

} // namespace excel
