#pragma once

#include "foundation/String.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace Quorvex::Test {

/// A folder of its own for one test, empty at first and gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            m_path = std::filesystem::temp_directory_path() / ("varnolite-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& Path() const { return m_path; }
    /// The path of a name in the folder, as the program's own operations take it.
    String PathOf(const std::string& name) const { return TextOf(m_path / name); }

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(m_path / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    bool Has(const std::string& name) const { return std::filesystem::exists(m_path / name); }

    static String TextOf(const std::filesystem::path& path) { return String(path.u16string().c_str()); }

private:
    std::filesystem::path m_path;
};

} // namespace Quorvex::Test
