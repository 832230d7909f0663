#pragma once

#include <array>
#include <functional>
#include <optional>

#include "Skin.h"

namespace corvane::part::walls {

/// A place of the surface from which something is measured.
struct Sample {
    static constexpr std::uint32_t kNoVertex = 0xffffffffU;
    Vector point, normal;  ///< exact where the surface is known
    std::uint32_t triangle = 0;
    std::uint32_t vertex = kNoVertex;  ///< of the mesh, for the places beside vertices
    double area = 0.0;  ///< that it speaks for; all samples together have the area of the part
};

/// Spreads samples over a part: one beside each vertex in each face, and more inside large facets,
/// as many as the faces are narrow. The same part gives the same samples.
class Samples {
public:
    /// Which vertices have samples beside them. Those of small circles are much nearer together
    /// than samples inside the face; only what asks for the normals at its border needs all.
    enum class Vertices { All, Apart };

    Samples(const Skin& skin, Vertices vertices);
    void each(const std::function<void(const Sample&)>& use) const;

    /// The sample at a point of a facet.
    [[nodiscard]] Sample at(std::uint32_t triangle, const Vector& point) const {
        Normals normals;
        return at(triangle, point, normals);
    }
    [[nodiscard]] int face(const Sample& sample) const {
        return skin_.mesh().faces[sample.triangle];
    }
    /// The vertex whose samples speak for this one: itself, or one close by in the same face.
    [[nodiscard]] std::uint32_t spokesman(std::uint32_t vertex) const {
        return spokesmen_.empty() ? vertex : spokesmen_[vertex];
    }

private:
    /// Of the corners of one facet, found for the first of its samples that needs them: there may
    /// be thousands, and hundreds of facets around a corner.
    using Normals = std::optional<std::array<Vector, 3>>;
    [[nodiscard]] Sample at(std::uint32_t triangle, const Vector& point, Normals& normals) const;
    void within(std::uint32_t triangle, const std::function<void(const Sample&)>& use) const;
    void linkVertices();
    void chooseSpacing();
    void chooseVertices();
    void beside(std::uint32_t vertex, double share,
                const std::function<void(const Sample&)>& use) const;
    [[nodiscard]] double shareOfCorner(std::uint32_t triangle) const;
    [[nodiscard]] std::uint32_t inside(std::uint32_t triangle, double area) const;
    [[nodiscard]] Vector cornerNormal(std::uint32_t vertex, std::uint32_t triangle) const;

    const Skin& skin_;
    std::vector<std::uint32_t> first_, triangles_;  // of each vertex
    std::vector<double> spacings_;                  // that a face wants between samples
    std::vector<double> densities_;                 // samples per square millimetre, by face
    std::vector<std::uint32_t> spokesmen_;          // by vertex; none if each is its own
    std::vector<double> spokenFor_;                 // area of other vertices, by vertex
};

}  // namespace corvane::part::walls
