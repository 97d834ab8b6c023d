#include "about/Credits.h"

#include "support/Version.h"

#include <initializer_list>
#include <vector>

namespace tolva {

namespace {

struct RoleGroup {
    const char* heading;
    std::initializer_list<const char*> names;
};

// The team, by role. Each name stands between hyphens on a line of its own.
const RoleGroup Team[] = {
    {"...CODING", {"Ana Lindqvist", "Tomas Okafor"}},
    {"...GRAPHICS", {"Mira Castellanos", "Ana Lindqvist"}},
    {"...TESTERS", {"Jonas Ferreira", "Ilse Marchetti", "Pavel Dunmore", "Keiko Saarinen"}},
    {"...LEVEL EDITORS", {"Tomas Okafor", "Ruth Abernathy", "Leon Vasquez"}},
    {"...LEVEL TESTERS", {"Ilse Marchetti", "Oskar Brandvold", "Nadia Kowalczyk"}},
    {"...SPECIAL THANKS", {"Everyone who sent us a level set", "Our families, for their patience"}},
};

} // namespace

std::string CreditsText(int major, int minor, int revision) {
    std::vector<std::string> lines = {
        "TOLVA II",
        "v" + std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(revision),
        "",
        "2000",
        "Tolva Games",
        "",
        "",
    };
    for (const RoleGroup& group : Team) {
        lines.emplace_back(group.heading);
        lines.emplace_back("");
        for (const char* name : group.names) {
            lines.push_back(std::string("- ") + name + " -");
            lines.emplace_back("");
        }
        lines.emplace_back("");
    }
    for (const char* closing : {"Found a bug, made a level set,", "or just want to say hello?", "",
                                "Write to us at", "", "tolva@example.org", "", "or visit", "", "www.example.org",
                                "", "", ""}) {
        lines.emplace_back(closing);
    }
    lines.emplace_back(" E N D");

    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += '|';
        text += lines[i];
    }
    return text;
}

std::string CreditsText() { return CreditsText(VersionMajor, VersionMinor, VersionRevision); }

} // namespace tolva
