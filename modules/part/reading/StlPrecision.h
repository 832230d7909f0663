#pragma once

#include <array>
#include <string_view>

#include "corvane/part/Model.h"

namespace corvane::part::reading {

/// What the numbers of a text tell of how finely they are written.
class WrittenDigits {
public:
    /// Takes the text of a number that was read.
    void add(std::string_view text, std::size_t axis);

    /// The last place that the text gives the largest numbers of the axis; 0 if it has none.
    [[nodiscard]] double step(std::size_t axis) const;

private:
    struct Axis {
        int decade = kNone;  // of the largest number
        int place = 0;       // the finest last place among numbers of that decade
    };
    static constexpr int kNone = -1000;
    std::array<Axis, 3> axes_;
    int digits_ = 0;      // the most that a number has
    int fraction_ = -1;   // digits after the point of the first number
    bool isEven_ = true;  // all have so many
};

/// How far a vertex of the mesh can be from where its program had it, along all axes together: the
/// file holds its coordinates as floats, or with the digits of the text. `factor` is that by which
/// the mesh is larger than the file.
double precisionOf(const Mesh& mesh, double factor, const WrittenDigits& digits);

}  // namespace corvane::part::reading
