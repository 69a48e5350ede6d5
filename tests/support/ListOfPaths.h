#pragma once

#include "app/FileList.h"
#include "foundation/Exception.h"

#include <utility>
#include <vector>

namespace Quorvex::App {

/// Steps through paths that the test gives, and writes down whether it was asked to look only.
class ListOfPaths final : public FileList {
public:
    explicit ListOfPaths(std::vector<String> files, int start = 0) : paths(std::move(files)), current(start) {}

    String Step(int direction, bool preview) override {
        previews.push_back(preview);
        if (failing == direction)
            throw Exception("FileList", 1u);
        const auto count = static_cast<int>(paths.size());
        const int next = (current + direction + count) % count;
        if (!preview)
            current = next;
        return paths[static_cast<std::size_t>(next)];
    }

    std::vector<String> paths;
    std::vector<bool> previews;
    int current;
    int failing = 0; ///< The direction in which no file is left.
};

} // namespace Quorvex::App
