// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListRules.h"

#include "common/PestTypes.h"

#include <algorithm>
#include <optional>

namespace lists
{

namespace
{

/// Marks that turn the direction of what follows, or nothing that is seen: names that differ by them alone look the same.
bool isInvisibleMark(char32_t c)
{
    return c == 0x061C || c == 0x200B || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2060 && c <= 0x2069) || c == 0xFEFF;
}

QString codePoint(char32_t c)
{
    return QStringLiteral("U+%1").arg(static_cast<uint>(c), 4, 16, QLatin1Char('0')).toUpper();
}

/// What no name may hold; nothing when the text is sound.
std::optional<QString> unprintable(const QString &text)
{
    for (const char32_t c : text.toUcs4()) {
        if (c == u'\n' || c == u'\r' || c == 0x2028 || c == 0x2029) {
            return QStringLiteral("It holds a line break.");
        }
        if (c == u'\t') {
            return QStringLiteral("It holds a tab.");
        }
        if (QChar::category(c) == QChar::Other_Control || c == QChar::ReplacementCharacter) {
            return QStringLiteral("It holds a character that cannot be shown (%1).").arg(codePoint(c));
        }
        if (isInvisibleMark(c)) {
            return QStringLiteral("It holds an invisible mark (%1). Type the name again.").arg(codePoint(c));
        }
    }
    return std::nullopt;
}

/// The first character that a sheet or a file cannot have in its name.
std::optional<QChar> unfitForFileName(const QString &name)
{
    constexpr QStringView Refused = u":\\/?*[]\"<>|";
    const auto found = std::find_if(name.begin(), name.end(), [&](QChar c) { return Refused.contains(c); });
    return found == name.end() ? std::nullopt : std::optional(*found);
}

class RecordCheck
{
public:
    RecordCheck(const FarmLists &lists, List list, const Record &record, const Record *before)
        : lists_(lists), table_(tableOf(list)), record_(record), before_(before)
    {
    }

    std::vector<Finding> run()
    {
        for (int column = 0; column < table_.columnCount(); ++column) {
            if (differs(column)) {
                check(column);
            }
        }
        if (differs(table_.nameColumn) || (table_.ownerColumn >= 0 && differs(table_.ownerColumn))) {
            checkDuplicates();
        }
        return std::move(findings_);
    }

private:
    bool differs(int column) const { return !before_ || before_->cell(column) != record_.cell(column); }

    void refuse(int column, const QString &reason) { findings_.push_back({column, reason, true}); }
    void note(int column, const QString &reason) { findings_.push_back({column, reason, false}); }

    void check(int column)
    {
        const Column &description = table_.column(column);
        if (description.required && record_.cell(column).isEmpty()) {
            refuse(column, missing(column));
            return;
        }
        switch (description.kind) {
        case ColumnKind::Text:
            checkText(column);
            break;
        case ColumnKind::Points:
            checkPoints(column);
            break;
        case ColumnKind::PestKind:
            if (!pestTypeCaptions().contains(pestTypeCaption(record_.cell(column)))) {
                refuse(column,
                       QStringLiteral("The kind is one of %1; a pest of another kind shows only under \"<All>\".")
                           .arg(pestTypeCaptions().join(QStringLiteral(", "))));
            }
            break;
        case ColumnKind::Reference:
            checkReference(column);
            break;
        case ColumnKind::YesNo:
        case ColumnKind::References:
        case ColumnKind::Parent:
            break;
        }
    }

    QString missing(int column) const
    {
        if (table_.list == List::Workers) {
            return QStringLiteral("The nickname is missing: a worker without one cannot be picked.");
        }
        if (table_.list == List::Plantings && table_.column(column).target == List::Varieties) {
            return QStringLiteral(
                "The variety is missing: a planted block without variety, type and group vanishes from the lists.");
        }
        return QStringLiteral("%1 is missing.").arg(table_.column(column).heading);
    }

    void checkText(int column)
    {
        const QString &text = record_.cell(column);
        const int size = lists_.size(table_.list, column);
        bool isNumber = false;
        static_cast<void>(text.toInt(&isNumber));
        if (const std::optional<QString> reason = unprintable(text)) {
            refuse(column, *reason);
        } else if (text.size() > size) {
            refuse(column, QStringLiteral("It has %1 characters; %2 are the most.").arg(text.size()).arg(size));
        } else if (text.startsWith(u'=')) {
            refuse(column, QStringLiteral("It begins with \"=\", which a spreadsheet takes for a formula."));
        } else if (lists_.isNumeric(table_.list, column) && !isNumber) {
            refuse(column, QStringLiteral("This file takes whole numbers here alone."));
        } else if (table_.list == List::Blocks) {
            noteFileName(column, text);
        }
    }

    /// Block names become names of sheets and files.
    void noteFileName(int column, const QString &text)
    {
        if (const std::optional<QChar> refused = unfitForFileName(text)) {
            note(column,
                 QStringLiteral("It holds \"%1\", which the name of a sheet or file cannot have: the field sheet is named "
                                "otherwise.")
                     .arg(*refused));
        } else if (text.startsWith(u'\'') || text.endsWith(u'\'')) {
            note(column,
                 QStringLiteral("A sheet's name cannot begin or end with an apostrophe: the field sheet is named otherwise."));
        }
    }

    void checkPoints(int column)
    {
        bool isNumber = false;
        const int points = record_.cell(column).toInt(&isNumber);
        if (!isNumber || points < LeastPoints || points > MostPoints) {
            refuse(column,
                   QStringLiteral("Monitoring points are a whole number from %1 to %2.").arg(LeastPoints).arg(MostPoints));
        }
    }

    void checkReference(int column)
    {
        const List target = *table_.column(column).target;
        if (!lists_.find(target, record_.cell(column).toInt())) {
            refuse(column, QStringLiteral("There is no such %1.").arg(tableOf(target).singular));
            return;
        }
        if (table_.list != List::Plantings) {
            return;
        }
        for (int parent = 0; parent < table_.columnCount(); ++parent) {
            const Column &description = table_.column(parent);
            if (description.kind == ColumnKind::Parent
                && !lists_.find(*description.target, lists_.target(table_.list, record_, parent))
                && (description.from == column || table_.column(description.from).from == column)) {
                refuse(column,
                       QStringLiteral("The %1 of this %2 is missing: the planted block would vanish from the lists.")
                           .arg(tableOf(*description.target).singular, tableOf(target).singular));
                return;
            }
        }
    }

    void checkDuplicates()
    {
        const QString &name = record_.cell(table_.nameColumn);
        if (name.isEmpty()) {
            return;
        }
        const auto scopeOf = [&](const Record &row) {
            return table_.scopeColumn < 0 ? 0 : lists_.target(table_.list, row, table_.scopeColumn);
        };
        for (const std::int32_t key : lists_.named(table_.list, name)) {
            const Record *other = lists_.find(table_.list, key);
            if (key == record_.key || !other || scopeOf(*other) != scopeOf(record_)) {
                continue;
            }
            if (table_.key.isEmpty()) {
                refuse(table_.nameColumn, QStringLiteral("There is a %1 of this name already.").arg(table_.singular));
            } else {
                note(table_.nameColumn, QStringLiteral("There is another %1 of this name.").arg(table_.singular));
            }
            return;
        }
    }

    const FarmLists &lists_;
    const Table &table_;
    const Record &record_;
    const Record *before_;
    std::vector<Finding> findings_;
};

} // namespace

std::vector<Finding> checkRecord(const FarmLists &lists, List list, const Record &record, const Record *before)
{
    return RecordCheck(lists, list, record, before).run();
}

} // namespace lists
