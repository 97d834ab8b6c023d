#pragma once
// A fresh folder under the system's temporary folder for one test, removed with all it
// holds when the test ends (read-only files and folders included).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tolva::testing {

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tolva2-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
        path_ = pattern;
    }
    ~TempFolder() {
        std::error_code error;
        for (auto it = std::filesystem::recursive_directory_iterator(path_, error);
             it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
            std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add | std::filesystem::perm_options::nofollow,
                                         error);
        }
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder as a native path, without a closing separator.
    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream out(*this / name, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        ASSERT_TRUE(out.good()) << name;
    }
    std::string Read(const std::string& name) const {
        std::ifstream in(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    // The number of entries in the folder: a write must leave no temporary file behind.
    std::size_t EntryCount() const {
        std::size_t n = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path_)) ++n;
        return n;
    }

private:
    std::string path_;
};

} // namespace tolva::testing
