// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Dialect.h"

#include "platform/dao/DataError.h"

#include <algorithm>
#include <array>

namespace dao
{

namespace
{

struct Function {
    QStringView name;
    QByteArrayView engineName;
    bool aggregate;
    /// Its result has the type of its argument.
    bool keepsType;
};
constexpr std::array Functions{
    Function{u"Sum", "sum", true, false},
    Function{u"Max", "max", true, true},
    Function{u"Min", "min", true, true},
    Function{u"Count", "count", true, false},
    Function{u"Avg", "avg", true, false},
    Function{u"Abs", "abs", false, true},
    Function{u"Datepart", "datepart", false, false},
};

/// Words that stand in expressions, with their spelling in the engine's SQL.
struct Keyword {
    QStringView word;
    QByteArrayView engineText;
};
constexpr std::array Keywords{
    Keyword{u"and", "AND"},       Keyword{u"or", "OR"},     Keyword{u"not", "NOT"},           Keyword{u"in", "IN"},
    Keyword{u"is", "IS"},         Keyword{u"null", "NULL"}, Keyword{u"true", "-1"},           Keyword{u"false", "0"},
    Keyword{u"asc", "ASC"},       Keyword{u"desc", "DESC"}, Keyword{u"distinct", "DISTINCT"}, Keyword{u"between", "BETWEEN"},
    Keyword{u"exists", "EXISTS"},
};

template <typename Table> auto findWord(const Table &table, QStringView word)
{
    return std::find_if(table.begin(), table.end(), [word](const auto &entry) {
        if constexpr (requires { entry.word; }) {
            return word.compare(entry.word, Qt::CaseInsensitive) == 0;
        } else {
            return word.compare(entry.name, Qt::CaseInsensitive) == 0;
        }
    });
}

[[noreturn]] void failSyntax(const QString &what)
{
    throw DataError(DataErrorNumber::SyntaxError, QStringLiteral("The query cannot be read: %1.").arg(what));
}

/// Tokens from `begin` to before `end`.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isEmpty() const { return begin == end; }
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

struct Clauses {
    bool distinct = false;
    Range items;
    Range from;
    Range where;
    Range groupBy;
    Range having;
    Range orderBy;
};

class Translator
{
public:
    Translator(const TokenList &list, const TableLookup &lookup) : tokens_(list.tokens), lookup_(lookup) {}

    Translation select()
    {
        if (tokens_.empty() || !tokens_.front().isWord(u"select")) {
            failSyntax(QStringLiteral("a SELECT is expected"));
        }
        emitSelect({0, tokens_.size()}, nullptr, true);
        return std::move(result_);
    }

    Translation action()
    {
        const QStringView verb = tokens_.empty() ? QStringView() : tokens_.front().text;
        if (verb.compare(u"update", Qt::CaseInsensitive) == 0) {
            emitUpdate();
        } else if (verb.compare(u"delete", Qt::CaseInsensitive) == 0) {
            emitDelete();
        } else if (verb.compare(u"insert", Qt::CaseInsensitive) == 0) {
            emitInsert();
        } else {
            failSyntax(QStringLiteral("an UPDATE, INSERT or DELETE is expected"));
        }
        return std::move(result_);
    }

private:
    bool isSymbolAt(std::size_t at, QStringView symbol) const { return at < tokens_.size() && tokens_[at].isSymbol(symbol); }
    bool isWordAt(std::size_t at, QStringView word) const { return at < tokens_.size() && tokens_[at].isWord(word); }
    bool isDotAt(std::size_t at) const { return isSymbolAt(at, u".") || isSymbolAt(at, u"!"); }
    /// A word behind a dot is a name, whatever it spells.
    bool isClauseWord(std::size_t at, QStringView word) const { return isWordAt(at, word) && !(at > 0 && isDotAt(at - 1)); }

    std::size_t closingOf(std::size_t open, std::size_t end) const
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

    std::vector<Range> splitAtCommas(Range range) const
    {
        std::vector<Range> parts;
        while (true) {
            const std::size_t comma = findOutsideBrackets(range, [this](std::size_t at) { return tokens_[at].isSymbol(u","); });
            if (comma == range.begin) {
                failSyntax(QStringLiteral("something is missing beside a comma or at the end"));
            }
            parts.push_back({range.begin, comma});
            if (comma == range.end) {
                return parts;
            }
            range.begin = comma + 1;
        }
    }

    Clauses clausesOf(Range range) const
    {
        struct Clause {
            QStringView word;
            bool needsBy;
            Range Clauses::*place;
        };
        static constexpr std::array Order{
            Clause{u"from", false, &Clauses::from},    Clause{u"where", false, &Clauses::where},
            Clause{u"group", true, &Clauses::groupBy}, Clause{u"having", false, &Clauses::having},
            Clause{u"order", true, &Clauses::orderBy},
        };
        Clauses clauses;
        std::size_t begin = range.begin + 1;
        clauses.distinct = isWordAt(begin, u"distinct") || isWordAt(begin, u"distinctrow");
        begin += clauses.distinct ? 1 : 0;
        Range Clauses::*current = &Clauses::items;
        for (const Clause &clause : Order) {
            const std::size_t at = findOutsideBrackets({begin, range.end}, [&](std::size_t position) {
                return isClauseWord(position, clause.word) && (!clause.needsBy || isWordAt(position + 1, u"by"));
            });
            if (at != range.end) {
                clauses.*current = {begin, at};
                requireContent(clauses.*current);
                current = clause.place;
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

    static void requireContent(Range range)
    {
        if (range.isEmpty()) {
            failSyntax(QStringLiteral("a clause is empty"));
        }
    }

    // --- FROM

    std::shared_ptr<TableInfo> tableAt(std::size_t at) const
    {
        if (at >= tokens_.size() || !tokens_[at].isName()) {
            failSyntax(QStringLiteral("a table name is expected"));
        }
        auto table = lookup_(tokens_[at].text);
        if (!table) {
            throw DataError(DataErrorNumber::TableNotFound,
                            QStringLiteral("There is no table %1 in this file.").arg(tokens_[at].text));
        }
        return table;
    }

    /// Reads tables and joins, in brackets or not. Only inner joins are known, so the conditions can move to the WHERE clause.
    void readFrom(Range range, Scope &scope, std::vector<Range> &conditions) const
    {
        std::size_t at = range.begin;
        while (true) {
            at = readFromTable(at, range.end, scope, conditions);
            while (isWordAt(at, u"on") && at < range.end) {
                const std::size_t end = findOutsideBrackets({at + 1, range.end}, [this](std::size_t position) {
                    return tokens_[position].isSymbol(u",") || startsJoin(position) || isClauseWord(position, u"on");
                });
                requireContent({at + 1, end});
                conditions.push_back({at + 1, end});
                at = end;
            }
            if (at == range.end) {
                return;
            }
            if (isWordAt(at, u"inner") && isWordAt(at + 1, u"join")) {
                at += 2;
            } else if (isSymbolAt(at, u",") || isWordAt(at, u"join")) {
                ++at;
            } else {
                failSyntax(QStringLiteral("\"%1\" is not understood behind FROM").arg(tokens_[at].text));
            }
        }
    }

    bool startsJoin(std::size_t at) const
    {
        return isClauseWord(at, u"inner") || isClauseWord(at, u"join") || isClauseWord(at, u"left") || isClauseWord(at, u"right");
    }

    std::size_t readFromTable(std::size_t at, std::size_t end, Scope &scope, std::vector<Range> &conditions) const
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
            failSyntax(QStringLiteral("a name is expected behind AS"));
        }
        scope.tables.push_back(std::move(from));
        return at;
    }

    // --- names

    static FoundField findField(const Scope &scope, QStringView name)
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

    static const FromTable *findTable(const Scope &scope, QStringView name)
    {
        for (const Scope *inner = &scope; inner != nullptr; inner = inner->outer) {
            for (const FromTable &from : inner->tables) {
                if (name.compare(from.alias, Qt::CaseInsensitive) == 0) {
                    return &from;
                }
            }
        }
        return nullptr;
    }

    [[noreturn]] static void failName(QStringView name)
    {
        throw DataError(DataErrorNumber::TooFewParameters,
                        QStringLiteral("Too few parameters: the query names %1, which is no field of its tables.").arg(name));
    }

    const FromTable &qualifierAt(std::size_t at, const Scope &scope) const
    {
        const FromTable *from = findTable(scope, tokens_[at].text);
        if (from == nullptr) {
            failName(tokens_[at].text);
        }
        return *from;
    }

    /// The field named by the whole range; nothing when the range is not just a field.
    FoundField fieldIn(Range range, const Scope &scope) const
    {
        const std::size_t count = range.end - range.begin;
        if (count == 3 && tokens_[range.begin].isName() && isDotAt(range.begin + 1) && tokens_[range.begin + 2].isName()) {
            const FromTable &from = qualifierAt(range.begin, scope);
            return {&from, from.table->findField(tokens_[range.begin + 2].text)};
        }
        return count == 1 && tokens_[range.begin].isName() ? findField(scope, tokens_[range.begin].text) : FoundField{};
    }

    void emitText(QByteArrayView text)
    {
        if (!result_.sql.isEmpty() && result_.sql.back() != ' ') {
            result_.sql.append(' ');
        }
        result_.sql.append(text);
    }

    void emitField(const FromTable &from, int field)
    {
        emitText(quoteName(from.alias) + '.' + from.table->quotedFields[static_cast<std::size_t>(field)]);
    }

    void emitKey(const FromTable &from) { emitText(quoteName(from.alias) + ".rowid"); }

    // --- expressions

    void emitExpression(Range range, const Scope &scope)
    {
        for (std::size_t at = range.begin; at < range.end;) {
            const Token &token = tokens_[at];
            if (token.kind == TokenKind::Literal) {
                emitText('?' + QByteArray::number(token.literal + 1));
                ++at;
            } else if (token.isName()) {
                at = emitName(at, range.end, scope);
            } else if (token.isSymbol(u"(") && isWordAt(at + 1, u"select")) {
                const std::size_t close = closingOf(at, range.end);
                emitText("(");
                emitSelect({at + 1, close}, &scope, false);
                emitText(")");
                at = close + 1;
            } else {
                emitSymbol(token);
                ++at;
            }
        }
    }

    void emitSymbol(const Token &token)
    {
        if (token.isSymbol(u".") || token.isSymbol(u"!") || token.isSymbol(u";")) {
            failSyntax(QStringLiteral("\"%1\" stands where it has no meaning").arg(token.text));
        }
        emitText(token.isSymbol(u"&") ? QByteArray("||") : token.text.toLatin1());
    }

    /// Emits the name, keyword or function at `at` and returns the position behind it.
    std::size_t emitName(std::size_t at, std::size_t end, const Scope &scope)
    {
        const Token &token = tokens_[at];
        if (at + 2 < end && isDotAt(at + 1) && tokens_[at + 2].isName()) {
            const FromTable &from = qualifierAt(at, scope);
            const int field = from.table->findField(tokens_[at + 2].text);
            if (field < 0) {
                failName(token.text.toString() + u'.' + tokens_[at + 2].text.toString());
            }
            emitField(from, field);
            return at + 3;
        }
        if (token.kind == TokenKind::Word && at + 1 < end && tokens_[at + 1].isSymbol(u"(")) {
            if (const auto function = findWord(Functions, token.text); function != Functions.end()) {
                emitText(function->engineName);
                return at + 1;
            }
        }
        if (const FoundField found = findField(scope, token.text); found.from != nullptr) {
            emitField(*found.from, found.field);
            return at + 1;
        }
        if (token.kind == TokenKind::Word) {
            if (const auto keyword = findWord(Keywords, token.text); keyword != Keywords.end()) {
                emitText(keyword->engineText);
                return at + 1;
            }
        }
        const auto alias = std::find_if(scope.aliases.begin(), scope.aliases.end(),
                                        [&](const QString &name) { return token.text.compare(name, Qt::CaseInsensitive) == 0; });
        if (alias == scope.aliases.end()) {
            failName(token.text);
        }
        emitText(quoteName(*alias));
        return at + 1;
    }

    // --- SELECT

    struct Item {
        Range expression;
        QString alias;
        const FromTable *allOf = nullptr;
        bool all = false;
    };

    Item itemIn(Range range, const Scope &scope) const
    {
        Item item{range, QString(), nullptr, false};
        const std::size_t count = range.end - range.begin;
        if (count == 1 && tokens_[range.begin].isSymbol(u"*")) {
            item.all = true;
        } else if (count == 3 && isDotAt(range.begin + 1) && tokens_[range.begin + 2].isSymbol(u"*")) {
            item.allOf = &qualifierAt(range.begin, scope);
        } else if (count > 2 && isClauseWord(range.end - 2, u"as") && tokens_[range.end - 1].isName()) {
            item.alias = tokens_[range.end - 1].text.toString();
            item.expression.end -= 2;
        }
        return item;
    }

    void emitSelect(Range range, const Scope *outer, bool isTop)
    {
        const Clauses clauses = clausesOf(range);
        Scope scope;
        scope.outer = outer;
        std::vector<Range> conditions;
        readFrom(clauses.from, scope, conditions);
        std::vector<Item> items;
        for (const Range part : splitAtCommas(clauses.items)) {
            items.push_back(itemIn(part, scope));
        }
        const bool isAggregate = !clauses.groupBy.isEmpty()
            || std::any_of(items.begin(), items.end(), [this](const Item &item) { return hasAggregate(item.expression); });
        const bool hasKeys = isTop && !isAggregate && !clauses.distinct;
        emitText(clauses.distinct ? "SELECT DISTINCT" : "SELECT");
        const int columns = emitItems(items, scope, isTop);
        if (hasKeys && scope.tables.size() == 1) {
            result_.table = scope.tables.front().table;
            emitText(",");
            emitKey(scope.tables.front());
        }
        for (const Item &item : items) {
            if (!item.alias.isEmpty()) {
                scope.aliases.push_back(item.alias);
            }
        }
        emitTables(scope);
        emitConditions(clauses, conditions, scope);
        emitGroups(clauses, scope);
        if (isTop) {
            emitOrder(clauses, scope, hasKeys, columns);
        }
    }

    bool hasAggregate(Range range) const
    {
        for (std::size_t at = range.begin; at + 1 < range.end; ++at) {
            const auto function = tokens_[at].kind == TokenKind::Word ? findWord(Functions, tokens_[at].text) : Functions.end();
            if (function != Functions.end() && function->aggregate && isSymbolAt(at + 1, u"(")) {
                return true;
            }
        }
        return false;
    }

    /// Returns the number of columns.
    int emitItems(const std::vector<Item> &items, const Scope &scope, bool isTop)
    {
        int columns = 0;
        const auto separate = [this, &columns] {
            if (columns++ > 0) {
                emitText(",");
            }
        };
        for (const Item &item : items) {
            if (item.all || item.allOf != nullptr) {
                for (const FromTable &from : scope.tables) {
                    if (item.allOf != nullptr && item.allOf != &from) {
                        continue;
                    }
                    for (int field = 0; field < static_cast<int>(from.table->fields.size()); ++field) {
                        separate();
                        emitField(from, field);
                        addColumn(isTop, {from.table->fields[static_cast<std::size_t>(field)].name, from.alias, field, {}},
                                  &from);
                    }
                }
                continue;
            }
            separate();
            requireContent(item.expression);
            emitExpression(item.expression, scope);
            if (!item.alias.isEmpty()) {
                emitText("AS " + quoteName(item.alias));
            }
            addExpressionColumn(isTop, item, scope, columns - 1);
        }
        return columns;
    }

    void addColumn(bool isTop, ResultColumn column, const FromTable *from)
    {
        if (isTop) {
            if (from != nullptr) {
                column.type = from->table->fields[static_cast<std::size_t>(column.field)].type;
            }
            result_.columns.push_back(std::move(column));
        }
    }

    void addExpressionColumn(bool isTop, const Item &item, const Scope &scope, int position)
    {
        const FoundField found = fieldIn(item.expression, scope);
        if (found.from != nullptr) {
            const QString &name = found.from->table->fields[static_cast<std::size_t>(found.field)].name;
            addColumn(isTop, {item.alias.isEmpty() ? name : item.alias, found.from->alias, found.field, {}}, found.from);
            return;
        }
        ResultColumn column{item.alias.isEmpty() ? QStringLiteral("Expr%1").arg(1000 + position) : item.alias, QString(), -1, {}};
        const Range range = item.expression;
        const auto function =
            tokens_[range.begin].kind == TokenKind::Word ? findWord(Functions, tokens_[range.begin].text) : Functions.end();
        if (function != Functions.end() && function->keepsType && isSymbolAt(range.begin + 1, u"(")
            && closingOf(range.begin + 1, range.end) == range.end - 1) {
            const FoundField argument = fieldIn({range.begin + 2, range.end - 1}, scope);
            if (argument.from != nullptr) {
                column.type = argument.from->table->fields[static_cast<std::size_t>(argument.field)].type;
            }
        }
        addColumn(isTop, std::move(column), nullptr);
    }

    void emitTables(const Scope &scope)
    {
        QByteArray text = "FROM ";
        for (const FromTable &from : scope.tables) {
            text += (&from == &scope.tables.front() ? "" : ", ") + from.table->quotedName + " AS " + quoteName(from.alias);
        }
        emitText(text);
    }

    void emitConditions(const Clauses &clauses, std::vector<Range> conditions, const Scope &scope)
    {
        if (!clauses.where.isEmpty()) {
            conditions.push_back(clauses.where);
        }
        for (std::size_t i = 0; i < conditions.size(); ++i) {
            emitText(i == 0 ? "WHERE (" : "AND (");
            emitExpression(conditions[i], scope);
            emitText(")");
        }
    }

    void emitGroups(const Clauses &clauses, const Scope &scope)
    {
        if (!clauses.groupBy.isEmpty()) {
            emitText("GROUP BY");
            emitExpression(clauses.groupBy, scope);
        }
        if (!clauses.having.isEmpty()) {
            emitText("HAVING");
            emitExpression(clauses.having, scope);
        }
    }

    void emitOrder(const Clauses &clauses, const Scope &scope, bool hasKeys, int columns)
    {
        bool isFirst = true;
        const auto next = [this, &isFirst] {
            emitText(isFirst ? "ORDER BY" : ",");
            isFirst = false;
        };
        if (!clauses.orderBy.isEmpty()) {
            next();
            emitExpression(clauses.orderBy, scope);
        }
        if (!clauses.groupBy.isEmpty()) {
            next();
            emitExpression(clauses.groupBy, scope);
        } else if (hasKeys) {
            for (const FromTable &from : scope.tables) {
                next();
                emitKey(from);
            }
        } else if (clauses.distinct && clauses.orderBy.isEmpty()) {
            for (int column = 1; column <= columns; ++column) {
                next();
                emitText(QByteArray::number(column));
            }
        }
    }

    // --- UPDATE, DELETE, INSERT

    Scope scopeOf(std::size_t at) const
    {
        Scope scope;
        auto table = tableAt(at);
        scope.tables.push_back({table->name, table});
        return scope;
    }

    void emitWhere(std::size_t at, const Scope &scope)
    {
        if (at == tokens_.size()) {
            return;
        }
        if (!isWordAt(at, u"where")) {
            failSyntax(QStringLiteral("WHERE is expected instead of \"%1\"").arg(tokens_[at].text));
        }
        requireContent({at + 1, tokens_.size()});
        emitText("WHERE");
        emitExpression({at + 1, tokens_.size()}, scope);
    }

    void noteAssignment(Range range, const Field &field)
    {
        if (range.end - range.begin == 1 && tokens_[range.begin].kind == TokenKind::Literal) {
            result_.assignments.emplace_back(tokens_[range.begin].literal, field);
        }
    }

    void emitUpdate()
    {
        const Scope scope = scopeOf(1);
        const TableInfo &table = *scope.tables.front().table;
        if (!isWordAt(2, u"set")) {
            failSyntax(QStringLiteral("SET is expected"));
        }
        emitText("UPDATE " + table.quotedName + " SET");
        const Range all{3, tokens_.size()};
        const std::size_t where = findOutsideBrackets(all, [this](std::size_t at) { return isClauseWord(at, u"where"); });
        bool isFirst = true;
        for (const Range part : splitAtCommas({all.begin, where})) {
            const std::size_t equals = findOutsideBrackets(part, [this](std::size_t at) { return tokens_[at].isSymbol(u"="); });
            if (equals >= part.end - 1 || equals == part.begin) {
                failSyntax(QStringLiteral("field = value is expected behind SET"));
            }
            const FoundField found = fieldIn({part.begin, equals}, scope);
            if (found.field < 0) {
                failName(tokens_[equals - 1].text);
            }
            emitText((isFirst ? "" : ", ") + table.quotedFields[static_cast<std::size_t>(found.field)] + " =");
            emitExpression({equals + 1, part.end}, scope);
            noteAssignment({equals + 1, part.end}, table.fields[static_cast<std::size_t>(found.field)]);
            isFirst = false;
        }
        emitWhere(where, scope);
    }

    void emitDelete()
    {
        const std::size_t from =
            findOutsideBrackets({1, tokens_.size()}, [this](std::size_t at) { return isClauseWord(at, u"from"); });
        const bool namesRows = from == 2 ? isSymbolAt(1, u"*") : from == 4 && isDotAt(2) && isSymbolAt(3, u"*");
        if (from != 1 && !namesRows) {
            failSyntax(QStringLiteral("DELETE FROM a table is expected"));
        }
        const Scope scope = scopeOf(from + 1);
        emitText("DELETE FROM " + scope.tables.front().table->quotedName);
        emitWhere(from + 2, scope);
    }

    void emitInsert()
    {
        if (!isWordAt(1, u"into")) {
            failSyntax(QStringLiteral("INSERT INTO a table is expected"));
        }
        const auto table = tableAt(2);
        if (!isSymbolAt(3, u"(")) {
            failSyntax(QStringLiteral("the fields of the INSERT are expected in brackets"));
        }
        const std::size_t close = closingOf(3, tokens_.size());
        std::vector<int> fields;
        QByteArray names;
        for (const Range part : splitAtCommas({4, close})) {
            fields.push_back(part.end - part.begin == 1 ? table->findField(tokens_[part.begin].text) : -1);
            if (fields.back() < 0) {
                failName(tokens_[part.begin].text);
            }
            names += (names.isEmpty() ? "" : ", ") + table->quotedFields[static_cast<std::size_t>(fields.back())];
        }
        emitText("INSERT INTO " + table->quotedName + " (" + names + ')');
        if (isWordAt(close + 1, u"select")) {
            emitSelect({close + 1, tokens_.size()}, nullptr, false);
        } else {
            emitValues(close + 1, *table, fields);
        }
    }

    void emitValues(std::size_t at, const TableInfo &table, const std::vector<int> &fields)
    {
        if (!isWordAt(at, u"values") || !isSymbolAt(at + 1, u"(") || closingOf(at + 1, tokens_.size()) != tokens_.size() - 1) {
            failSyntax(QStringLiteral("VALUES (...) is expected"));
        }
        const std::vector<Range> values = splitAtCommas({at + 2, tokens_.size() - 1});
        if (values.size() != fields.size()) {
            failSyntax(QStringLiteral("the INSERT has more or fewer values than fields"));
        }
        const Scope noNames;
        for (std::size_t i = 0; i < values.size(); ++i) {
            emitText(i == 0 ? "VALUES (" : ",");
            emitExpression(values[i], noNames);
            noteAssignment(values[i], table.fields[static_cast<std::size_t>(fields[i])]);
        }
        emitText(")");
    }

    const std::vector<Token> &tokens_;
    const TableLookup &lookup_;
    Translation result_;
};

} // namespace

Translation translateSelect(const TokenList &list, const TableLookup &lookup)
{
    return Translator(list, lookup).select();
}

Translation translateAction(const TokenList &list, const TableLookup &lookup)
{
    return Translator(list, lookup).action();
}

} // namespace dao
