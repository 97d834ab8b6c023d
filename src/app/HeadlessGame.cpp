#include "app/HeadlessGame.h"

#include "app/HiscoreWiring.h"
#include "audio/HeadlessSoundEffects.h"
#include "audio/IdleMascot.h"
#include "board/TolvaBoard.h"
#include "hiscores/HeadlessHiscoreView.h"
#include "hiscores/HiscoreKeeper.h"
#include "session/GameLevelSets.h"
#include "session/GameBuilder.h"
#include "session/GameSaver.h"
#include "session/GameSession.h"
#include "session/HeadlessSessionView.h"
#include "shared/LevelModule.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPictureStore.h"
#include "support/platform/HeadlessPictureStrip.h"
#include "support/platform/HeadlessSurface.h"
#include "support/platform/SeededRandom.h"

#include <algorithm>
#include <cctype>

namespace tolva {
namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

} // namespace

HeadlessGame::HeadlessGame(HeadlessEventLoop& loop, Dialogs& dialogs)
    : loop_(loop), dialogs_(dialogs), game_(std::make_unique<LevelModule>()),
      surface_(std::make_unique<HeadlessSurface>()), pictures_(std::make_unique<HeadlessPictureStore>(loop)),
      sound_(std::make_unique<HeadlessSoundEffects>(loop)), rng_(std::make_unique<SeededRandom>(1)),
      view_(std::make_unique<HeadlessSessionView>()),
      testTube_(std::make_unique<HeadlessPictureStrip>("TestTubeAnimation", loop)),
      kedelig_(std::make_unique<HeadlessPictureStrip>("Kedelig", loop)), stats_(AppPath() + "stat.ini"),
      hiscoreView_(std::make_unique<HeadlessHiscoreView>()),
      hiscores_(std::make_unique<HiscoreKeeper>(loop, *hiscoreView_)) {
    idle_ = std::make_unique<IdleMascot>(*kedelig_, *sound_, loop_, *rng_, settings_,
                                         [this] { return game_->NoSpellBusy; });
    built_ = std::make_unique<GameBuilder>(GameParts{*game_, settings_,
                                                     {loop_, *surface_, *pictures_, *sound_, dialogs_, *rng_},
                                                     *view_, SessionServices{*hiscores_, stats_, *idle_, windows_}});
    built_->BuildBoard();
    built_->Board().SetTestTubeAnimation(testTube_.get());

    levelSets_ = std::make_unique<GameLevelSets>(*game_, Session(), Board(), *view_, dialogs_, loop_);
    ConnectHiscoreTable(*levelSets_, *hiscores_, *view_, dialogs_);
    saver_ = std::make_unique<GameSaver>(*game_, Session(), Board(), *levelSets_, dialogs_);
    // Without a sound device there is no music to start or stop.
    startup_ = std::make_unique<GameStartup>(StartupParts{
        *game_, settings_, Session(), Board(), *levelSets_, *view_, dialogs_, *rng_, *sound_, *this, {}, {},
        [this] { levelSets_->HiscoreSaver(); }});
}

HeadlessGame::~HeadlessGame() {
    // The board holds the test tube's strip and the session the mascot: they go first.
    saver_.reset();
    built_.reset();
}

bool HeadlessGame::Start(const std::string& commandLine, std::uint64_t seed) {
    return startup_->Form_Load(commandLine, seed);
}

bool HeadlessGame::Quit() { return startup_->Form_Unload(); }

bool HeadlessGame::ChooseLevelSet(const std::string& folder) {
    std::string wanted = Lower(folder);
    std::replace(wanted.begin(), wanted.end(), '/', '\\');
    while (!wanted.empty() && (wanted.back() == '\\' || wanted.back() == '/')) wanted.pop_back();
    const auto& entries = levelSets_->Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        // The tag is "levels\<folder>\"; the folder alone or the whole tag both name it.
        std::string tag = Lower(entries[i].Tag);
        while (!tag.empty() && tag.back() == '\\') tag.pop_back();
        const std::string name = tag.substr(tag.find_last_of('\\') + 1);
        if (wanted == name || wanted == tag) return levelSets_->LevelList_Click(static_cast<int>(i));
    }
    return false;
}

void HeadlessGame::LoadGfx() {
    view_->ShowLoading();
    Board().LoadResources();
    testTube_->LoadStrip(AppPath() + "data\\17.bmp");
    kedelig_->LoadStrip(AppPath() + "data\\9.bmp");
}

void HeadlessGame::ShowMainWindow() { view_->CloseLoading(); }

} // namespace tolva
