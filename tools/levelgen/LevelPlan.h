#pragma once
// LevelPlan: what each level of the shipped sets should be, before it is made: name,
// size, colours, layout, picture folder, the spells hidden in it and how hard it should
// feel. The plan is data; LevelSetMaker turns it into levels.
#include "LevelShapes.h"

#include <string>
#include <vector>

namespace tolva::levelgen {

enum class Mood {
    Friendly,   // the easiest of the candidates: most careless players clear it
    Moderate,   // the least forgiving candidate that the greedy player still clears
    Hard        // the hardest candidate: the greedy player and nearly all random ones fail
};

struct LevelPlanEntry {
    std::string name;
    int side = 10;
    int colours = 3;
    int minGroup = 2;
    int maxGroup = 4;
    LayoutRequest shape;
    std::string folder;         // picture folder, relative to the set's folder
    std::vector<int> spells;    // spell numbers hidden in the level
    Mood mood = Mood::Moderate;
    int candidates = 6;         // designs made and judged before one is chosen
};

struct SetPlan {
    std::string folder;         // the set's folder under levels/
    std::string setName;        // the levelset= name
    std::vector<LevelPlanEntry> levels;
};

SetPlan DefaultSetPlan();
SetPlan MiniaturesSetPlan();

} // namespace tolva::levelgen
