// header FILE: prints the fields of a bitmap's headers, one "path = value" a line.

#include "codecs/bmp/BMPDecoder.h"
#include "data/FileStream.h"
#include "settings/PropertyListing.h"
#include "tools/CommandLine.h"

#include <cstdio>

using namespace Quorvex;

namespace {

void PrintHeader(const char* file) {
    ET::Img::BMPDecoder decoder(MakeShared<FileStream>(Tools::PathArgument(file)));
    decoder.GetInfo(0);
    for (const std::string& line : ListProperties(*decoder.GetProperties()))
        std::printf("%s\n", line.c_str());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: header FILE\n");
        return 2;
    }
    return Tools::RunReportingFailure("header", [argv] { PrintHeader(argv[1]); });
}
