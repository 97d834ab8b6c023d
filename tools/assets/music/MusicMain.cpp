// tolva2-music: composes the game's tracker module into DIR/data/0.mod.
//
//   tolva2-music --game-dir DIR
#include "ModComposer.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>

int main(int argc, char** argv)
{
    std::string gameDir;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--game-dir") == 0) {
            gameDir = argv[i + 1];
        }
    }
    if (gameDir.empty()) {
        std::fprintf(stderr, "tolva2-music: --game-dir is required\n");
        return 2;
    }
    try {
        const std::vector<uint8_t> bytes = ModComposer::Compose().Encode();
        const std::filesystem::path data = std::filesystem::path(gameDir) / "data";
        std::filesystem::create_directories(data);
        const std::string path = (data / "0.mod").string();
        const std::string temp = path + ".part";
        std::FILE* f = std::fopen(temp.c_str(), "wb");
        if (!f) {
            std::fprintf(stderr, "tolva2-music: could not write %s\n", path.c_str());
            return 1;
        }
        const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
        if (std::fclose(f) != 0 || !ok) {
            std::remove(temp.c_str());
            std::fprintf(stderr, "tolva2-music: could not write %s\n", path.c_str());
            return 1;
        }
        std::filesystem::rename(temp, path);
        std::printf("tolva2-music: %zu bytes written to %s\n", bytes.size(), path.c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tolva2-music: %s\n", e.what());
        return 1;
    }
    return 0;
}
