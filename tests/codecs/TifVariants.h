#pragma once

#include "tests/codecs/TifRecipe.h"

#include <string>

/// A small file whose directory comes first.
struct TifVariant {
    /// What is lost where the bytes of a tile end too early.
    enum class Loss {
        Tile,
        Zeros, ///< The same, but up to two bytes of zeros may be taken for what is missing.
        Rows,  ///< Those that are not there; they are white.
        Image  ///< The tiles are one stream.
    };

    std::string name;
    TifRecipe recipe;
    Loss loss = Loss::Tile;
    std::size_t tableCount = 0; ///< Of the first of the recipe's tiles, which are none: the others need them.
};

/// One for each way in which bytes become pixels: depths, colours and arrangements without compression, and each scheme
/// in strips, tiles and planes.
std::vector<TifVariant> TifVariants();
