#pragma once

#include "settings/PropertyWalker.h"
#include "settings/ValueText.h"

/// Writes what it visits: "name:type=value ", and "name{ " and "}name " around a composite.
class RecordingWalker final : public Quorvex::PropertyWalker {
public:
    void Visit(const std::string& name, bool value) override { Add(name, "bool", value); }
    void Visit(const std::string& name, std::int16_t value) override { Add(name, "int16", value); }
    void Visit(const std::string& name, std::int32_t value) override { Add(name, "int32", value); }
    void Visit(const std::string& name, std::int64_t value) override { Add(name, "int64", value); }
    void Visit(const std::string& name, std::uint8_t value) override { Add(name, "uint8", value); }
    void Visit(const std::string& name, std::uint16_t value) override { Add(name, "uint16", value); }
    void Visit(const std::string& name, std::uint32_t value) override { Add(name, "uint32", value); }
    void Visit(const std::string& name, Quorvex::FixedPoint230 value) override { Add(name, "fixed", value); }
    void BeginComposite(const std::string& name) override { text += name + "{ "; }
    void EndComposite(const std::string& name) override { text += "}" + name + " "; }

    std::string text;

private:
    template <class T>
    void Add(const std::string& name, const char* type, T value) {
        text += name + ":" + type + "=" + Quorvex::ValueText<T>::ToText(value).ToStdString() + " ";
    }
};
