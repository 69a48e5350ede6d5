#pragma once

#include "foundation/Function.h"
#include "settings/CompositeOfProperties.h"
#include "settings/ValueText.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <typeinfo>

namespace Quorvex {

/// A named value in a composite, which it registers itself in at construction: it must be a field of an object that
/// lives as long as the composite. Raises Exception "Property: composite is nullptr" without one, and
/// std::invalid_argument "key already exists" where the composite has the name already. T needs a ValueText.
template <class T>
class Property {
public:
    using ValueType = T;

    Property(std::string name, CompositeOfProperties* composite);
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    /// Takes the next sizeof(T) bytes of the stream, little-endian. Raises Exception for a type without a binary form.
    virtual void LoadValueFromStream(Stream& stream) = 0;
    /// Hands name and value to the walker. Raises Exception for a type that no walker visits.
    virtual void Walk(PropertyWalker& walker) const = 0;
    virtual const T& Get() const = 0;
    /// Tells the classes of properties apart; the same as ClassType of the class.
    virtual const std::type_info& Type() const = 0;
    virtual void Set(const T& value) = 0;
    virtual const String& GetDescription() const;
    virtual ~Property() = default;

    operator const T&() const { return Get(); }
    const std::string& GetName() const { return m_name; }

protected:
    std::string m_name;
};

namespace Internal {

/// One value from its little-endian bytes.
template <class T>
T ReadValue(Stream& stream) {
    if constexpr (std::same_as<T, bool>) {
        return ReadValue<std::uint8_t>(stream) != 0;
    } else if constexpr (WalkableValue<T>) {
        static_assert(std::endian::native == std::endian::little);
        T value{};
        stream.read(&value, sizeof(T));
        return value;
    } else {
        throw Exception(__LINE__, "LoadValueFromStream");
    }
}

template <class T>
void VisitValue(PropertyWalker& walker, const std::string& name, const T& value) {
    if constexpr (WalkableValue<T>)
        walker.Visit(name, value);
    else
        throw Exception(__LINE__, "Walk");
}

} // namespace Internal

/// Has a value at all times: a setting with its default.
template <class T>
class InitializedProperty : public Property<T> {
public:
    InitializedProperty(std::string name, CompositeOfProperties* composite, const T& value)
        : Property<T>(std::move(name), composite), m_value(value) {}

    void LoadValueFromStream(Stream& stream) override { Set(Internal::ReadValue<T>(stream)); }
    void Walk(PropertyWalker& walker) const override { Internal::VisitValue(walker, this->m_name, m_value); }
    const T& Get() const override { return m_value; }
    const std::type_info& Type() const override { return ClassType(); }
    void Set(const T& value) override { m_value = value; }

    static const std::type_info& ClassType() { return typeid(InitializedProperty); }

private:
    T m_value;
};

/// Has no value before it is read from a stream or set: a field of a file header. A field that was never read, because
/// the file's header is too short to hold it, is passed over by a walker; Get and the conversion raise Exception.
template <class T>
class UninitializedProperty : public Property<T> {
public:
    using Property<T>::Property;

    void LoadValueFromStream(Stream& stream) override { Set(Internal::ReadValue<T>(stream)); }
    void Walk(PropertyWalker& walker) const override {
        if (m_known)
            Internal::VisitValue(walker, this->m_name, m_value);
    }
    const T& Get() const override {
        if (!m_known)
            throw Exception(__LINE__, "UninitializedProperty::operator ValueType ()");
        return m_value;
    }
    const std::type_info& Type() const override { return ClassType(); }
    void Set(const T& value) override {
        m_value = value;
        m_known = true;
    }

    bool IsKnown() const { return m_known; }
    static const std::type_info& ClassType() { return typeid(UninitializedProperty); }

private:
    bool m_known = false;
    T m_value{};
};

/// A header field that explains itself to the reader of the tree.
template <class T>
class UninitializedPropertyWithDescription : public UninitializedProperty<T> {
public:
    UninitializedPropertyWithDescription(std::string name, CompositeOfProperties* composite, String description)
        : UninitializedProperty<T>(std::move(name), composite), m_description(std::move(description)) {}

    const std::type_info& Type() const override { return ClassType(); }
    const String& GetDescription() const override { return m_description; }

    static const std::type_info& ClassType() { return typeid(UninitializedPropertyWithDescription); }

private:
    String m_description;
};

/// A setting that tells one listener of every value it is given, whether it differs or not. Unbound it only stores.
template <class T>
class PropertyWithNotification : public InitializedProperty<T> {
public:
    using InitializedProperty<T>::InitializedProperty;

    const std::type_info& Type() const override { return ClassType(); }
    void Set(const T& value) override {
        InitializedProperty<T>::Set(value);
        if (Notification)
            Notification(this->Get());
    }
    /// Copies name and value, and notifies. The composite keeps the entry under the key of its registration.
    virtual void Assign(const Property<T>& other) {
        this->m_name = other.GetName();
        Set(other.Get());
    }

    static const std::type_info& ClassType() { return typeid(PropertyWithNotification); }

    Function<const T&> Notification;
};

/// The entry of a property; the property is a field beside the composite's list.
template <class T>
class CompositeOfProperties::PropertyAndName final : public AbstractInfo {
public:
    PropertyAndName(std::string name, Property<T>& property) : m_name(std::move(name)), m_property(property) {}

    const std::string& GetName() const override { return m_name; }
    bool IsComposite() const override { return false; }
    void LoadValueFromStream(Stream& stream) override { m_property.LoadValueFromStream(stream); }
    void Walk(PropertyWalker& walker) const override { m_property.Walk(walker); }
    void Write(PropertyWriter& writer) const override { writer.Write(m_name, ToString()); }
    void Read(PropertyReader& reader) override { m_property.Set(ValueText<T>::FromText(reader.ReadString(m_name))); }
    String ToString() const override { return ValueText<T>::ToText(m_property.Get()); }
    const String& GetDescription() const override { return m_property.GetDescription(); }

private:
    std::string m_name;
    Property<T>& m_property;
};

template <class T>
Property<T>::Property(std::string name, CompositeOfProperties* composite) : m_name(std::move(name)) {
    if (composite == nullptr)
        throw Exception("Property: composite is nullptr");
    using Entry = CompositeOfProperties::PropertyAndName<T>;
    composite->add(SharedPtr<CompositeOfProperties::AbstractInfo>(new Entry(m_name, *this)));
}

template <class T>
const String& Property<T>::GetDescription() const {
    static const String none;
    return none;
}

} // namespace Quorvex
