#include "settings/CompositeOfProperties.h"

#include "foundation/Exception.h"

#include <stdexcept>

namespace Quorvex {

CompositeOfProperties::CompositeOfProperties(std::string name, String description)
    : m_name(std::move(name)), m_description(std::move(description)) {}

CompositeOfProperties::CompositeOfProperties(std::string name, CompositeOfProperties* owner, String description)
    : CompositeOfProperties(std::move(name), std::move(description)) {
    if (owner == nullptr)
        throw Exception("Property: composite is nullptr");
    owner->add(SharedPtr<AbstractInfo>(new CompositeAndName(*this)));
}

CompositeOfProperties::~CompositeOfProperties() = default;

void CompositeOfProperties::Walk(PropertyWalker& walker) const {
    walker.BeginComposite(m_name);
    for (const auto& entry : m_entries)
        entry->Walk(walker);
    walker.EndComposite(m_name);
}

void CompositeOfProperties::LoadValueFromStream(Stream& stream) {
    for (const auto& entry : m_entries)
        entry->LoadValueFromStream(stream);
}

void CompositeOfProperties::add(SharedPtr<AbstractInfo> entry) {
    for (const auto& present : m_entries)
        if (present->GetName() == entry->GetName())
            throw std::invalid_argument("key already exists");
    m_entries.push_back(std::move(entry));
}

void CompositeOfProperties::add(SharedPtr<CompositeOfProperties> composite) {
    if (!composite)
        throw Exception("Property: composite is nullptr");
    add(SharedPtr<AbstractInfo>(new CompositeAndName(std::move(composite))));
}

void CompositeOfProperties::Write(PropertyWriter& writer) const {
    for (const auto& entry : m_entries)
        entry->Write(writer);
}

void CompositeOfProperties::Read(PropertyReader& reader) {
    for (const auto& entry : m_entries)
        entry->Read(reader);
}

} // namespace Quorvex
