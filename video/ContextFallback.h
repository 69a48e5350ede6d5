#pragma once

#include "video/Context.h"

#include <functional>

namespace Quorvex::Platform::Video {

/// One way to start: makes the context and the first renderer, and raises what goes wrong. It may leave a half-made
/// context behind.
using ContextAttempt = std::function<void(SharedPtr<Context>& context)>;

/// Indexed by RendererTypeEnum.
using ContextAttempts = std::array<ContextAttempt, rendererTypeCount>;

/// Tries the wanted backend and, where that fails, those that stand in for it; the software backend is the last resort
/// and has none. CURRENT is set to each backend before it is tried, so that it tells in the end what is in use.
/// Whatever derives from std::exception makes way for the next; the half-made context is dropped first. A failure of
/// the software attempt goes up to the caller.
void CreateContextWithFallback(RendererTypeEnum wanted, const ContextAttempts& attempts, RendererTypeEnum& current,
                               SharedPtr<Context>& context);

} // namespace Quorvex::Platform::Video
