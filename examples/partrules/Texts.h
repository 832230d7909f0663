#pragma once

#include <corvane/app/StringTable.h>
#include <corvane/base/Types.h>

namespace partrules {

// Numbers of the parameters. They stand in rule files, so they never change.
inline constexpr QorLong kLargestSize = 5001;
inline constexpr QorLong kMayBeTurned = 5002;
inline constexpr QorLong kThinnestWall = 5011;
inline constexpr QorLong kMaterial = 5012;
inline constexpr QorLong kLargestMass = 5021;
inline constexpr QorLong kDensities = 5022;

/// The names of the parameters by their numbers.
extern const corvane::StringTable kTexts;

}  // namespace partrules
