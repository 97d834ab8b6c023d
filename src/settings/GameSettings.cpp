#include "settings/GameSettings.h"

#include "support/ZenkorModule.h"

#include <algorithm>
#include <cctype>
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
};

// The keys in the order the game writes them. Defaults are the member initialisers of
// GameSettings; the range of updatedelay is enforced in Read.
const std::vector<Key>& Keys() {
    static const std::vector<Key> keys = {
        {"HiscoreUrl", "HiscoreUrl", Form::Text, &GameSettings::HiscoreUrl},
        {"levelset", "levelset", Form::Text, &GameSettings::LevelSetPath},
        {"showbonuscounter", "showbonuscounter", Form::Short, &GameSettings::ShowBonusCounter},
        {"playsounds", "playsounds", Form::Short, &GameSettings::PlaySounds},
        {"playmusic", "playmusic", Form::Short, &GameSettings::PlayMusic},
        {"updatedelay", "updatedelay", Form::Long, &GameSettings::UpdateDelay},
        {"huntdelay", "huntdelay", Form::Short, &GameSettings::HuntDelay},
        {"anidraw", "anidraw", Form::Flag, &GameSettings::AniDraw},
        {"makestat", "makestat", Form::Flag, &GameSettings::MakeStat},
        {"supplystatfile", "supplystatfile", Form::Flag, &GameSettings::SupplyStatFile},
        {"drawusingbackbuffer", "drawusingbackbuffer", Form::Flag, &GameSettings::DrawUsingBackBuffer},
        {"playanimations", "playanimations", Form::Flag, &GameSettings::PlayAnimations},
        {"UseExternalMusicFile", "UseExternalMusicFile", Form::Flag, &GameSettings::UseExternalMusicFile},
        {"ExtMusicPath", "extmusicpath", Form::Folder, &GameSettings::ExtMusicPath},
        {"ExtMusicFile", "extmusicfile", Form::Text, &GameSettings::ExtMusicFile},
        {"showgroup", "showgroup", Form::Flag, &GameSettings::ShowGroup},
    };
    return keys;
}

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

GameSettings GameSettings::Read(const std::string& iniFile) {
    GameSettings s;
    for (const Key& key : Keys()) {
        const std::string text = ReadIni(iniFile, Section, key.readName);
        if (!text.empty()) ReadValue(s, key, text);
    }
    if (s.UpdateDelay < 2) s.UpdateDelay = 2;
    return s;
}

bool GameSettings::Write(const std::string& iniFile) const {
    ClearFileAttributes(iniFile);
    bool ok = true;
    for (const Key& key : Keys()) ok = WriteIni(iniFile, Section, key.writeName, WriteValue(*this, key)) && ok;
    return ok;
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
