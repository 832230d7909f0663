#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "corvane/part/Model.h"

#include "Curves.h"

namespace corvane::part::features {

/// The model with what all features ask of it. Tolerances grow with the part, so that a scaled part
/// gives scaled features.
class Topology {
public:
    explicit Topology(const Model& model);

    /// Whether there is a part of finite size to look at.
    [[nodiscard]] bool usable() const { return size_ > 0.0; }
    [[nodiscard]] const Model& model() const { return model_; }
    [[nodiscard]] double size() const { return size_; }    ///< the diagonal of its box
    [[nodiscard]] double near() const { return near_; }    ///< lengths closer than this are equal
    [[nodiscard]] double slack() const { return slack_; }  ///< so are angles, in degrees
    [[nodiscard]] Vector centre() const { return centre_; }

    /// The edges of the face, each once, seams left out.
    [[nodiscard]] const std::vector<int>& edgesOf(int face) const {
        return edges_[static_cast<std::size_t>(face - 1)];
    }
    /// The face on the other side of the edge; 0 if there is none.
    [[nodiscard]] int across(int edge, int face) const;
    /// Whether the face's numbers are finite and its sizes make sense.
    [[nodiscard]] bool sound(int face) const { return sound_[static_cast<std::size_t>(face - 1)]; }
    [[nodiscard]] bool parallel(const Vector& a, const Vector& b) const;
    /// Whether the axis of the surface is the line; of a sphere, whether the centre is on it.
    [[nodiscard]] bool onAxis(const Surface& surface, const Vector& origin,
                              const Vector& axis) const;
    [[nodiscard]] Range rangeOf(int face, const Vector& direction) const;
    /// Degrees of a circle around the axis that the faces cover together.
    [[nodiscard]] double turnOf(const std::vector<int>& faces, const Vector& origin,
                                const Vector& axis) const;

private:
    const Model& model_;
    double size_ = 0.0, near_ = 0.0, slack_ = 0.0;
    Vector centre_;
    std::vector<std::vector<int>> edges_;
    std::vector<bool> sound_;
};

/// A side of the part. Faces of one plane that border on each other, as the joining of two bodies
/// leaves them, are one side: the seam between them is nowhere on the finished part.
struct Side {
    std::vector<int> faces;
    std::vector<int> border;  ///< edges of the outer borders, seams left out
};

class Sides {
public:
    explicit Sides(const Topology& topology);
    [[nodiscard]] const Side& of(int face) const {
        return sides_[sideOf_[static_cast<std::size_t>(face - 1)]];
    }

private:
    std::vector<std::size_t> sideOf_;
    std::vector<Side> sides_;
};

/// The lines that are axes of round faces, each with a number.
class Axes {
public:
    explicit Axes(const Topology& topology);
    /// For each face the number of its axis; -1 for faces without one.
    [[nodiscard]] int of(int face) const { return axisOf_[static_cast<std::size_t>(face - 1)]; }
    [[nodiscard]] std::size_t count() const { return count_; }

private:
    std::vector<int> axisOf_;
    std::size_t count_ = 0;
};

}  // namespace corvane::part::features
