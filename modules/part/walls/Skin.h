#pragma once

#include <vector>

#include "../Vec.h"
#include "Bvh.h"

namespace corvane::part::walls {

/// The surface of a part to shoot at: its facets in a tree, and what is known of the exact surface
/// below them. Refers to the model and the mesh, which outlive it.
class Skin {
public:
    Skin(const Model& model, const Mesh& mesh);

    [[nodiscard]] const Model& model() const { return model_; }
    [[nodiscard]] const Mesh& mesh() const { return mesh_; }
    [[nodiscard]] const Bvh& tree() const { return tree_; }
    [[nodiscard]] double size() const { return size_; }  ///< diagonal of the box

    /// Bounds material: a body without holes larger than a crack. Rays and spheres stay in a body.
    [[nodiscard]] bool isClosed(std::uint32_t triangle) const { return closed_[body(triangle)]; }
    [[nodiscard]] bool anyClosed() const;

    /// Whether the triangle has an area and finite corners.
    [[nodiscard]] bool usable(std::uint32_t triangle) const { return normals_[triangle].x < 2.0F; }
    [[nodiscard]] std::size_t body(std::uint32_t triangle) const;
    [[nodiscard]] const Face& face(std::uint32_t triangle) const {
        return model_.face(mesh_.faces[triangle]);
    }
    [[nodiscard]] const Vector& corner(std::uint32_t triangle, std::size_t i) const {
        return mesh_.vertices[mesh_.triangles[triangle][i]];
    }
    [[nodiscard]] Vector facetNormal(std::uint32_t triangle) const;  ///< unit, out of the material
    [[nodiscard]] double area(std::uint32_t triangle) const { return areas_[triangle]; }
    /// The point on the plane of the facet below another.
    [[nodiscard]] Vector onto(std::uint32_t triangle, const Vector& point) const {
        const Vector normal = facetNormal(triangle);
        return point - normal * dot(point - corner(triangle, 0), normal);
    }

    /// A place on the exact surface, or on the facet where that is not known.
    struct Spot {
        Vector point, normal;
        double shift = 0.0;  ///< along the normal from the given point
        bool exact = false;
    };
    [[nodiscard]] Spot exactly(std::uint32_t triangle, const Vector& point) const;

private:
    struct Small {
        float x, y, z;
    };
    [[nodiscard]] bool isFitted(std::uint32_t triangle) const;
    void findNormals();
    void findBodies();
    [[nodiscard]] double openLength() const;
    void buildTree();

    const Model& model_;
    const Mesh& mesh_;
    double size_ = 0.0;
    std::vector<Small> normals_;  // x above 1: not usable
    std::vector<double> areas_;   // 0 where not usable
    std::vector<bool> closed_;    // by body
    Bvh tree_;
};

}  // namespace corvane::part::walls
