#pragma once

#include <span>
#include <string_view>

/// The files of the folder report/ and the drawing library, as the build puts them into the
/// program, so that a report needs no file beside it.
namespace results::report {

/// A text in pieces, because compilers bound the length of one literal.
using Asset = std::span<const std::string_view>;

extern const Asset kPage;    ///< The body of the page, without its end.
extern const Asset kStyle;   ///< Its style sheet.
extern const Asset kScript;  ///< Its own scripts.
/// The library of pictures in three dimensions; empty when the build had none, and the page then
/// draws by itself.
extern const Asset kThree;
extern const Asset kThreeLicence;

}  // namespace results::report
