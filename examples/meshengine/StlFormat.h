#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Mesh.h"

namespace meshengine {

/// Three corners for each triangle, or nothing and the reason in `error`.
using Corners = std::optional<std::vector<Vector>>;

/// True when the length of the file is the one that its triangle count asks for.
bool isBinaryStl(std::string_view bytes);

/// The two forms of the file. Binary bytes have passed isBinaryStl.
Corners parseBinaryStl(std::string_view bytes, std::string& error);
Corners parseTextStl(std::string_view text, std::string& error);

/// True for a coordinate that the measures can work with.
bool usableCoordinates(const Vector& corner);

}  // namespace meshengine
