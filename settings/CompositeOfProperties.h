#pragma once

#include "data/Stream.h"
#include "foundation/SharedPtr.h"
#include "settings/PropertyReader.h"
#include "settings/PropertyWalker.h"
#include "settings/PropertyWriter.h"

#include <string>
#include <vector>

namespace Quorvex {

/// Named, typed values in the order of their declaration: the settings of the program, or the fields of a file header.
/// Properties are fields of a derived class and register themselves; a nested composite is a field in the same way, or
/// is added as an owned object. Settings belong to the GUI thread; a header is filled by the worker of its load and
/// only read after that has been joined.
class CompositeOfProperties {
public:
    class AbstractInfo;
    class AbstractCompositeInfo;
    class CompositeAndName;
    template <class T>
    class PropertyAndName;

    explicit CompositeOfProperties(std::string name = std::string(), String description = String());
    /// A nested composite, registered in its owner, whose field it is. A null owner raises Exception "Property:
    /// composite is nullptr".
    CompositeOfProperties(std::string name, CompositeOfProperties* owner, String description = String());
    // Entries point to the fields of this very object.
    CompositeOfProperties(const CompositeOfProperties&) = delete;
    CompositeOfProperties& operator=(const CompositeOfProperties&) = delete;

    /// Begin, each entry in order, end.
    virtual void Walk(PropertyWalker& walker) const;
    /// Reads each entry in order: a file header is read by declaring its fields in file order.
    virtual void LoadValueFromStream(Stream& stream);
    virtual ~CompositeOfProperties();

    /// Appends the entry. Raises std::invalid_argument "key already exists" for a name that is there already.
    void add(SharedPtr<AbstractInfo> entry);
    /// Nests a composite under its own name and keeps it alive. Null raises as for a null owner.
    void add(SharedPtr<CompositeOfProperties> composite);

    /// Each entry in order. The texts of nested composites go straight into the same sequence. Reading stops at the
    /// first failure and leaves the values read before it.
    void Write(PropertyWriter& writer) const;
    void Read(PropertyReader& reader);

    const std::string& GetName() const { return m_name; }
    /// A text for the reader of the header, in English with simple markup; may be empty.
    const String& GetDescription() const { return m_description; }
    const std::vector<SharedPtr<AbstractInfo>>& GetEntries() const { return m_entries; }

private:
    std::string m_name;
    std::vector<SharedPtr<AbstractInfo>> m_entries;
    String m_description;
};

/// One entry of a composite.
class CompositeOfProperties::AbstractInfo {
public:
    virtual const std::string& GetName() const = 0;
    virtual bool IsComposite() const = 0;
    virtual void LoadValueFromStream(Stream& stream) = 0;
    virtual void Walk(PropertyWalker& walker) const = 0;
    virtual void Write(PropertyWriter& writer) const = 0;
    virtual void Read(PropertyReader& reader) = 0;
    /// The value as text; empty for a composite.
    virtual String ToString() const = 0;
    virtual const String& GetDescription() const = 0;
    virtual ~AbstractInfo() = default;
};

class CompositeOfProperties::AbstractCompositeInfo : public AbstractInfo {
public:
    bool IsComposite() const final { return true; }
    String ToString() const final { return String(); }
    virtual const CompositeOfProperties& GetComposite() const = 0;
};

class CompositeOfProperties::CompositeAndName final : public AbstractCompositeInfo {
public:
    /// A composite that is a field beside the entry's list and lives as long.
    explicit CompositeAndName(CompositeOfProperties& field) : m_composite(field) {}
    explicit CompositeAndName(SharedPtr<CompositeOfProperties> owned)
        : m_composite(*owned), m_owned(std::move(owned)) {}

    const std::string& GetName() const override { return m_composite.GetName(); }
    void LoadValueFromStream(Stream& stream) override { m_composite.LoadValueFromStream(stream); }
    void Walk(PropertyWalker& walker) const override { m_composite.Walk(walker); }
    void Write(PropertyWriter& writer) const override { m_composite.Write(writer); }
    void Read(PropertyReader& reader) override { m_composite.Read(reader); }
    const String& GetDescription() const override { return m_composite.GetDescription(); }
    const CompositeOfProperties& GetComposite() const override { return m_composite; }

private:
    CompositeOfProperties& m_composite;
    SharedPtr<CompositeOfProperties> m_owned;
};

} // namespace Quorvex
