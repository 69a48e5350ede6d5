#include "tests/codecs/Corpus.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace Corpus {

std::filesystem::path Root() {
    const char* root = std::getenv("VARNOLITE_CORPUS");
    return root != nullptr ? std::filesystem::path(root) : std::filesystem::path();
}

// Columns: path, format, class, variant, width, height, two other readers, origin, references, remark.
std::vector<File> Files(const std::string& format) {
    std::vector<File> files;
    std::ifstream index(Root() / "INDEX.tsv");
    for (std::string line; std::getline(index, line);) {
        std::vector<std::string> columns;
        std::istringstream split(line);
        for (std::string column; std::getline(split, column, '\t');)
            columns.push_back(column);
        columns.resize(11);
        if (columns[1] != format)
            continue;
        std::istringstream names(columns[9]);
        files.push_back({columns[0], columns[2] == "valid", {std::istream_iterator<std::string>(names), {}}});
    }
    return files;
}

std::vector<std::uint8_t> Content(const std::string& path) {
    std::ifstream file(Root() / path, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
}

} // namespace Corpus
