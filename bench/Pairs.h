#pragma once

#include <benchmark/benchmark.h>

#include <string>

/// Two functions of the same work, the program's and its peer's, as table.py knows them.
template <class Ours, class Peers>
void RegisterPair(const std::string& name, const Ours& ours, const Peers& peers) {
    benchmark::RegisterBenchmark((name + "/us").c_str(), ours)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/peer").c_str(), peers)->UseRealTime()->Unit(benchmark::kMillisecond);
}

/// What is left to do in main.
inline void RunRegistered(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
