#include "LevelSetText.h"

#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"

#include <memory>
#include <sstream>

namespace tolva::levelgen {
namespace {

std::string Row(const CellGrid& grid, int y, int side) {
    std::string text;
    for (int x = 0; x < side; ++x) {
        if (x > 0) text += ',';
        text += std::to_string(grid(x, y));
    }
    return text;
}

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

// Where the last line of the text starts, as the game's scan sees lines: one line end
// at the very end closes the last line, it does not open an empty one.
std::size_t LastLineStart(const std::string& text) {
    std::size_t end = text.size();
    if (end > 0 && text[end - 1] == '\n') --end;
    if (end > 0 && text[end - 1] == '\r') --end;
    std::size_t start = end;
    while (start > 0 && !IsLineEnd(text[start - 1])) --start;
    return start;
}

double ChecksumOf(const std::string& text) {
    auto game = std::make_unique<LevelModule>();
    LevelSetReader reader(*game);
    std::istringstream in(text);
    return reader.Load(in).LevelChecksum;
}

} // namespace

std::string FormatLevelSet(const std::string& setName, const std::vector<LevelRecord>& levels) {
    std::string text = "[main]\nlevelset=" + setName + "\n";
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const LevelRecord& level = levels[i];
        text += "[level" + std::to_string(i + 1) + "]\n";
        text += "levelbricks=" + std::to_string(level.levelbricks) + "\n";
        text += "levelgfxfolder=" + level.levelgfxfolder + "\n";
        text += "LevelName=" + level.LevelName + "\n";
        for (int y = 0; y < level.levelbricks; ++y) {
            text += "r" + std::to_string(y) + "=" + Row(level.BrickGrid, y, level.levelbricks) + "\n";
            text += "s" + std::to_string(y) + "=" + Row(level.SpellGrid, y, level.levelbricks) + "\n";
        }
    }
    return text;
}

SealResult SealLevelSet(const std::string& fileText) {
    const std::string eol = fileText.find("\r\n") != std::string::npos ? "\r\n" : "\n";
    std::string body = fileText;
    const std::size_t last = LastLineStart(body);
    std::string lastLine = body.substr(last);
    while (!lastLine.empty() && IsLineEnd(lastLine.back())) lastLine.pop_back();
    std::string head = lastLine.substr(0, 8);
    for (char& c : head) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    if (head == "checksum") body.erase(last);
    if (!body.empty() && !IsLineEnd(body.back())) body += eol;
    // The checksum line is never a level head or a row, so what stands behind its "="
    // cannot change the sum; it only has to be the last line, as it will be.
    SealResult result;
    result.checksum = ChecksumOf(body + "checksum=" + eol);
    result.text = body + "checksum=" + EncryptNumber(NumberText(result.checksum), DefaultSetKey) + eol;
    return result;
}

} // namespace tolva::levelgen
