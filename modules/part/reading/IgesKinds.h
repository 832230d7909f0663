#pragma once

#include <XSControl_WorkSession.hxx>
#include <map>
#include <string>

#include "Bodies.h"

namespace corvane::part::reading {

/// What of an IGES file the kernel does not know or cannot turn into a shape.
class IgesKinds {
public:
    explicit IgesKinds(Handle(XSControl_WorkSession) session);

    /// Why the kernel must not try: it takes for granted that the topology of a solid is whole, and
    /// leaves out a placement of an unknown kind. Empty if it can.
    [[nodiscard]] std::string fault() const;

    /// Adds to the bodies what the file has and they have not. After the transfer.
    void tell(Bodies& bodies) const;

private:
    Handle(XSControl_WorkSession) session_;
    std::map<std::string, std::size_t> unknown_;  // how many entities are of each unknown type
};

}  // namespace corvane::part::reading
