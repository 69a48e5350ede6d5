#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Pictures of other people's making, good and broken ones, which lie outside of the project. The variable
/// VARNOLITE_CORPUS names their folder; the file INDEX.tsv in it lists them.
namespace Corpus {

struct File {
    std::string path; ///< From the root of the corpus.
    bool isValid = false;
    std::vector<std::string> references; ///< File names in the folder "ref" beside the file.
};

/// Empty where there is none.
std::filesystem::path Root();
/// All of a format, "bmp" for instance.
std::vector<File> Files(const std::string& format);
std::vector<std::uint8_t> Content(const std::string& path);

} // namespace Corpus
