// tolva2-sounds: synthesizes the game's wave effects into DIR/data/N.wav.
//
//   tolva2-sounds --game-dir DIR
#include "SoundEffects.h"
#include "WaveFile.h"

#include <cstdio>
#include <cstring>
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
        std::fprintf(stderr, "tolva2-sounds: --game-dir is required\n");
        return 2;
    }
    const std::filesystem::path data = std::filesystem::path(gameDir) / "data";
    std::error_code error;
    std::filesystem::create_directories(data, error);
    int failures = 0;
    for (int number : SoundEffects::Numbers()) {
        const std::string path = (data / (std::to_string(number) + ".wav")).string();
        if (!WaveFile::Write(path, SoundEffects::Render(number), SoundEffects::SampleRate)) {
            std::fprintf(stderr, "tolva2-sounds: could not write %s\n", path.c_str());
            ++failures;
        }
    }
    std::printf("tolva2-sounds: %zu effects written\n", SoundEffects::Numbers().size() - failures);
    return failures == 0 ? 0 : 1;
}
