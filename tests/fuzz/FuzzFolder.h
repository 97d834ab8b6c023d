#pragma once
// A private folder for the fuzz targets that must go through real files (the ini reader
// and writer, the hiscore file), made once per process and removed at its exit.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace tolva::fuzz {

class FuzzFolder {
public:
    static const FuzzFolder& Get() {
        static const FuzzFolder folder;
        return folder;
    }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }
    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream out(*this / name, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read(const std::string& name) const {
        std::ifstream in(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    ~FuzzFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

private:
    FuzzFolder() {
        // In memory where the system has such a folder: every write of the game is
        // flushed to disk, which would make a disk-backed run a hundred times slower.
        std::error_code error;
        const std::filesystem::path base = std::filesystem::is_directory("/dev/shm", error)
                                               ? std::filesystem::path("/dev/shm")
                                               : std::filesystem::temp_directory_path();
        std::string pattern = (base / "tolva2-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) std::abort();
        path_ = pattern;
    }
    std::string path_;
};

} // namespace tolva::fuzz
