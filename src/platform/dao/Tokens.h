// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Value.h"

#include <QStringView>

#include <vector>

namespace dao
{

enum class TokenKind { Word, Bracketed, Literal, Symbol };

struct Token {
    TokenKind kind;
    /// Views into the text that was read; without the brackets of a bracketed name.
    QStringView text;
    /// Position in TokenList::literals for a Literal.
    int literal = -1;

    bool isWord(QStringView word) const { return kind == TokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0; }
    bool isSymbol(QStringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
    bool isName() const { return kind == TokenKind::Word || kind == TokenKind::Bracketed; }
};

/// A statement split into tokens. The shape is the text with every literal replaced by a placeholder: statements of one shape
/// differ in their literals only.
struct TokenList {
    std::vector<Token> tokens;
    std::vector<Value> literals;
    QString shape;
};

/// Raises 3075 for text that cannot be read. The tokens refer to `sql`, which has to outlive them.
TokenList tokenise(const QString &sql);

} // namespace dao
