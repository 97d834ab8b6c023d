#include "FormFields.h"

#include <algorithm>
#include <cctype>

namespace tolva::hiscored {

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// One name or value: '+' is a blank and %XX a byte.
bool Unescape(std::string_view text, std::string& out) {
    out.clear();
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '+') {
            out += ' ';
        } else if (c == '%') {
            if (i + 2 >= text.size()) return false;
            const int high = HexValue(text[i + 1]);
            const int low = HexValue(text[i + 2]);
            if (high < 0 || low < 0) return false;
            out += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            out += c;
        }
    }
    return true;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

} // namespace

std::optional<FormFields> FormFields::Decode(std::string_view body, std::string& error) {
    FormFields form;
    std::size_t start = 0;
    while (start <= body.size()) {
        std::size_t end = body.find('&', start);
        if (end == std::string_view::npos) end = body.size();
        const std::string_view pair = body.substr(start, end - start);
        start = end + 1;
        if (pair.empty()) continue;  // "a=1&&b=2" and a closing '&' are harmless
        const std::size_t equals = pair.find('=');
        std::string name, value;
        if (!Unescape(pair.substr(0, equals), name) ||
            (equals != std::string_view::npos && !Unescape(pair.substr(equals + 1), value))) {
            error = "the form encoding is broken (a '%' without two hex digits)";
            return std::nullopt;
        }
        if (form.Find(name)) {
            error = "the field '" + name + "' is sent more than once";
            return std::nullopt;
        }
        form.fields_.emplace_back(std::move(name), std::move(value));
    }
    return form;
}

const std::string* FormFields::Find(std::string_view name) const {
    for (const auto& [fieldName, value] : fields_)
        if (fieldName == name) return &value;
    return nullptr;
}

std::string EncodeFormValue(std::string_view bytes) {
    static constexpr char Hex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(bytes.size() * 3);
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (std::isalnum(code) && code < 0x80) out += c;
        else if (c == '-' || c == '_' || c == '.' || c == '*') out += c;
        else if (c == ' ') out += '+';
        else out.append({'%', Hex[code >> 4], Hex[code & 0x0F]});
    }
    return out;
}

bool IsFormEncoded(std::string_view contentType) {
    const std::string type = Lower(contentType.substr(0, contentType.find(';')));
    const std::size_t first = type.find_first_not_of(" \t");
    if (first == std::string::npos) return true;
    const std::size_t last = type.find_last_not_of(" \t");
    return type.substr(first, last - first + 1) == "application/x-www-form-urlencoded";
}

} // namespace tolva::hiscored
