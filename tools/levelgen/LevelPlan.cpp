#include "LevelPlan.h"

#include <algorithm>
#include <cmath>

namespace tolva::levelgen {
namespace {

struct Outline {
    const char* name;
    Shape shape;
    const char* text;   // for Shape::Text
};

// The default set, level by level. Every ten levels share a world of pictures.
const Outline DefaultOutline[100] = {
    {"First Steps", Shape::Full, ""},        {"Gun Practice", Shape::Full, ""},
    {"Small Blast", Shape::Full, ""},        {"Twin Bricks", Shape::Full, ""},
    {"Colour Swap", Shape::Diamond, ""},     {"Quick Draw", Shape::Full, ""},
    {"Rain Check", Shape::Full, ""},         {"Open Window", Shape::Frame, ""},
    {"Drop by Drop", Shape::Full, ""},       {"Heartbeat", Shape::Heart, ""},
    {"Saw Mill", Shape::Full, ""},           {"Crossroads", Shape::Cross, ""},
    {"Stepping Stones", Shape::Checker, ""}, {"Stairway", Shape::Pyramid, ""},
    {"Hi There", Shape::Text, "HI"},         {"Orchard Rows", Shape::Pillars, ""},
    {"Round Table", Shape::Ring, ""},        {"Tide Mark", Shape::Waves, ""},
    {"Patchwork", Shape::Full, ""},          {"Milestone", Shape::Text, "YES"},
    {"Crystal Cave", Shape::Gem, ""},        {"Quartz Garden", Shape::Scatter, ""},
    {"Prism", Shape::Diamond, ""},           {"Geode", Shape::Ring, ""},
    {"Frost Window", Shape::Windows, ""},    {"Ice Palace", Shape::Pillars, ""},
    {"Shard Field", Shape::Checker, ""},     {"Diamond Mine", Shape::Gem, ""},
    {"Hourglass", Shape::Hourglass, ""},     {"Thirty Winks", Shape::Full, ""},
    {"Arrowhead", Shape::Arrow, ""},         {"Whirlpool", Shape::Spiral, ""},
    {"Zen Garden", Shape::Text, "ZEN"},      {"Chessboard", Shape::Checker, ""},
    {"The Keep", Shape::Frame, ""},          {"The Long Climb", Shape::Pyramid, ""},
    {"Honeycomb", Shape::Windows, ""},       {"Beating Heart", Shape::Heart, ""},
    {"Scattered", Shape::Scatter, ""},       {"Forty Acres", Shape::Full, ""},
    {"Into the Woods", Shape::Tree, ""},     {"Fern Hollow", Shape::Waves, ""},
    {"Mossy Stones", Shape::Scatter, ""},    {"Old Oak", Shape::Tree, ""},
    {"The Clearing", Shape::Ring, ""},       {"Birch Stand", Shape::Pillars, ""},
    {"Leaf Litter", Shape::Checker, ""},     {"Acorn", Shape::Text, "OAK"},
    {"Compass", Shape::Cross, ""},           {"Tolva", Shape::Text, "TOL/VA"},
    {"Lattice", Shape::Windows, ""},         {"Deep Breath", Shape::Full, ""},
    {"Spiral Stair", Shape::Spiral, ""},     {"Lantern", Shape::Diamond, ""},
    {"Big Top", Shape::Pyramid, ""},         {"Blocks Away", Shape::Full, ""},
    {"Pendulum", Shape::Hourglass, ""},      {"Great Wall", Shape::Frame, ""},
    {"Night Sky", Shape::Scatter, ""},       {"Sixty Seconds", Shape::Full, ""},
    {"Low Tide", Shape::Waves, ""},          {"Rain Drop", Shape::Drop, ""},
    {"Coral Reef", Shape::Scatter, ""},      {"Maelstrom", Shape::Spiral, ""},
    {"Sea Shanty", Shape::Text, "SEA"},      {"Harbour Lights", Shape::Windows, ""},
    {"Sandbar", Shape::Pyramid, ""},         {"Deep Water", Shape::Full, ""},
    {"Signpost", Shape::Arrow, ""},          {"Pure Joy", Shape::Text, "JOY"},
    {"Fortress", Shape::Frame, ""},          {"Mosaic", Shape::Checker, ""},
    {"Double Heart", Shape::Heart, ""},      {"Ferris Wheel", Shape::Ring, ""},
    {"Switchback", Shape::Waves, ""},        {"Cathedral", Shape::Pillars, ""},
    {"Grand Cross", Shape::Cross, ""},       {"Long Division", Shape::Full, ""},
    {"Shattered", Shape::Scatter, ""},       {"Eighty Steps", Shape::Pyramid, ""},
    {"Campfire", Shape::Flame, ""},          {"Hot Coals", Shape::Scatter, ""},
    {"Lava Flow", Shape::Waves, ""},         {"The Forge", Shape::Full, ""},
    {"Wildfire", Shape::Text, "FIRE"},       {"Ember Glow", Shape::Ring, ""},
    {"Phoenix", Shape::Flame, ""},           {"Cinders", Shape::Checker, ""},
    {"Labyrinth", Shape::Windows, ""},       {"Black Diamond", Shape::Diamond, ""},
    {"Vortex", Shape::Spiral, ""},           {"Citadel", Shape::Frame, ""},
    {"Summit", Shape::Pyramid, ""},          {"Starfield", Shape::Scatter, ""},
    {"Grand Gallery", Shape::Pillars, ""},   {"The Gauntlet", Shape::Hourglass, ""},
    {"Mindbender", Shape::Full, ""},         {"Last Light", Shape::Heart, ""},
    {"Final Approach", Shape::Arrow, ""},    {"Tolva Two", Shape::Text, "TOLVA/II"},
};

// The order in which spells come back once all six have been met: every level from
// the twelfth takes the next few of this ring, so each kind returns within three levels.
const int SpellRing[] = {SpellGun, SpellBomb, SpellRainbow, SpellTestTube, SpellUmbrella, SpellSaw,
                         SpellBomb, SpellGun, SpellSaw, SpellRainbow, SpellUmbrella, SpellTestTube};

std::vector<int> DefaultSpells(int level) {
    // Each kind is introduced alone (or beside one the player knows) in the first levels.
    switch (level) {
    case 1: return {};
    case 2: return {SpellGun};
    case 3: return {SpellBomb};
    case 4: return {SpellGun, SpellBomb};
    case 5: return {SpellRainbow};
    case 6: return {SpellBomb, SpellGun};
    case 7: return {SpellUmbrella};
    case 8: return {SpellRainbow, SpellGun};
    case 9: return {SpellTestTube};
    case 10: return {SpellUmbrella, SpellBomb};
    case 11: return {SpellSaw};
    default: break;
    }
    auto count = [](int l) { return 2 + l / 30; };   // 2 up to 5 spells in the last levels
    int next = 0;
    for (int l = 12; l < level; ++l) next += count(l);
    std::vector<int> spells;
    for (int i = 0; i < count(level); ++i) spells.push_back(SpellRing[(next + i) % 12]);
    return spells;
}

int DefaultSide(int level) {
    const double t = (level - 1) / 99.0;
    int side = static_cast<int>(std::lround(10 + 30 * std::pow(t, 1.25)));
    if (level % 10 == 0) side = std::min(40, side + 2);   // every tenth level is a little larger
    return std::clamp(side, 10, 40);
}

int DefaultColours(int level) {
    if (level <= 4) return 3;
    if (level <= 14) return 4;
    if (level <= 30) return 5;
    if (level <= 55) return 6;
    if (level <= 80) return 7;
    if (level <= 95) return 8;
    return 9;
}

// The ten worlds of pictures, ten levels each, in the order the default set meets them.
// Their folders lie in the default set; other sets reach them from their own folder.
const char* const Worlds[10] = {"meadow", "dunes", "crystal", "marble", "forest",
                                "clockwork", "ocean", "neon", "ember", "cosmos"};

std::string ThemeFolder(int level) { return Worlds[std::clamp((level - 1) / 10, 0, 9)]; }

} // namespace

SetPlan DefaultSetPlan() {
    SetPlan plan{"default", "Default", {}};
    for (int level = 1; level <= 100; ++level) {
        const Outline& o = DefaultOutline[level - 1];
        LevelPlanEntry e;
        e.name = o.name;
        e.side = DefaultSide(level);
        e.colours = DefaultColours(level);
        if (level <= 10) { e.minGroup = 4; e.maxGroup = 10; }
        else if (level <= 20) { e.minGroup = 3; e.maxGroup = 8; }
        else if (level <= 35) { e.minGroup = 3; e.maxGroup = 6; }
        else if (level <= 60) { e.minGroup = 2; e.maxGroup = 5; }
        else { e.minGroup = 2; e.maxGroup = 4; }
        e.shape.shape = o.shape;
        e.shape.text = o.text;
        e.shape.baseRows = o.shape == Shape::Text ? std::max(2, e.side / 4) : 0;
        e.folder = ThemeFolder(level);
        e.spells = DefaultSpells(level);
        e.mood = level <= 15 ? Mood::Friendly : level <= 35 ? Mood::Moderate : Mood::Hard;
        e.candidates = level <= 15 ? 40 : level <= 35 ? 20 : 24;
        plan.levels.push_back(e);
    }
    return plan;
}

// A second set in another style: twenty small boards, every one a tight puzzle of
// twos and threes in five or six colours, one spell each.
SetPlan MiniaturesSetPlan() {
    static const Outline outline[20] = {
        {"Pebble", Shape::Full, ""},       {"Button", Shape::Diamond, ""},   {"Thimble", Shape::Ring, ""},
        {"Cufflink", Shape::Frame, ""},    {"Acorn Cap", Shape::Heart, ""},  {"Bead", Shape::Cross, ""},
        {"Marble", Shape::Full, ""},       {"Domino", Shape::Checker, ""},   {"Keyhole", Shape::Hourglass, ""},
        {"Brooch", Shape::Gem, ""},        {"Spinning Top", Shape::Spiral, ""}, {"Teacup", Shape::Pyramid, ""},
        {"Locket", Shape::Heart, ""},      {"Dice", Shape::Windows, ""},     {"Seashell", Shape::Waves, ""},
        {"Pin Cushion", Shape::Scatter, ""}, {"Chess Pawn", Shape::Arrow, ""}, {"Music Box", Shape::Pillars, ""},
        {"Snow Globe", Shape::Ring, ""},   {"Tiny Crown", Shape::Full, ""},
    };
    static const int spells[6] = {SpellBomb, SpellGun, SpellTestTube, SpellRainbow, SpellSaw, SpellUmbrella};
    SetPlan plan{"miniatures", "Miniatures", {}};
    for (int i = 0; i < 20; ++i) {
        LevelPlanEntry e;
        e.name = outline[i].name;
        e.side = 10 + (i * 7) / 19;            // 10 up to 17
        e.colours = i < 8 ? 5 : 6;
        e.minGroup = 2;
        e.maxGroup = 3;
        e.shape.shape = outline[i].shape;
        e.spells = {spells[i % 6]};
        e.mood = i < 3 ? Mood::Moderate : Mood::Hard;
        e.candidates = 12;
        // Two small boards in each world, borrowed from the default set beside this one.
        e.folder = std::string("..\\default\\") + Worlds[i / 2];
        plan.levels.push_back(e);
    }
    return plan;
}

} // namespace tolva::levelgen
