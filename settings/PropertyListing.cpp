#include "settings/PropertyListing.h"

#include "settings/ValueText.h"

namespace Quorvex {

namespace {

class ListingWalker final : public PropertyWalker {
public:
    void Visit(const std::string& name, bool value) override { Append(name, value); }
    void Visit(const std::string& name, std::int16_t value) override { Append(name, value); }
    void Visit(const std::string& name, std::int32_t value) override { Append(name, value); }
    void Visit(const std::string& name, std::int64_t value) override { Append(name, value); }
    void Visit(const std::string& name, std::uint8_t value) override { Append(name, value); }
    void Visit(const std::string& name, std::uint16_t value) override { Append(name, value); }
    void Visit(const std::string& name, std::uint32_t value) override { Append(name, value); }
    void Visit(const std::string& name, FixedPoint230 value) override { Append(name, value); }

    void BeginComposite(const std::string& name) override {
        m_prefixLengths.push_back(m_prefix.size());
        // The composite that is listed itself has no place in the paths.
        if (m_prefixLengths.size() > 1)
            m_prefix += name + "/";
    }
    void EndComposite(const std::string&) override {
        m_prefix.resize(m_prefixLengths.back());
        m_prefixLengths.pop_back();
    }

    std::vector<std::string> lines;

private:
    template <class T>
    void Append(const std::string& name, T value) {
        lines.push_back(m_prefix + name + " = " + ValueText<T>::ToText(value).ToStdString());
    }

    std::string m_prefix;
    std::vector<std::size_t> m_prefixLengths;
};

} // namespace

std::vector<std::string> ListProperties(const CompositeOfProperties& root) {
    ListingWalker walker;
    root.Walk(walker);
    return std::move(walker.lines);
}

} // namespace Quorvex
