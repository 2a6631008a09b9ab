#include "runtime/component.h"

#include "runtime/console/attendance.h"

namespace swiftpatch {

/// No component has a side of the platform here: its values are all that there is of it.
void PeerDeleter::operator()(Peer* /*peer*/) const {}

void Component::PropertySet(PropertyId id, const PropertyValue& /*value*/, bool changed) {
    if (changed) {
        TheAttendant().Saw(*this, id);
    }
}

}  // namespace swiftpatch
