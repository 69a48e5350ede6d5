#pragma once

#include "settings/Property.h"

namespace ET::Img {

struct NormalHeader;

/// One generation of the info header. Its first field is its own size in bytes, which tells the generations apart and
/// is known before the header is made.
class InfoHeader : public Quorvex::CompositeOfProperties {
public:
    using CompositeOfProperties::CompositeOfProperties;

    virtual void StoreSize(std::uint32_t sizeBytes) = 0;
    /// Reads the fields behind the size in file order.
    virtual void LoadRemaining(Quorvex::Stream& stream);
    /// Copies what the header has into the form that the decoder works with; the rest stays as it is there.
    virtual void CopyTo(NormalHeader& normal) const = 0;
};

/// The header class that a size in bytes asks for, with the size stored. Raises Exception with empty text for a size
/// that no generation has. The size alone decides: where two families share one, the Windows header wins.
Quorvex::SharedPtr<InfoHeader> CreateInfoHeader(std::uint32_t sizeBytes);

} // namespace ET::Img
