#pragma once

#include "Claims.h"

namespace corvane::part::facets {

/// Gives the strips that are on no round surface to flat faces and to freeform ones.
void claimRest(Claims& claims);

}  // namespace corvane::part::facets
