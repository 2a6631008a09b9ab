#include "runtime/component.h"

#include <map>

#include "runtime/headless/peer.h"
#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

const char* NameOf(PropertyId id) {
    static const std::map<PropertyId, const char*> names{
        {PropertyId::kCaption, "Caption"},
        {PropertyId::kText, "Text"},
        {PropertyId::kVisible, "Visible"},
        {PropertyId::kEnabled, "Enabled"},
        {PropertyId::kValue, "Value"},
        {PropertyId::kMin, "Min"},
        {PropertyId::kMax, "Max"},
        {PropertyId::kBackColor, "BackColor"},
        {PropertyId::kForeColor, "ForeColor"},
        {PropertyId::kBackStyle, "BackStyle"},
        {PropertyId::kFontSize, "FontSize"},
        {PropertyId::kInterval, "Interval"},
        {PropertyId::kAutoPlay, "AutoPlay"},
        {PropertyId::kMousePointer, "MousePointer"}};
    return names.at(id);
}

struct ValueText {
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(std::string_view value) const { return headless::Quoted(value); }
};

}  // namespace

void PeerDeleter::operator()(Peer* peer) const { delete peer; }

void Component::PropertySet(PropertyId id, const PropertyValue& value, bool changed) {
    headless::World& world = headless::TheWorld();
    if (id == PropertyId::kTaskbarProgress) {
        if (changed) {
            world.taskbar.push_back(std::get<std::int32_t>(value));
        }
        return;
    }
    world.trace.Add(name_ + "." + NameOf(id) + " = " + std::visit(ValueText(), value));
    if (kind_ == ComponentKind::kTimer && changed) {
        world.TimerChanged(static_cast<Timer&>(*this));
    }
}

}  // namespace swiftpatch
