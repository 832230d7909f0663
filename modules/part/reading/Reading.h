#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "corvane/part/Model.h"

/// Reads files to models. All that knows the kernel is in this folder.
namespace corvane::part::reading {

/// Right-handed axes through the origin.
struct Frame {
    Vector x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
};

/// What stays of the file once its model is made: the shape, for what the model does not hold. All
/// its operations throw std::exception where the shape is too damaged for them.
class Shape {
public:
    Shape() = default;
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;
    virtual ~Shape() = default;

    /// The surface as triangles that keep within `deviation` millimetres of it.
    virtual Mesh mesh(double deviation) = 0;

    /// The smallest box along the axes of the frame, in coordinates of the frame.
    virtual Box box(const Frame& frame) = 0;

    /// Faces whose borders or surfaces contradict themselves, by number.
    virtual std::vector<int> invalidFaces() = 0;
};

struct Result {
    std::string error;  // why the file cannot be read; empty if it was read
    Model model;
    std::unique_ptr<Shape> shape;
};

/// Reads STEP, IGES, BREP or STL, whichever the content says. `units`, one of kLengthUnits, holds
/// where the file names none; empty means millimetres.
Result read(const std::filesystem::path& file, const std::string& units);

/// All bytes of the file; empty if it cannot be read.
std::string contentOf(const std::filesystem::path& file);

/// Adds to the model's damages what its edges and solids tell.
void findDamages(Model& model);

Result readStl(const std::filesystem::path& file, double scale);
Result readExact(const std::filesystem::path& file, const std::string& kind, double scale);

}  // namespace corvane::part::reading
