#pragma once

#include "results/Result.h"

/// The module that reads a part's surface for viewers. It is apart from the program, which
/// starts in a moment and needs no kernel of solids for anything else.
inline constexpr const char16_t* kPartSurfaceModule = u"CorvanePartSurface.dll";

/// The module's export: false when the part cannot be read or has too many triangles for a page.
/// Path and units are UTF-8, as corvane::part::Part::open takes them.
using PartSurfaceFunction = bool (*)(const char* path, const char* units,
                                     results::Geometry& geometry);
inline constexpr const char* kPartSurfaceName = "corvanePartSurface";
