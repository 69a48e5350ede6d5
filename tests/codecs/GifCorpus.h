#pragma once

#include "tests/codecs/Corpus.h"

#include <gtest/gtest.h>

/// Tests on the shared GIF files.
class GifCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(Corpus::Files("gif").empty()) << Corpus::Root();
    }
};

/// How the frames of a file come out here: "decodes", or what is wrong.
std::string GifOutcome(const std::vector<std::uint8_t>& file);
