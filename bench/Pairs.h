#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

/// Two functions of the same work, the program's and its peer's, as table.py knows them.
template <class Ours, class Peers>
void RegisterPair(const std::string& name, const Ours& ours, const Peers& peers) {
    benchmark::RegisterBenchmark((name + "/us").c_str(), ours)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/peer").c_str(), peers)->UseRealTime()->Unit(benchmark::kMillisecond);
}

/// A pair for each recipe, which has a name; the functions take its index.
template <class Recipe, std::size_t count, class Ours, class Peers>
void RegisterPairs(const Recipe (&recipes)[count], const Ours& ours, const Peers& peers) {
    for (std::size_t i = 0; i < count; ++i)
        RegisterPair(
            recipes[i].name, [i, ours](benchmark::State& state) { ours(state, i); },
            [i, peers](benchmark::State& state) { peers(state, i); });
}

/// What is left to do in main.
inline void RunRegistered(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
