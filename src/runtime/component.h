#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace swiftpatch {

/// What a component is; decides the platform's way of showing it.
enum class ComponentKind {
    kForm,
    kTimer,
    kLabel,
    kTextBox,
    kCommandButton,
    kCheckBox,
    kProgressBar,
    kFrame,
    kAnimation,
    kListView,
    kImage,
};

/// The properties that can be set while the program runs.
enum class PropertyId {
    kCaption,
    kText,
    kVisible,
    kEnabled,
    kValue,
    kMin,
    kMax,
    kBackColor,
    kForeColor,
    kBackStyle,
    kFontSize,
    kInterval,
    kAutoPlay,
    kMousePointer,
    kTaskbarProgress,
};

/// A property's value as it is handed to the platform. Colours are 0x00BBGGRR or 0x80000000
/// plus a system colour index; enumerations are handed over as their number.
using PropertyValue = std::variant<bool, std::int32_t, std::string_view>;

/// The platform's side of a component; each platform defines its own.
struct Peer;
struct PeerDeleter {
    void operator()(Peer* peer) const;
};

/// Anything with a name, properties and a platform side: forms, controls, timers.
class Component {
public:
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    ComponentKind Kind() const { return kind_; }
    /// The name as written in code, e.g. "cmdInstall" or "lblMain(0)".
    const std::string& Name() const { return name_; }

    /// Tells the platform that a property was set. Defined by the platform; costs nothing there
    /// when `changed` is false. Does not pump.
    void PropertySet(PropertyId id, const PropertyValue& value, bool changed);

    /// The platform's side; null while the component has none.
    Peer* peer() const { return peer_.get(); }
    void AttachPeer(Peer* peer) { peer_.reset(peer); }

protected:
    Component(ComponentKind kind, std::string name) : kind_(kind), name_(std::move(name)) {}
    ~Component() = default;

private:
    ComponentKind kind_;
    std::string name_;
    std::unique_ptr<Peer, PeerDeleter> peer_;
};

/// A property of a component: keeps its value itself and tells the platform what was set.
template <class T>
class Property {
public:
    Property(Component& owner, PropertyId id, T initial)
        : owner_(owner), id_(id), value_(std::move(initial)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    /// A text is only copied when it is another one: some are set for every piece of a download.
    using Argument = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, T>;

    Property& operator=(Argument value) {
        const bool changed = !(value == value_);
        if (changed) {
            value_ = value;
        }
        owner_.PropertySet(id_, View(), changed);
        return *this;
    }

    operator const T&() const { return value_; }
    const T& Get() const { return value_; }

    /// Sets the design-time value: what the component has before the program's first line.
    void Design(T value) { value_ = std::move(value); }

    friend bool operator==(const Property& property, const T& value) {
        return property.value_ == value;
    }

private:
    PropertyValue View() const {
        if constexpr (std::is_same_v<T, bool>) {
            return value_;
        } else if constexpr (std::is_same_v<T, std::string>) {
            return std::string_view(value_);
        } else {
            return static_cast<std::int32_t>(value_);
        }
    }

    Component& owner_;
    PropertyId id_;
    T value_;
};

}  // namespace swiftpatch
