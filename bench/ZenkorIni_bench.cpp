// The ini functions on a file the size of a full stat.ini: 100 sections of 16 keys. The
// game reads and writes such a file one key at a time (each call opens the whole file),
// so the cost of one call is what a level end or the statistics screen multiplies.
#include "support/ZenkorModule.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

class StatFile {
public:
    StatFile() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tolva2-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
        folder_ = pattern;
        path_ = folder_ + "\\stat.ini";  // a stored path, as the game passes it
        std::string text;
        for (int level = 1; level <= 100; ++level) {
            text += "[LEVEL" + std::to_string(level) + "]\r\n";
            for (int key = 0; key < 16; ++key)
                text += "field" + std::to_string(key) + "=" + std::to_string(level * 1000 + key) + "\r\n";
        }
        if (tolva::WriteWholeFile(path_, text) != 0) throw std::runtime_error("cannot write " + path_);
    }
    ~StatFile() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }
    const std::string& Path() const { return path_; }

private:
    std::string folder_;
    std::string path_;
};

void BM_ReadIniOneKeyMiddle(benchmark::State& state) {
    const StatFile file;
    for (auto _ : state) benchmark::DoNotOptimize(tolva::ReadIni(file.Path(), "level50", "FIELD8"));
}
BENCHMARK(BM_ReadIniOneKeyMiddle);

void BM_ReadIniOneKeyLast(benchmark::State& state) {
    const StatFile file;
    for (auto _ : state) benchmark::DoNotOptimize(tolva::ReadIni(file.Path(), "level100", "field15"));
}
BENCHMARK(BM_ReadIniOneKeyLast);

void BM_WriteIniOneKey(benchmark::State& state) {
    const StatFile file;
    bool flip = false;
    for (auto _ : state) {
        flip = !flip;
        if (!tolva::WriteIni(file.Path(), "level50", "field8", flip ? "12345" : "54321")) {
            state.SkipWithError("WriteIni failed");
            break;
        }
    }
}
BENCHMARK(BM_WriteIniOneKey);

} // namespace
