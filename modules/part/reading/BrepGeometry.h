#pragma once

#include "TextTokens.h"

namespace corvane::part::reading {

/// Passes over one curve, of two or three dimensions, or surface in a BREP text. Spoils the text
/// where the kernel would fail on it: at a wrong number, at a null direction, or at a basis of
/// another curve or surface that the kernel refuses to make and then misses. Gives the parameters
/// of a curve that goes once around, infinite for others.
double passCurve(TextTokens& text, int dimensions);
void passSurface(TextTokens& text);

}  // namespace corvane::part::reading
