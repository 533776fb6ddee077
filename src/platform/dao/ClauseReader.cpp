// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/ClauseReader.h"

#include "platform/dao/DataError.h"

#include <array>

namespace dao
{

void ClauseReader::failSyntax(const QString &what)
{
    throw DataError(DataErrorNumber::SyntaxError, QStringLiteral("The query cannot be read: %1.").arg(what));
}

void ClauseReader::failName(QStringView name)
{
    throw DataError(DataErrorNumber::TooFewParameters,
                    QStringLiteral("Too few parameters: the query names %1, which is no field of its tables.").arg(name));
}

void ClauseReader::requireContent(Range range)
{
    if (range.isEmpty()) {
        failSyntax(QStringLiteral("a clause is empty"));
    }
}

std::size_t ClauseReader::closingOf(std::size_t open, std::size_t end) const
{
    int depth = 0;
    for (std::size_t at = open; at < end; ++at) {
        depth += tokens_[at].isSymbol(u"(") ? 1 : tokens_[at].isSymbol(u")") ? -1 : 0;
        if (depth == 0) {
            return at;
        }
    }
    failSyntax(QStringLiteral("a bracket is not closed"));
}

std::vector<Range> ClauseReader::splitAtCommas(Range range) const
{
    std::vector<Range> parts;
    while (true) {
        const std::size_t comma = findOutsideBrackets(range, [this](std::size_t at) { return tokens_[at].isSymbol(u","); });
        if (comma == range.begin) {
            failSyntax(QStringLiteral("something is missing next to a comma or at the end"));
        }
        parts.push_back({range.begin, comma});
        if (comma == range.end) {
            return parts;
        }
        range.begin = comma + 1;
    }
}

Clauses ClauseReader::clausesOf(Range range) const
{
    struct Clause {
        QStringView word;
        bool needsBy;
        Range Clauses::*clause;
    };
    static constexpr std::array Order{
        Clause{u"from", false, &Clauses::from},    Clause{u"where", false, &Clauses::where},
        Clause{u"group", true, &Clauses::groupBy}, Clause{u"having", false, &Clauses::having},
        Clause{u"order", true, &Clauses::orderBy},
    };
    Clauses clauses;
    std::size_t begin = range.begin + 1;
    clauses.distinct = isWordAt(begin, u"distinct");
    begin += clauses.distinct ? 1 : 0;
    Range Clauses::*current = &Clauses::items;
    for (const Clause &clause : Order) {
        const std::size_t at = findOutsideBrackets({begin, range.end}, [&](std::size_t position) {
            return isClauseWord(position, clause.word) && (!clause.needsBy || isWordAt(position + 1, u"by"));
        });
        if (at != range.end) {
            clauses.*current = {begin, at};
            requireContent(clauses.*current);
            current = clause.clause;
            begin = at + (clause.needsBy ? 2 : 1);
        }
    }
    clauses.*current = {begin, range.end};
    requireContent(clauses.*current);
    if (clauses.from.isEmpty()) {
        failSyntax(QStringLiteral("FROM is missing"));
    }
    return clauses;
}

void ClauseReader::readFrom(Range range, Scope &scope, std::vector<Range> &conditions) const
{
    std::size_t at = range.begin;
    while (true) {
        at = readFromTable(at, range.end, scope, conditions);
        at = readConditions(at, range.end, conditions);
        if (at == range.end) {
            return;
        }
        if (isWordAt(at, u"inner") && isWordAt(at + 1, u"join")) {
            at += 2;
        } else if (isSymbolAt(at, u",") || isWordAt(at, u"join")) {
            ++at;
        } else {
            failSyntax(QStringLiteral("\"%1\" is not understood after FROM").arg(tokens_[at].text));
        }
    }
}

bool ClauseReader::startsJoin(std::size_t at) const
{
    return isClauseWord(at, u"inner") || isClauseWord(at, u"join") || isClauseWord(at, u"left") || isClauseWord(at, u"right");
}

std::size_t ClauseReader::readConditions(std::size_t at, std::size_t end, std::vector<Range> &conditions) const
{
    while (at < end && isWordAt(at, u"on")) {
        const std::size_t next = findOutsideBrackets({at + 1, end}, [this](std::size_t position) {
            return tokens_[position].isSymbol(u",") || startsJoin(position) || isClauseWord(position, u"on");
        });
        requireContent({at + 1, next});
        conditions.push_back({at + 1, next});
        at = next;
    }
    return at;
}

std::size_t ClauseReader::readFromTable(std::size_t at, std::size_t end, Scope &scope, std::vector<Range> &conditions) const
{
    if (at < end && tokens_[at].isSymbol(u"(")) {
        const std::size_t close = closingOf(at, end);
        readFrom({at + 1, close}, scope, conditions);
        return close + 1;
    }
    if (at >= end) {
        failSyntax(QStringLiteral("a table name is expected"));
    }
    FromTable from{QString(), tableAt(at)};
    from.alias = from.table->name;
    ++at;
    const bool hasAs = at < end && isWordAt(at, u"as");
    at += hasAs ? 1 : 0;
    const bool isAlias = at < end && tokens_[at].isName() && !isWordAt(at, u"on") && !startsJoin(at);
    if (isAlias) {
        from.alias = tokens_[at].text.toString();
        ++at;
    } else if (hasAs) {
        failSyntax(QStringLiteral("a name is expected after AS"));
    }
    scope.tables.push_back(std::move(from));
    return at;
}

SelectItem ClauseReader::itemIn(Range range, const Scope &scope) const
{
    SelectItem item{range, QString(), nullptr, false};
    if (range.size() == 1 && tokens_[range.begin].isSymbol(u"*")) {
        item.all = true;
    } else if (range.size() == 3 && isDotAt(range.begin + 1) && tokens_[range.begin + 2].isSymbol(u"*")) {
        item.allOf = &qualifierAt(range.begin, scope);
    } else if (range.size() > 2 && isClauseWord(range.end - 2, u"as") && tokens_[range.end - 1].isName()) {
        item.alias = tokens_[range.end - 1].text.toString();
        item.expression.end -= 2;
    }
    return item;
}

std::shared_ptr<TableInfo> ClauseReader::tableAt(std::size_t at) const
{
    if (at >= count() || !tokens_[at].isName()) {
        failSyntax(QStringLiteral("a table name is expected"));
    }
    auto table = lookup_(tokens_[at].text);
    if (!table) {
        throw DataError(DataErrorNumber::TableNotFound,
                        QStringLiteral("There is no table %1 in this file.").arg(tokens_[at].text));
    }
    return table;
}

FoundField ClauseReader::findField(const Scope &scope, QStringView name)
{
    for (const Scope *inner = &scope; inner != nullptr; inner = inner->outer) {
        for (const FromTable &from : inner->tables) {
            if (const int field = from.table->findField(name); field >= 0) {
                return {&from, field};
            }
        }
    }
    return {};
}

const FromTable &ClauseReader::qualifierAt(std::size_t at, const Scope &scope) const
{
    const QStringView name = tokens_[at].text;
    for (const Scope *inner = &scope; inner != nullptr; inner = inner->outer) {
        for (const FromTable &from : inner->tables) {
            if (name.compare(from.alias, Qt::CaseInsensitive) == 0) {
                return from;
            }
        }
    }
    failName(name);
}

FoundField ClauseReader::fieldIn(Range range, const Scope &scope) const
{
    const std::size_t first = range.begin;
    if (range.size() == 3 && tokens_[first].isName() && isDotAt(first + 1) && tokens_[first + 2].isName()) {
        const FromTable &from = qualifierAt(first, scope);
        const int field = from.table->findField(tokens_[first + 2].text);
        if (field < 0) {
            failName(tokens_[first].text.toString() + u'.' + tokens_[first + 2].text.toString());
        }
        return {&from, field};
    }
    return range.size() == 1 && tokens_[first].isName() ? findField(scope, tokens_[first].text) : FoundField{};
}

} // namespace dao
