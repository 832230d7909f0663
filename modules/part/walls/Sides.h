#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "corvane/part/Model.h"

namespace corvane::part::walls {

/// The sides of triangles, with those at the same place together, whether or not they share their
/// vertices: the faces of an exact shape do not, and some programs write meshes with rounded ones.
class Sides {
public:
    struct Side {
        std::uint32_t a, b;  ///< vertices that represent all at their places
        std::uint32_t triangle;
    };

    /// Of those triangles; vertices nearer than a part of `size` are at the same place.
    Sides(const Mesh& mesh, const std::vector<std::uint32_t>& triangles, double size);

    /// Calls `use` with the first and the end of each run of sides at one place.
    template <typename Use>
    void each(Use use) const {
        for (auto it = sides_.begin(); it != sides_.end();) {
            const auto end = std::find_if(
                it, sides_.end(), [&](const Side& s) { return s.a != it->a || s.b != it->b; });
            use(it, end);
            it = end;
        }
    }

private:
    std::vector<Side> sides_;
};

}  // namespace corvane::part::walls
