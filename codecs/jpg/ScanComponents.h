#pragma once

#include "codecs/jpg/BlockDecoding.h"
#include "codecs/jpg/ScanDecoder.h"

#include <vector>

namespace ET::Img::Jpg {

/// A component of a scan as the scan's MCUs hold it.
struct ScanComponent {
    Component* component;
    BlockTables tables;
    std::uint32_t blocksPerMcu;
};

inline std::vector<ScanComponent> ComponentsOf(const ScanContext& context, const ScanHeader& header) {
    std::vector<ScanComponent> components;
    for (std::uint32_t i = 0; i < header.componentCount; ++i) {
        Component& component = context.frame.Of(header.identifiers[i]);
        const BlockTables tables{context.tables.dc[component.dcTable], context.tables.ac[component.acTable],
                                 context.tables.coefficients[component.acTable],
                                 context.tables.quantisation[component.quantisation].data()};
        components.push_back({&component, tables, header.componentCount == 1 ? 1 : component.BlocksPerMcu()});
    }
    return components;
}

} // namespace ET::Img::Jpg
