#include "video/software/kernels/FilterRows.h"

#if defined(__x86_64__)

#include "video/software/kernels/LanesAvx2.inl"

#define LANES_SET Avx2FilterRows
#include "video/software/kernels/FilterRows.inl"

#endif
