#pragma once

#include <cstddef>

/// While it lives, what the calling thread allocates with new is watched, and arrays and objects of at least
/// failFromBytes raise std::bad_alloc.
class AllocationProbe {
public:
    explicit AllocationProbe(std::size_t failFromBytes = ~std::size_t{0});
    AllocationProbe(const AllocationProbe&) = delete;
    AllocationProbe& operator=(const AllocationProbe&) = delete;
    ~AllocationProbe();

    /// Bytes of the largest array asked for, whether it was given or not.
    std::size_t GetLargest() const;
    /// Arrays asked for.
    std::size_t GetCount() const;
    /// Bytes of all arrays and objects that were given, those that have gone since included.
    std::size_t GetTotal() const;
};
