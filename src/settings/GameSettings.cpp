#include "settings/GameSettings.h"

#include "support/ZenkorModule.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <variant>
#include <vector>

namespace tolva {

const char* const GameSettings::DefaultHiscoreUrl = "http://hiscores.tolva2.example.org/tolva2/updatehiscore.asp";
const char* const GameSettings::DefaultLevelSet = "levels\\default\\";

namespace {

constexpr const char* Section = "main";

// How a value is read from its text and written back.
enum class Form {
    Text,        // as it stands
    Folder,      // text; a closing backslash is added to a non-empty folder
    Short,       // 16-bit number, written as decimal text
    Long,        // 32-bit number, written as decimal text
    Flag,        // true only if the number is 1; written "1" or "0"
};

using Member = std::variant<std::string GameSettings::*, std::int16_t GameSettings::*,
                            std::int32_t GameSettings::*, bool GameSettings::*>;

struct Key {
    const char* readName;
    const char* writeName;   // the game writes two keys in lower case that it reads mixed
    Form form;
    Member member;
    // The default as the text the file would hold for it, so that a new object is made
    // by the same reading as a file.
    const char* defaultText;
    // The range a number is mended into after reading; writing keeps what it is given.
    std::int32_t least = std::numeric_limits<std::int32_t>::min();
    std::int32_t most = std::numeric_limits<std::int32_t>::max();
};

// The keys in the order the game writes them.
const std::vector<Key>& Keys() {
    static const std::vector<Key> keys = {
        {"HiscoreUrl", "HiscoreUrl", Form::Text, &GameSettings::HiscoreUrl, GameSettings::DefaultHiscoreUrl},
        {"levelset", "levelset", Form::Text, &GameSettings::LevelSetPath, GameSettings::DefaultLevelSet},
        {"showbonuscounter", "showbonuscounter", Form::Short, &GameSettings::ShowBonusCounter, "1"},
        {"playsounds", "playsounds", Form::Short, &GameSettings::PlaySounds, "1"},
        {"playmusic", "playmusic", Form::Short, &GameSettings::PlayMusic, "1"},
        // The board needs a pause of at least 2 ms before closing up.
        {"updatedelay", "updatedelay", Form::Long, &GameSettings::UpdateDelay, "200", 2},
        {"huntdelay", "huntdelay", Form::Short, &GameSettings::HuntDelay, "0"},
        {"anidraw", "anidraw", Form::Flag, &GameSettings::AniDraw, "1"},
        {"makestat", "makestat", Form::Flag, &GameSettings::MakeStat, "1"},
        {"supplystatfile", "supplystatfile", Form::Flag, &GameSettings::SupplyStatFile, "1"},
        {"drawusingbackbuffer", "drawusingbackbuffer", Form::Flag, &GameSettings::DrawUsingBackBuffer, "1"},
        {"playanimations", "playanimations", Form::Flag, &GameSettings::PlayAnimations, "1"},
        {"UseExternalMusicFile", "UseExternalMusicFile", Form::Flag, &GameSettings::UseExternalMusicFile, "0"},
        {"ExtMusicPath", "extmusicpath", Form::Folder, &GameSettings::ExtMusicPath, ""},
        {"ExtMusicFile", "extmusicfile", Form::Text, &GameSettings::ExtMusicFile, ""},
        {"showgroup", "showgroup", Form::Flag, &GameSettings::ShowGroup, "1"},
    };
    return keys;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::tolower(x) == std::tolower(y);
    });
}

// Names do not depend on case in the file, so neither do they here.
const Key* FindKey(std::string_view name) {
    for (const Key& key : Keys())
        if (SameName(name, key.readName) || SameName(name, key.writeName)) return &key;
    return nullptr;
}

bool IsNumber(const Key& key) { return key.form == Form::Short || key.form == Form::Long || key.form == Form::Flag; }

void ReadValue(GameSettings& s, const Key& key, const std::string& text) {
    switch (key.form) {
    case Form::Text: s.*std::get<std::string GameSettings::*>(key.member) = text; break;
    case Form::Folder: {
        std::string folder = text;
        if (!folder.empty() && folder.back() != '\\') folder += '\\';
        s.*std::get<std::string GameSettings::*>(key.member) = folder;
        break;
    }
    case Form::Short: s.*std::get<std::int16_t GameSettings::*>(key.member) = CInt(Val(text)); break;
    case Form::Long: s.*std::get<std::int32_t GameSettings::*>(key.member) = CLng(Val(text)); break;
    case Form::Flag: s.*std::get<bool GameSettings::*>(key.member) = Val(text) == 1.0; break;
    }
}

void Mend(GameSettings& s, const Key& key) {
    if (key.form == Form::Short) {
        auto& value = s.*std::get<std::int16_t GameSettings::*>(key.member);
        value = static_cast<std::int16_t>(std::clamp<std::int32_t>(value, key.least, key.most));
    } else if (key.form == Form::Long) {
        auto& value = s.*std::get<std::int32_t GameSettings::*>(key.member);
        value = std::clamp(value, key.least, key.most);
    }
}

std::string WriteValue(const GameSettings& s, const Key& key) {
    switch (key.form) {
    case Form::Text:
    case Form::Folder: return s.*std::get<std::string GameSettings::*>(key.member);
    case Form::Short: return NumberText(s.*std::get<std::int16_t GameSettings::*>(key.member));
    case Form::Long: return NumberText(s.*std::get<std::int32_t GameSettings::*>(key.member));
    case Form::Flag: return s.*std::get<bool GameSettings::*>(key.member) ? "1" : "0";
    }
    return {};
}

} // namespace

GameSettings::GameSettings() {
    for (const Key& key : Keys()) ReadValue(*this, key, key.defaultText);
}

GameSettings GameSettings::Read(const std::string& iniFile) {
    GameSettings s;
    for (const Key& key : Keys()) {
        const std::string text = ReadIni(iniFile, Section, key.readName);
        if (!text.empty()) ReadValue(s, key, text);
        Mend(s, key);
    }
    return s;
}

bool GameSettings::Write(const std::string& iniFile) const {
    ClearFileAttributes(iniFile);
    bool ok = true;
    for (const Key& key : Keys()) ok = WriteIni(iniFile, Section, key.writeName, WriteValue(*this, key)) && ok;
    return ok;
}

std::optional<std::int32_t> GameSettings::Number(std::string_view name) const {
    const Key* key = FindKey(name);
    if (key == nullptr || !IsNumber(*key)) return std::nullopt;
    switch (key->form) {
    case Form::Short: return this->*std::get<std::int16_t GameSettings::*>(key->member);
    case Form::Long: return this->*std::get<std::int32_t GameSettings::*>(key->member);
    default: return this->*std::get<bool GameSettings::*>(key->member) ? 1 : 0;
    }
}

bool GameSettings::SetNumber(std::string_view name, std::int32_t value) {
    const Key* key = FindKey(name);
    if (key == nullptr || !IsNumber(*key)) return false;
    switch (key->form) {
    case Form::Short: this->*std::get<std::int16_t GameSettings::*>(key->member) = static_cast<std::int16_t>(value); break;
    case Form::Long: this->*std::get<std::int32_t GameSettings::*>(key->member) = value; break;
    default: this->*std::get<bool GameSettings::*>(key->member) = value == 1; break;
    }
    return true;
}

bool GameSettings::IsFirstUse(const std::string& iniFile) {
    std::string value = ReadIni(iniFile, Section, "notfirstuse");
    std::transform(value.begin(), value.end(), value.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return value != "yes";
}

bool GameSettings::MarkFirstUseDone(const std::string& iniFile) {
    ClearFileAttributes(iniFile);
    return WriteIni(iniFile, Section, "notfirstuse", "yes");
}

} // namespace tolva
