#include "foundation/platform/Files.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

namespace Quorvex {

void CreateDirectoryIfMissing(const String& path) {
    const auto failure = Platform::TryCreateDirectory(path);
    if (!failure)
        return;
    ReportFailure(__LINE__, failure->name, failure->code);
    throw Exception();
}

namespace Platform {

String JoinPath(const String& folder, const String& name) {
    // Only the last unit matters, and a separator is ASCII in every encoding.
    const std::string narrow = folder.ToANSI().ToStdString();
    const bool isSeparated = narrow.ends_with(GetPathSeparator());
    return isSeparated || narrow.empty() ? folder + name : folder + GetPathSeparator() + name;
}

} // namespace Platform

} // namespace Quorvex
