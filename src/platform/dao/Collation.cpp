// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Collation.h"

#include <QChar>
#include <QString>

#include <array>
#include <cstdint>

namespace dao
{

namespace
{

// Weights: 0 counts for nothing (accents), signs from 1, digits from 64, letters from 80, everything else at its code
// point after them. The two tie breakers come after all plain letters, so "coop" sorts before "co-op".
constexpr std::uint32_t Ignored = 0;
constexpr std::uint32_t Apostrophe = 200;
constexpr std::uint32_t Hyphen = 201;
constexpr std::uint32_t FirstDigit = 64;
constexpr std::uint32_t FirstLetter = 80;
constexpr std::uint32_t BeyondAscii = 0x100;

constexpr std::array<std::uint8_t, 128> asciiWeights()
{
    std::array<std::uint8_t, 128> weights{};
    std::uint8_t sign = 1;
    for (std::size_t c = 1; c < weights.size(); ++c) {
        const bool isDigit = c >= '0' && c <= '9';
        const bool isUpper = c >= 'A' && c <= 'Z';
        const bool isLower = c >= 'a' && c <= 'z';
        if (isDigit) {
            weights[c] = static_cast<std::uint8_t>(FirstDigit + c - '0');
        } else if (isUpper || isLower) {
            weights[c] = static_cast<std::uint8_t>(FirstLetter + c - (isUpper ? 'A' : 'a'));
        } else if (c == '\'' || c == '-') {
            weights[c] = c == '-' ? Hyphen : Apostrophe;
        } else if (c >= ' ') {
            weights[c] = sign++;
        }
    }
    return weights;
}

constexpr auto AsciiWeights = asciiWeights();

/// Letters that no decomposition takes apart, with the one or two plain letters they sort as.
struct Ligature {
    char32_t letter;
    char first;
    char second;
};
constexpr std::array<Ligature, 9> Ligatures{{
    {U'ß', 's', 's'},
    {U'æ', 'a', 'e'},
    {U'œ', 'o', 'e'},
    {U'ø', 'o', 0},
    {U'đ', 'd', 0},
    {U'ð', 'd', 0},
    {U'ł', 'l', 0},
    {U'þ', 't', 'h'},
    {U'ı', 'i', 0},
}};

/// Gives the weights of a UTF-8 text one after the other.
class Weights
{
public:
    Weights(std::string_view text, bool withTieBreakers) : text_(text), withTieBreakers_(withTieBreakers) {}

    /// The next weight that counts; 0 at the end.
    std::uint32_t next()
    {
        for (;;) {
            std::uint32_t weight = Ignored;
            if (pending_ != 0) {
                weight = AsciiWeights[static_cast<std::size_t>(pending_)];
                pending_ = 0;
            } else if (at_ == text_.size()) {
                return 0;
            } else if (const auto byte = static_cast<unsigned char>(text_[at_]); byte < 0x80) {
                ++at_;
                weight = AsciiWeights[byte];
            } else {
                weight = weightOf(decode());
            }
            const bool isTieBreaker = weight == Apostrophe || weight == Hyphen;
            if (weight != Ignored && (withTieBreakers_ || !isTieBreaker)) {
                return weight;
            }
        }
    }

private:
    char32_t decode()
    {
        const auto first = static_cast<unsigned char>(text_[at_++]);
        const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
        char32_t code = more == 3 ? first & 0x07U : more == 2 ? first & 0x0FU : more == 1 ? first & 0x1FU : first;
        for (int i = 0; i < more && at_ < text_.size() && (static_cast<unsigned char>(text_[at_]) & 0xC0U) == 0x80U; ++i) {
            code = (code << 6U) | (static_cast<unsigned char>(text_[at_++]) & 0x3FU);
        }
        return code;
    }

    std::uint32_t weightOf(char32_t code)
    {
        code = QChar::toLower(code);
        if (code == U'\u2018' || code == U'\u2019') {
            return Apostrophe;
        }
        if (code == U'\u2010' || code == U'\u2011') {
            return Hyphen;
        }
        if (code > QChar::LastValidCodePoint || QChar::category(code) == QChar::Mark_NonSpacing) {
            return Ignored;
        }
        for (const Ligature &ligature : Ligatures) {
            if (ligature.letter == code) {
                pending_ = ligature.second;
                return AsciiWeights[static_cast<std::size_t>(ligature.first)];
            }
        }
        // A letter with an accent comes apart into the letter (which may have another accent) and a mark.
        while (code >= 0x80 && QChar::decompositionTag(code) == QChar::Canonical) {
            const QString parts = QChar::decomposition(code);
            if (parts.size() != 2 || parts[1].category() != QChar::Mark_NonSpacing) {
                break;
            }
            code = parts[0].unicode();
        }
        return code < 0x80 ? AsciiWeights[code] : BeyondAscii + code;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool withTieBreakers_;
    char pending_ = 0;
};

int compareWeights(std::string_view left, std::string_view right, bool withTieBreakers)
{
    Weights leftWeights(left, withTieBreakers);
    Weights rightWeights(right, withTieBreakers);
    for (;;) {
        const std::uint32_t a = leftWeights.next();
        const std::uint32_t b = rightWeights.next();
        if (a != b) {
            return a < b ? -1 : 1;
        }
        if (a == 0) {
            return 0;
        }
    }
}

} // namespace

int compareText(std::string_view left, std::string_view right)
{
    if (left == right) {
        return 0;
    }
    const int plain = compareWeights(left, right, false);
    return plain != 0 ? plain : compareWeights(left, right, true);
}

} // namespace dao
