#include "tests/codecs/JpgReference.h"

#if defined(VARNOLITE_HAS_JPEG)

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <random>

#include <jpeglib.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Failing {
    jpeg_error_mgr manager;
    std::jmp_buf back;
};

[[noreturn]] void Leave(j_common_ptr state) {
    std::longjmp(reinterpret_cast<Failing*>(state->err)->back, 1);
}

Bytes PictureOf(const JpgRecipe& recipe) {
    std::mt19937 random(recipe.seed);
    const auto components = static_cast<std::uint32_t>(recipe.components);
    Bytes samples;
    for (std::uint32_t y = 0; y < recipe.height; ++y)
        for (std::uint32_t x = 0; x < recipe.width; ++x)
            for (std::uint32_t c = 0; c < components; ++c) {
                const double wave = 128 + 100 * std::sin(0.11 * (c + 1) * x + 0.07 * y) * std::cos(0.05 * x * (c + 1));
                const double noise = static_cast<double>(random() % 41) - 20;
                samples.push_back(static_cast<std::uint8_t>(std::clamp(wave + noise, 0.0, 255.0)));
            }
    return samples;
}

/// Scans in the order of the frame: the first component by itself, and the others together or one by one.
void SeparateScans(jpeg_compress_struct& state, JpgScans wanted, std::vector<jpeg_scan_info>& scans) {
    for (int component = 0; component < state.num_components;) {
        jpeg_scan_info scan{};
        scan.comps_in_scan = component != 0 && wanted == JpgScans::LuminanceApart ? state.num_components - 1 : 1;
        for (int i = 0; i < scan.comps_in_scan; ++i)
            scan.component_index[i] = component++;
        scan.Se = 63;
        scans.push_back(scan);
    }
    state.scan_info = scans.data();
    state.num_scans = static_cast<int>(scans.size());
}

} // namespace

bool HasJpgLibrary() {
    return true;
}

Bytes EncodeJpg(const JpgRecipe& recipe) {
    Bytes samples = PictureOf(recipe);
    std::vector<jpeg_scan_info> scans;
    jpeg_compress_struct state{};
    jpeg_error_mgr errors{};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&state, &memory, &size);
    state.image_width = recipe.width;
    state.image_height = recipe.height;
    state.input_components = recipe.components;
    state.in_color_space = recipe.components == 1 ? JCS_GRAYSCALE : recipe.components == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&state);
    if (recipe.isYcck)
        jpeg_set_colorspace(&state, JCS_YCCK);
    if (recipe.isRgb)
        jpeg_set_colorspace(&state, JCS_RGB);
    jpeg_set_quality(&state, recipe.quality, TRUE);
    state.comp_info[0].h_samp_factor = recipe.horizontal;
    state.comp_info[0].v_samp_factor = recipe.vertical;
    if (recipe.isYcck) {
        state.comp_info[3].h_samp_factor = recipe.horizontal;
        state.comp_info[3].v_samp_factor = recipe.vertical;
    }
    state.restart_interval = recipe.restartInterval;
    if (recipe.isProgressive)
        jpeg_simple_progression(&state);
    else if (recipe.scans != JpgScans::Interleaved)
        SeparateScans(state, recipe.scans, scans);
    jpeg_start_compress(&state, TRUE);
    for (JSAMPROW row = samples.data(); state.next_scanline < recipe.height;
         row += std::size_t(recipe.width) * static_cast<unsigned>(recipe.components))
        jpeg_write_scanlines(&state, &row, 1);
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    Bytes file(memory, memory + size);
    std::free(memory);
    return file;
}

Bytes DecodeJpgByLibrary(const Bytes& file) {
    jpeg_decompress_struct state{};
    Failing errors{};
    state.err = jpeg_std_error(&errors.manager);
    errors.manager.error_exit = Leave;
    errors.manager.output_message = [](j_common_ptr) {};
    Bytes samples;
    jpeg_create_decompress(&state);
    if (setjmp(errors.back) != 0) {
        jpeg_destroy_decompress(&state);
        return {};
    }
    jpeg_mem_src(&state, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&state, TRUE);
    state.out_color_space = state.num_components == 4 ? state.jpeg_color_space : JCS_EXT_BGR;
    state.dct_method = JDCT_ISLOW;
    state.do_fancy_upsampling = FALSE;
    state.do_block_smoothing = FALSE;
    jpeg_start_decompress(&state);
    const std::size_t rowBytes = std::size_t(state.output_width) * static_cast<unsigned>(state.output_components);
    samples.resize(rowBytes * state.output_height);
    while (state.output_scanline < state.output_height) {
        JSAMPROW row = samples.data() + rowBytes * state.output_scanline;
        jpeg_read_scanlines(&state, &row, 1);
    }
    jpeg_finish_decompress(&state);
    jpeg_destroy_decompress(&state);
    return samples;
}

#else

bool HasJpgLibrary() {
    return false;
}

std::vector<std::uint8_t> EncodeJpg(const JpgRecipe&) {
    return {};
}

std::vector<std::uint8_t> DecodeJpgByLibrary(const std::vector<std::uint8_t>&) {
    return {};
}

#endif
