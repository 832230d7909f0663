#pragma once

#include <cmath>

#include "Fuzz.h"
#include "part/reading/Reading.h"

namespace fuzz {

/// Every number that a model has of something else is that of a thing in it.
inline void requireWhole(const corvane::part::Model& model) {
    const auto isNumber = [](int number, std::size_t count) {
        return number > 0 && static_cast<std::size_t>(number) <= count;
    };
    const std::size_t faces = model.faces.size(), edges = model.edges.size();
    int number = 0;
    for (const auto& face : model.faces) {
        require(face.number == ++number, "faces are numbered from 1");
        require(face.solid == 0 || isNumber(face.solid, model.solids.size()),
                "a face has a solid of the model");
        require(face.area >= 0 && std::isfinite(face.area), "a face has an area");
        require(face.turn >= 0 && face.turn <= 360, "a face goes around its axis once at most");
        for (const auto& loop : face.loops)
            for (const int edge : loop)
                require(isNumber(edge, edges), "a border has edges of the model");
    }
    number = 0;
    for (const auto& edge : model.edges) {
        require(edge.number == ++number, "edges are numbered from 1");
        require(edge.length >= 0 && std::isfinite(edge.length), "an edge has a length");
        require(edge.angle >= 0 && edge.angle <= 180, "an edge has an angle");
        for (const int face : edge.faces)
            require(face == 0 || isNumber(face, faces), "an edge has faces of the model");
    }
    for (const auto& solid : model.solids)
        require(std::isfinite(solid.volume) && solid.area >= 0, "a solid has a volume");
    for (const auto& damage : model.damages)
        for (const int face : damage.faces)
            require(isNumber(face, faces), "a damage has faces of the model");
}

/// Reads bytes as a file of that name. What cannot be read has a reason and no shape.
inline corvane::part::reading::Result readPart(std::string_view name, std::string_view bytes) {
    static const Folder folder;
    folder.write(name, bytes);
    corvane::part::reading::Result result = corvane::part::reading::read(folder.path(name), {});
    require((result.shape != nullptr) == result.error.empty(), "a file is read or told why not");
    if (result.shape) requireWhole(result.model);
    return result;
}

}  // namespace fuzz
