#include "CodePage.h"

#include <array>
#include <cstdint>

namespace tolva::hiscored {

namespace {

// The characters of 0x80..0x9F; the free codes map to themselves.
constexpr std::array<char32_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CharacterOf(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) return HighControls[byte - 0x80];
    return byte;
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// The next character of `text` from `pos`, moving `pos` past it; none if the bytes are
// not well-formed UTF-8 (overlong forms and surrogates included).
std::optional<char32_t> NextCharacter(std::string_view text, std::size_t& pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    int length = 0;
    char32_t c = 0;
    if (lead < 0x80) { ++pos; return lead; }
    if (lead >= 0xC2 && lead <= 0xDF) { length = 2; c = lead & 0x1F; }
    else if (lead >= 0xE0 && lead <= 0xEF) { length = 3; c = lead & 0x0F; }
    else if (lead >= 0xF0 && lead <= 0xF4) { length = 4; c = lead & 0x07; }
    else return std::nullopt;
    if (pos + static_cast<std::size_t>(length) > text.size()) return std::nullopt;
    for (int i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        c = (c << 6) | (next & 0x3F);
    }
    const char32_t smallest = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    if (c < smallest || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return std::nullopt;
    pos += static_cast<std::size_t>(length);
    return c;
}

} // namespace

std::string CodePageToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char b : bytes) AppendUtf8(out, CharacterOf(static_cast<unsigned char>(b)));
    return out;
}

std::optional<std::string> Utf8ToCodePage(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    std::size_t pos = 0;
    while (pos < utf8.size()) {
        const std::optional<char32_t> c = NextCharacter(utf8, pos);
        if (!c) return std::nullopt;
        if (*c < 0x80 || (*c >= 0xA0 && *c <= 0xFF)) {
            out += static_cast<char>(*c);
            continue;
        }
        bool found = false;
        for (std::size_t i = 0; i < HighControls.size() && !found; ++i) {
            if (HighControls[i] == *c) {
                out += static_cast<char>(0x80 + i);
                found = true;
            }
        }
        if (!found) return std::nullopt;
    }
    return out;
}

std::string EscapeHtml(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (const char c : utf8) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default:
            out += (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) ? '?' : c;
        }
    }
    return out;
}

} // namespace tolva::hiscored
