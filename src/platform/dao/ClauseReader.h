// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Catalog.h"
#include "platform/dao/Tokens.h"

#include <functional>
#include <vector>

namespace dao
{

using TableLookup = std::function<std::shared_ptr<TableInfo>(QStringView)>;

/// Tokens from `begin` to before `end`.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isEmpty() const { return begin == end; }
    std::size_t size() const { return end - begin; }
};

struct FromTable {
    QString alias;
    std::shared_ptr<TableInfo> table;
};

/// The names that an expression can use; an inner SELECT sees the outer ones too.
struct Scope {
    std::vector<FromTable> tables;
    std::vector<QString> aliases;
    const Scope *outer = nullptr;
};

struct FoundField {
    const FromTable *from = nullptr;
    int field = -1;
};

/// The parts of one SELECT, without their key words. A part that is not there is empty.
struct Clauses {
    bool distinct = false;
    Range items;
    Range from;
    Range where;
    Range groupBy;
    Range having;
    Range orderBy;
};

/// One entry of the list after SELECT: an expression with or without an alias, table.* or *.
struct SelectItem {
    Range expression;
    QString alias;
    const FromTable *allOf = nullptr;
    bool all = false;
};

/// Finds the structure of a statement and what its names mean. 3075 where the text makes no sense, 3061 for a name that is no
/// field, 3078 for an unknown table.
class ClauseReader
{
public:
    ClauseReader(const TokenList &list, const TableLookup &lookup) : tokens_(list.tokens), lookup_(lookup) {}

    [[noreturn]] static void failSyntax(const QString &what);
    [[noreturn]] static void failName(QStringView name);
    static void requireContent(Range range);

    const Token &token(std::size_t at) const { return tokens_[at]; }
    std::size_t count() const { return tokens_.size(); }
    bool isSymbolAt(std::size_t at, QStringView symbol) const { return at < count() && tokens_[at].isSymbol(symbol); }
    bool isWordAt(std::size_t at, QStringView word) const { return at < count() && tokens_[at].isWord(word); }
    bool isDotAt(std::size_t at) const { return isSymbolAt(at, u".") || isSymbolAt(at, u"!"); }
    /// A word after a dot is a name, whatever it spells.
    bool isClauseWord(std::size_t at, QStringView word) const { return isWordAt(at, word) && !(at > 0 && isDotAt(at - 1)); }

    /// Position of the bracket that closes the one at `open`.
    std::size_t closingOf(std::size_t open, std::size_t end) const;
    /// Position of the first token in the range, outside brackets, that `isWanted` accepts; the end when there is none.
    template <typename Wanted> std::size_t findOutsideBrackets(Range range, Wanted isWanted) const
    {
        for (std::size_t at = range.begin; at < range.end; ++at) {
            if (tokens_[at].isSymbol(u"(")) {
                at = closingOf(at, range.end);
            } else if (isWanted(at)) {
                return at;
            }
        }
        return range.end;
    }
    std::vector<Range> splitAtCommas(Range range) const;

    /// The range begins with SELECT.
    Clauses clausesOf(Range range) const;
    /// Reads tables and joins, in brackets or not. Only inner joins are known, so the conditions can move to the WHERE clause.
    void readFrom(Range range, Scope &scope, std::vector<Range> &conditions) const;
    SelectItem itemIn(Range range, const Scope &scope) const;

    std::shared_ptr<TableInfo> tableAt(std::size_t at) const;
    /// The table of the scope that the name before a dot means.
    const FromTable &qualifierAt(std::size_t at, const Scope &scope) const;
    static FoundField findField(const Scope &scope, QStringView name);
    /// The field named by the whole range; nothing when the range is not just a field.
    FoundField fieldIn(Range range, const Scope &scope) const;

private:
    bool startsJoin(std::size_t at) const;
    std::size_t readFromTable(std::size_t at, std::size_t end, Scope &scope, std::vector<Range> &conditions) const;
    std::size_t readConditions(std::size_t at, std::size_t end, std::vector<Range> &conditions) const;

    const std::vector<Token> &tokens_;
    const TableLookup &lookup_;
};

} // namespace dao
