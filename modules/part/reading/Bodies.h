#pragma once

#include <TopoDS_Shape.hxx>
#include <XSControl_WorkSession.hxx>
#include <filesystem>
#include <string>
#include <vector>

#include "Reading.h"

namespace corvane::part::reading {

class UnknownKinds;

struct Body {
    TopoDS_Shape shape;  // a solid, or an open shape
    std::string name, place;
};

/// A thread of the file, and the faces that it is on, wherever an assembly has them.
struct BodyThread {
    Thread thread;
    std::vector<TopoDS_Shape> faces;
};

struct Bodies {
    std::string error, units;
    std::vector<Body> bodies;
    std::vector<BodyThread> threads;
    std::vector<std::string> notes;    // of what is not read
    std::vector<std::string> leftOut;  // parts of the shape among it
};

/// What one file may hold, so that a small file that repeats itself cannot fill the memory.
constexpr std::size_t kMostBodies = 100'000;
constexpr std::size_t kMostFaces = 250'000;

Bodies readStep(const std::filesystem::path& file);
Bodies readIges(const std::filesystem::path& file);
Bodies readBrep(const std::filesystem::path& file);

/// Why the kernel cannot turn the entities of a loaded file into shapes: it takes for granted that
/// each has its parts, and that none is a part of itself. Empty if it can. Parts of `unknown` kinds
/// may be missing where the shape does without them.
std::string entityFault(const Handle(XSControl_WorkSession) & session,
                        UnknownKinds* unknown = nullptr);

/// Adds the solids of `shape`, and what is in no solid sewn together.
void addBodies(const TopoDS_Shape& shape, const std::string& name, const std::string& place,
               Bodies& bodies);

void scale(Bodies& bodies, double factor);

/// The model of the bodies, without its damages. Turns a solid that is inside out. Raises what the
/// kernel raises.
Model snapshot(Bodies& bodies);

std::unique_ptr<Shape> keep(Bodies bodies);

}  // namespace corvane::part::reading
