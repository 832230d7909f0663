#pragma once

#include <memory>
#include <string>

#include "Mesh.h"

namespace meshengine {

/// The mesh of a part's file, or null and the reason in `error`; see readMesh.
///
/// The rules of a run measure one part after another, so the part that was read last is kept and
/// given again while its file has the same size and time. A file that was written in the last two
/// seconds is read anew each time, since its time proves nothing yet. Any thread may call.
std::shared_ptr<const Mesh> readPart(const std::string& path, std::string& error);

}  // namespace meshengine
