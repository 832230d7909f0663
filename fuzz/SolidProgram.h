#pragma once

#include <TopoDS_Shape.hxx>
#include <string_view>

namespace fuzz {

/// The solid that a program of one command a line makes; null if it makes none. A command is a word
/// and its numbers, of which any may be missing or senseless. What the kernel refuses to make is
/// passed over.
///
///     box X Y Z [AT]              a block, joined to what is there
///     cut X Y Z [AT]              a block, taken away
///     turn DEPTH RADIUS ...       a profile around the axis, joined
///     hole X Y DEPTH RADIUS ...   a profile downwards from there at the top, taken away
///     bore X Y Z DX DY DZ R L     a cylinder in any direction, taken away
///     pin X Y Z DX DY DZ R L      the same, joined
///     ball X Y Z R                taken away
///     pocket X Y W L DEPTH CORNER FLOOR
///     bend T RADIUS ANGLE WIDTH FLAT
///     wall T N                    hollow, with the face N open
///     fillet R N [R2]             of the edge N
///     chamfer D N
///     scale S / rotate X Y Z ANGLE / mirror / beside DISTANCE
///     drilled N, milled N, machined N, shaft N, strip N, cup N: a known part of that seed
TopoDS_Shape solidOf(std::string_view program);

}  // namespace fuzz
