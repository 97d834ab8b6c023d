#pragma once
// The game's texts are bytes in the Western Windows code page (1252). The server keeps
// them as bytes and turns them into UTF-8 only for its pages; a browser that sent the
// form in UTF-8 instead of the page's code page is read back through the same table.
#include <optional>
#include <string>
#include <string_view>

namespace tolva::hiscored {

// Code-page bytes as UTF-8. The five codes 1252 leaves free (0x81, 0x8D, 0x8F, 0x90,
// 0x9D) become the control characters of the same number, as browsers map them.
std::string CodePageToUtf8(std::string_view bytes);

// The reverse: none if the text is not well-formed UTF-8 or holds a character the code
// page has no byte for.
std::optional<std::string> Utf8ToCodePage(std::string_view utf8);

// UTF-8 text made safe between HTML tags and inside quoted attributes: & < > " ' become
// references, and control characters (which no name or score should hold) a '?'.
std::string EscapeHtml(std::string_view utf8);

} // namespace tolva::hiscored
