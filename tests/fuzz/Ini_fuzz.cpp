// Fuzz target of the ini reader and writer. The input is a file's bytes and one write
// (section, key, value) into it. What must hold:
//  - nothing read is longer than 2047 bytes;
//  - a refused write leaves the file byte for byte as it was;
//  - a write that is taken reads back as the value trimmed (and without a pair of
//    enclosing quotes) and cut at 2047 bytes;
//  - every other key the file holds, in that section or any other, reads as before.
#include "fuzz/FuzzCheck.h"
#include "fuzz/FuzzFolder.h"
#include "support/ZenkorModule.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char* Target = "ini";

bool Blank(char c) { return c == ' ' || c == '\t'; }

std::string TrimmedBlanks(const std::string& text) {
    std::size_t first = 0, last = text.size();
    while (first < last && Blank(text[first])) ++first;
    while (last > first && Blank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

bool SameNoCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto fold = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
        if (fold(a[i]) != fold(b[i])) return false;
    }
    return true;
}

// What the reader makes of a written value.
std::string ReadBackOf(const std::string& value) {
    std::string v = TrimmedBlanks(value);
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) v = v.substr(1, v.size() - 2);
    if (v.size() > 2047) v.resize(2047);
    return v;
}

// The (section, key) names the file seems to hold, found by a naive look at its lines:
// the probes whose values must survive a write elsewhere.
std::vector<std::pair<std::string, std::string>> Probes(const std::string& bytes) {
    std::vector<std::pair<std::string, std::string>> probes;
    std::string section;
    std::size_t start = 0;
    while (start < bytes.size() && probes.size() < 64) {
        std::size_t end = bytes.find_first_of("\r\n", start);
        if (end == std::string::npos) end = bytes.size();
        const std::string line = TrimmedBlanks(bytes.substr(start, end - start));
        start = end + 1;
        if (!line.empty() && line.front() == '[') {
            const std::size_t close = line.find(']');
            section = line.substr(1, close == std::string::npos ? std::string::npos : close - 1);
        } else if (const std::size_t eq = line.find('='); eq != std::string::npos) {
            probes.emplace_back(section, line.substr(0, eq));
        }
    }
    return probes;
}

void CheckRead(const std::string& value) {
    tolva::fuzz::Check(value.size() <= 2047, Target, "a value read is longer than 2047 bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const std::string section = in.ConsumeRandomLengthString(40);
    const std::string key = in.ConsumeRandomLengthString(40);
    const std::string value = in.ConsumeRandomLengthString(3000);
    const std::string file = in.ConsumeRemainingBytesAsString();

    const auto& folder = tolva::fuzz::FuzzFolder::Get();
    folder.Write("f.ini", file);
    const std::string path = folder / "f.ini";

    const auto probes = Probes(file);
    std::vector<std::string> before;
    for (const auto& [s, k] : probes) {
        before.push_back(tolva::ReadIni(path, s, k));
        CheckRead(before.back());
    }

    if (!tolva::WriteIni(path, section, key, value)) {
        tolva::fuzz::Check(folder.Read("f.ini") == file, Target, "a refused write changed the file");
        return 0;
    }
    tolva::fuzz::Check(tolva::ReadIni(path, section, key) == ReadBackOf(value), Target,
                       "a written key does not read back as its value, trimmed and cut at 2047 bytes");
    for (std::size_t i = 0; i < probes.size(); ++i) {
        const auto& [s, k] = probes[i];
        if (SameNoCase(TrimmedBlanks(s), TrimmedBlanks(section)) && SameNoCase(TrimmedBlanks(k), TrimmedBlanks(key)))
            continue;
        tolva::fuzz::Check(tolva::ReadIni(path, s, k) == before[i], Target, "a write changed another key");
    }
    return 0;
}
