# Compiler settings that hold for every target.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

set(VARNOLITE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them")

add_library(varnolite_options INTERFACE)
target_include_directories(varnolite_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(varnolite_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    # Pixel values are a promise: no fused multiply-add may change a rounding between two builds of one formula.
    -ffp-contract=off)
if(VARNOLITE_SANITIZE)
    target_compile_options(varnolite_options INTERFACE
        -fsanitize=${VARNOLITE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(varnolite_options INTERFACE -fsanitize=${VARNOLITE_SANITIZE})
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # x87 registers keep 80 bits and would round differently from the 64-bit program. Threads of Windows begin on stacks
    # that are aligned to 4 bytes, where vectors need 16.
    target_compile_options(varnolite_options INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()
if(WIN32)
    target_compile_definitions(varnolite_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
    target_link_options(varnolite_options INTERFACE -static)
    # Stacks on Windows are aligned to 16 bytes, but GCC stores vectors of 32 bytes there as if it were 32 (GCC bug
    # 54412). The assembler turns such moves into ones that need no alignment.
    set_source_files_properties(${CMAKE_SOURCE_DIR}/video/software/kernels/FilterRowsAvx2.cpp
        ${CMAKE_SOURCE_DIR}/codecs/jpg/kernels/FormsAvx2.cpp PROPERTIES
        COMPILE_OPTIONS -Wa,-muse-unaligned-vector-move)
else()
    find_package(Threads REQUIRED)
    target_link_libraries(varnolite_options INTERFACE Threads::Threads)
endif()
