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
    QByteArrayView sqliteName;
    bool aggregate;
    /// Its result has the type of its argument.
    bool hasArgumentType;
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

/// Words of expressions, with their spelling in SQLite's SQL.
struct Keyword {
    QStringView word;
    QByteArrayView sqliteText;
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

class Translator
{
public:
    Translator(const TokenList &list, const TableLookup &lookup) : reader_(list, lookup) {}

    Translation select()
    {
        if (reader_.count() == 0 || !reader_.token(0).isWord(u"select")) {
            ClauseReader::failSyntax(QStringLiteral("a SELECT is expected"));
        }
        emitSelect({0, reader_.count()}, nullptr, true);
        return std::move(result_);
    }

    Translation action()
    {
        const QStringView verb = reader_.count() == 0 ? QStringView() : reader_.token(0).text;
        if (verb.compare(u"update", Qt::CaseInsensitive) == 0) {
            emitUpdate();
        } else if (verb.compare(u"delete", Qt::CaseInsensitive) == 0) {
            emitDelete();
        } else if (verb.compare(u"insert", Qt::CaseInsensitive) == 0) {
            emitInsert();
        } else {
            ClauseReader::failSyntax(QStringLiteral("an UPDATE, INSERT or DELETE is expected"));
        }
        return std::move(result_);
    }

private:
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
            const Token &token = reader_.token(at);
            if (token.kind == TokenKind::Literal) {
                emitText('?' + QByteArray::number(token.literal + 1));
                ++at;
            } else if (token.isName()) {
                at = emitName(at, range.end, scope);
            } else if (token.isSymbol(u"(") && reader_.isWordAt(at + 1, u"select")) {
                const std::size_t close = reader_.closingOf(at, range.end);
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
            ClauseReader::failSyntax(QStringLiteral("\"%1\" has no meaning here").arg(token.text));
        }
        emitText(token.isSymbol(u"&") ? QByteArray("||") : token.text.toLatin1());
    }

    /// Emits the name, keyword or function at `at` and returns the position after it.
    std::size_t emitName(std::size_t at, std::size_t end, const Scope &scope)
    {
        const Token &token = reader_.token(at);
        if (at + 2 < end && reader_.isDotAt(at + 1) && reader_.token(at + 2).isName()) {
            const FromTable &from = reader_.qualifierAt(at, scope);
            const int field = from.table->findField(reader_.token(at + 2).text);
            if (field < 0) {
                ClauseReader::failName(token.text.toString() + u'.' + reader_.token(at + 2).text.toString());
            }
            emitField(from, field);
            return at + 3;
        }
        if (token.kind == TokenKind::Word && at + 1 < end && reader_.token(at + 1).isSymbol(u"(")) {
            if (const auto function = findWord(Functions, token.text); function != Functions.end()) {
                emitText(function->sqliteName);
                return at + 1;
            }
        }
        if (const FoundField found = ClauseReader::findField(scope, token.text); found.from != nullptr) {
            emitField(*found.from, found.field);
            return at + 1;
        }
        if (token.kind == TokenKind::Word) {
            if (const auto keyword = findWord(Keywords, token.text); keyword != Keywords.end()) {
                emitText(keyword->sqliteText);
                return at + 1;
            }
        }
        const auto alias = std::find_if(scope.aliases.begin(), scope.aliases.end(),
                                        [&](const QString &name) { return token.text.compare(name, Qt::CaseInsensitive) == 0; });
        if (alias == scope.aliases.end()) {
            ClauseReader::failName(token.text);
        }
        emitText(quoteName(*alias));
        return at + 1;
    }

    // --- SELECT

    void emitSelect(Range range, const Scope *outer, bool isTop)
    {
        const Clauses clauses = reader_.clausesOf(range);
        Scope scope;
        scope.outer = outer;
        std::vector<Range> conditions;
        reader_.readFrom(clauses.from, scope, conditions);
        std::vector<SelectItem> items;
        for (const Range part : reader_.splitAtCommas(clauses.items)) {
            items.push_back(reader_.itemIn(part, scope));
        }
        const bool isAggregate = !clauses.groupBy.isEmpty()
            || std::any_of(items.begin(), items.end(), [this](const SelectItem &item) { return hasAggregate(item.expression); });
        const bool hasKeys = isTop && !isAggregate && !clauses.distinct;
        emitText(clauses.distinct ? "SELECT DISTINCT" : "SELECT");
        const int columns = emitItems(items, scope, isTop);
        if (hasKeys && scope.tables.size() == 1) {
            result_.table = scope.tables.front().table;
            emitText(",");
            emitKey(scope.tables.front());
        }
        for (const SelectItem &item : items) {
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
            const auto function =
                reader_.token(at).kind == TokenKind::Word ? findWord(Functions, reader_.token(at).text) : Functions.end();
            if (function != Functions.end() && function->aggregate && reader_.isSymbolAt(at + 1, u"(")) {
                return true;
            }
        }
        return false;
    }

    /// Returns the number of columns.
    int emitItems(const std::vector<SelectItem> &items, const Scope &scope, bool isTop)
    {
        int columns = 0;
        const auto separate = [this, &columns] {
            if (columns++ > 0) {
                emitText(",");
            }
        };
        for (const SelectItem &item : items) {
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
            ClauseReader::requireContent(item.expression);
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

    void addExpressionColumn(bool isTop, const SelectItem &item, const Scope &scope, int position)
    {
        const FoundField found = reader_.fieldIn(item.expression, scope);
        if (found.from != nullptr) {
            const QString &name = found.from->table->fields[static_cast<std::size_t>(found.field)].name;
            addColumn(isTop, {item.alias.isEmpty() ? name : item.alias, found.from->alias, found.field, {}}, found.from);
            return;
        }
        ResultColumn column{item.alias.isEmpty() ? QStringLiteral("Expr%1").arg(1000 + position) : item.alias, QString(), -1, {}};
        const Range range = item.expression;
        const auto function = reader_.token(range.begin).kind == TokenKind::Word
            ? findWord(Functions, reader_.token(range.begin).text)
            : Functions.end();
        if (function != Functions.end() && function->hasArgumentType && reader_.isSymbolAt(range.begin + 1, u"(")
            && reader_.closingOf(range.begin + 1, range.end) == range.end - 1) {
            const FoundField argument = reader_.fieldIn({range.begin + 2, range.end - 1}, scope);
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
        auto table = reader_.tableAt(at);
        scope.tables.push_back({table->name, table});
        return scope;
    }

    void emitWhere(std::size_t at, const Scope &scope)
    {
        if (at == reader_.count()) {
            return;
        }
        if (!reader_.isWordAt(at, u"where")) {
            ClauseReader::failSyntax(QStringLiteral("WHERE is expected instead of \"%1\"").arg(reader_.token(at).text));
        }
        ClauseReader::requireContent({at + 1, reader_.count()});
        emitText("WHERE");
        emitExpression({at + 1, reader_.count()}, scope);
    }

    void noteAssignment(Range range, const Field &field)
    {
        if (range.end - range.begin == 1 && reader_.token(range.begin).kind == TokenKind::Literal) {
            result_.assignments.emplace_back(reader_.token(range.begin).literal, field);
        }
    }

    void emitUpdate()
    {
        const Scope scope = scopeOf(1);
        const TableInfo &table = *scope.tables.front().table;
        if (!reader_.isWordAt(2, u"set")) {
            ClauseReader::failSyntax(QStringLiteral("SET is expected"));
        }
        emitText("UPDATE " + table.quotedName + " SET");
        const Range all{3, reader_.count()};
        const std::size_t where =
            reader_.findOutsideBrackets(all, [this](std::size_t at) { return reader_.isClauseWord(at, u"where"); });
        bool isFirst = true;
        for (const Range part : reader_.splitAtCommas({all.begin, where})) {
            const std::size_t equals =
                reader_.findOutsideBrackets(part, [this](std::size_t at) { return reader_.token(at).isSymbol(u"="); });
            if (equals >= part.end - 1 || equals == part.begin) {
                ClauseReader::failSyntax(QStringLiteral("field = value is expected after SET"));
            }
            const FoundField found = reader_.fieldIn({part.begin, equals}, scope);
            if (found.field < 0) {
                ClauseReader::failName(reader_.token(equals - 1).text);
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
        const std::size_t from = reader_.findOutsideBrackets(
            {1, reader_.count()}, [this](std::size_t at) { return reader_.isClauseWord(at, u"from"); });
        const bool namesRows =
            from == 2 ? reader_.isSymbolAt(1, u"*") : from == 4 && reader_.isDotAt(2) && reader_.isSymbolAt(3, u"*");
        if (from != 1 && !namesRows) {
            ClauseReader::failSyntax(QStringLiteral("DELETE FROM a table is expected"));
        }
        const Scope scope = scopeOf(from + 1);
        emitText("DELETE FROM " + scope.tables.front().table->quotedName);
        emitWhere(from + 2, scope);
    }

    void emitInsert()
    {
        if (!reader_.isWordAt(1, u"into")) {
            ClauseReader::failSyntax(QStringLiteral("INSERT INTO a table is expected"));
        }
        const auto table = reader_.tableAt(2);
        if (!reader_.isSymbolAt(3, u"(")) {
            ClauseReader::failSyntax(QStringLiteral("the fields of the INSERT are expected in brackets"));
        }
        const std::size_t close = reader_.closingOf(3, reader_.count());
        std::vector<int> fields;
        QByteArray names;
        for (const Range part : reader_.splitAtCommas({4, close})) {
            fields.push_back(part.end - part.begin == 1 ? table->findField(reader_.token(part.begin).text) : -1);
            if (fields.back() < 0) {
                ClauseReader::failName(reader_.token(part.begin).text);
            }
            names += (names.isEmpty() ? "" : ", ") + table->quotedFields[static_cast<std::size_t>(fields.back())];
        }
        emitText("INSERT INTO " + table->quotedName + " (" + names + ')');
        if (reader_.isWordAt(close + 1, u"select")) {
            emitSelect({close + 1, reader_.count()}, nullptr, false);
        } else {
            emitValues(close + 1, *table, fields);
        }
    }

    void emitValues(std::size_t at, const TableInfo &table, const std::vector<int> &fields)
    {
        if (!reader_.isWordAt(at, u"values") || !reader_.isSymbolAt(at + 1, u"(")
            || reader_.closingOf(at + 1, reader_.count()) != reader_.count() - 1) {
            ClauseReader::failSyntax(QStringLiteral("VALUES (...) is expected"));
        }
        const std::vector<Range> values = reader_.splitAtCommas({at + 2, reader_.count() - 1});
        if (values.size() != fields.size()) {
            ClauseReader::failSyntax(QStringLiteral("the INSERT has more or fewer values than fields"));
        }
        const Scope noNames;
        for (std::size_t i = 0; i < values.size(); ++i) {
            emitText(i == 0 ? "VALUES (" : ",");
            emitExpression(values[i], noNames);
            noteAssignment(values[i], table.fields[static_cast<std::size_t>(fields[i])]);
        }
        emitText(")");
    }

    ClauseReader reader_;
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
