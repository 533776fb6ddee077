// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Tokens.h"

#include "platform/dao/DataError.h"
#include "platform/dao/DateParts.h"

#include <QLocale>

#include <algorithm>
#include <limits>
#include <numeric>

namespace dao
{

namespace
{

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Nearly all characters of a query are ASCII, which needs no Unicode tables.
bool startsWord(QChar c)
{
    const bool isPlainLetter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
    return isPlainLetter || (c.unicode() >= 0x80 && c.isLetter());
}

bool continuesWord(QChar c)
{
    return startsWord(c) || isDigit(c) || (c.unicode() >= 0x80 && (c.isDigit() || c.isMark()));
}

class Reader
{
public:
    explicit Reader(const QString &sql) : sql_(sql)
    {
        list_.tokens.reserve(static_cast<std::size_t>(sql.size() / 4 + 4));
        list_.shape.reserve(sql.size() + 16);
    }

    TokenList read()
    {
        while (at_ < sql_.size()) {
            const QChar c = sql_[at_];
            if (c.isSpace()) {
                ++at_;
            } else if (startsWord(c)) {
                readWord();
            } else if (isDigit(c) || (c == u'.' && isDigit(peek(1)) && !followsName())) {
                readNumber();
            } else if (c == u'\'' || c == u'"') {
                readText(c);
            } else if (c == u'#') {
                readDate();
            } else if (c == u'[') {
                readBracketed();
            } else {
                readSymbol();
            }
        }
        // A closing semicolon has no meaning.
        if (!list_.tokens.empty() && list_.tokens.back().isSymbol(u";")) {
            list_.tokens.pop_back();
        }
        return std::move(list_);
    }

private:
    QChar peek(qsizetype ahead) const { return at_ + ahead < sql_.size() ? sql_[at_ + ahead] : QChar(); }

    bool followsName() const { return !list_.tokens.empty() && at_ > 0 && continuesWord(sql_[at_ - 1]); }

    [[noreturn]] void fail(const QString &what) const
    {
        throw DataError(DataErrorNumber::SyntaxError,
                        QStringLiteral("The query cannot be read at \"%1\": %2.").arg(sql_.mid(at_, 30).toString(), what));
    }

    void add(TokenKind kind, QStringView text)
    {
        list_.tokens.push_back({kind, text, -1});
        list_.shape.append(text).append(u' ');
    }

    void addLiteral(Value value)
    {
        list_.tokens.push_back({TokenKind::Literal, {}, static_cast<int>(list_.literals.size())});
        list_.literals.push_back(std::move(value));
        list_.shape.append(u"? ");
    }

    void readWord()
    {
        const qsizetype begin = at_;
        while (at_ < sql_.size() && continuesWord(sql_[at_])) {
            ++at_;
        }
        add(TokenKind::Word, sql_.mid(begin, at_ - begin));
    }

    void readNumber()
    {
        const qsizetype begin = at_;
        while (isDigit(peek(0)) || peek(0) == u'.') {
            ++at_;
        }
        const bool hasSign = peek(1) == u'+' || peek(1) == u'-';
        if (peek(0).toLower() == u'e' && isDigit(peek(hasSign ? 2 : 1))) {
            at_ += hasSign ? 2 : 1;
            while (isDigit(peek(0))) {
                ++at_;
            }
        }
        if (startsWord(peek(0))) {
            at_ = begin;
            fail(QStringLiteral("a number is expected"));
        }
        addLiteral(numberOf(begin));
    }

    /// The number between `begin` and the current position: a Long where it is whole and fits.
    Value numberOf(qsizetype begin)
    {
        const QStringView text = sql_.mid(begin, at_ - begin);
        constexpr qsizetype SafeDigits = 9;
        if (text.size() <= SafeDigits && std::all_of(text.begin(), text.end(), isDigit)) {
            return std::accumulate(text.begin(), text.end(), std::int32_t{0},
                                   [](std::int32_t sum, QChar c) { return sum * 10 + (c.unicode() - u'0'); });
        }
        bool isNumber = false;
        const double number = QLocale::c().toDouble(text, &isNumber);
        if (!isNumber) {
            at_ = begin;
            fail(QStringLiteral("a number is expected"));
        }
        const bool isWhole = std::all_of(text.begin(), text.end(), isDigit);
        return isWhole && number <= std::numeric_limits<std::int32_t>::max() ? Value(static_cast<std::int32_t>(number))
                                                                             : Value(number);
    }

    void readText(QChar quote)
    {
        QString text;
        qsizetype begin = at_ + 1;
        for (;;) {
            const qsizetype end = sql_.indexOf(quote, begin);
            if (end < 0) {
                fail(QStringLiteral("a text is not closed"));
            }
            text.append(sql_.mid(begin, end - begin));
            if (end + 1 >= sql_.size() || sql_[end + 1] != quote) {
                at_ = end + 1;
                break;
            }
            text.append(quote);
            begin = end + 2;
        }
        addLiteral(text);
    }

    void readDate()
    {
        const qsizetype end = sql_.indexOf(u'#', at_ + 1);
        const auto date = end < 0 ? std::nullopt : dateFromLiteral(sql_.mid(at_ + 1, end - at_ - 1));
        if (!date) {
            fail(QStringLiteral("a date is expected between # and #"));
        }
        at_ = end + 1;
        addLiteral(*date);
    }

    void readBracketed()
    {
        const qsizetype end = sql_.indexOf(u']', at_);
        if (end < 0) {
            fail(QStringLiteral("a bracket is not closed"));
        }
        list_.shape.append(u'[');
        add(TokenKind::Bracketed, sql_.mid(at_ + 1, end - at_ - 1));
        list_.shape.append(u']');
        at_ = end + 1;
    }

    void readSymbol()
    {
        static const QStringView singles = u"(),.!=<>+-*/&;";
        const QStringView pair = sql_.mid(at_, 2);
        const bool isPair = pair == u"<=" || pair == u">=" || pair == u"<>";
        const bool isEnd = sql_[at_] == u';' && !sql_.mid(at_ + 1).trimmed().isEmpty();
        if (isEnd || !singles.contains(sql_[at_])) {
            fail(QStringLiteral("this character has no meaning here"));
        }
        add(TokenKind::Symbol, sql_.mid(at_, isPair ? 2 : 1));
        at_ += isPair ? 2 : 1;
    }

    QStringView sql_;
    qsizetype at_ = 0;
    TokenList list_;
};

} // namespace

TokenList tokenise(const QString &sql)
{
    return Reader(sql).read();
}

} // namespace dao
