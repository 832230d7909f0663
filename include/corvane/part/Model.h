#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// What a part is made of, as plain values: solids, faces, edges and a mesh. Lengths are
/// millimetres in the part's coordinates, areas square millimetres, volumes cubic millimetres,
/// angles degrees, texts UTF-8. Faces, edges and solids are numbered from 1 in the order of the
/// file, so that the same file gives the same numbers.
namespace corvane::part {

/// A point or a direction in the coordinates of the part.
struct Vector {
    double x = 0.0;  ///< along the first axis
    double y = 0.0;  ///< along the second
    double z = 0.0;  ///< along the third
};

/// A box along the axes, or empty (`least` above `greatest`) where there is nothing to enclose.
struct Box {
    Vector least{1e300, 1e300, 1e300};        ///< smallest coordinates
    Vector greatest{-1e300, -1e300, -1e300};  ///< greatest ones
};

/// What the geometry below a face is.
enum class SurfaceKind { Plane, Cylinder, Cone, Sphere, Torus, Other };

/// The geometry below a face. A freeform surface that is one of the elementary kinds to a
/// ten-thousandth of a millimetre counts as that kind.
struct Surface {
    SurfaceKind kind = SurfaceKind::Other;  ///< what it is
    Vector origin;  ///< a point of the plane or axis; the centre of a sphere or torus
    Vector
        axis;  ///< unit: normal of a plane out of the material, axis of the others; none for Other
    double radius = 0.0;       ///< cylinder, sphere; cone: at the origin; torus: of the centre line
    double minorRadius = 0.0;  ///< torus: of the tube
    double halfAngle = 0.0;    ///< cone: from 0 to 90 degrees; the radius grows along the axis
};

/// A face of the boundary.
struct Face {
    int number = 0;        ///< from 1
    int solid = 0;         ///< number of its solid; 0 for a face of an open shape
    Surface surface;       ///< what it lies on
    bool concave = false;  ///< a curved face with its material outside, such as the wall of a hole
    double area = 0.0;     ///< without what its inner borders cut out
    Vector point;          ///< a point on the face, away from its border
    Vector normal;         ///< unit, out of the material, at that point
    double turn = 0.0;     ///< cylinder, cone, sphere, torus: degrees that the face goes around the
                           ///< axis, 360 at most
    std::vector<std::vector<int>> loops;  ///< its borders as edge numbers, the outer border first
};

/// A freeform face whose cross sections are arcs: by its curvature a rounding.
struct Rounding {
    int face = 0;           ///< its number
    double least = 0.0;     ///< smallest radius of the arcs
    double greatest = 0.0;  ///< largest one; equal to the smallest where they differ by no more
                            ///< than a hundredth
    bool concave = false;   ///< the material is outside the arcs
    double length = 0.0;    ///< along the middles of the arcs
    std::array<std::vector<int>, 2> sides;  ///< numbers of the edges along the two ends of the arcs
};

/// What the geometry of an edge is.
enum class CurveKind { Line, Circle, Ellipse, Other };

/// How the two faces of an edge meet. At a convex edge the material is inside the corner, at a
/// concave edge around it.
enum class Convexity { Convex, Concave, Smooth, Open, Seam };

/// An edge between two faces, or at the border of an open shape.
struct Edge {
    int number = 0;                         ///< from 1
    CurveKind kind = CurveKind::Other;      ///< what it is
    Convexity convexity = Convexity::Open;  ///< how its faces meet
    double angle =
        0.0;  ///< between the outward normals of the faces at the middle, 0 to 180 degrees
    double length = 0.0;             ///< along the edge
    double radius = 0.0;             ///< of a circle
    Vector centre;                   ///< of a circle
    Vector axis;                     ///< of a circle
    std::array<int, 2> faces{0, 0};  ///< face numbers; 0 where there is none; both equal for a seam
    std::array<int, 2> vertices{0, 0};  ///< numbers of the end points; equal for a closed edge
    std::vector<Vector> points;         ///< along the edge, ends included, on the curve
};

/// One body of the part, with its place in an assembly.
struct Solid {
    int number = 0;       ///< from 1
    std::string name;     ///< from the file; empty if it has none
    std::string place;    ///< names of the assemblies that hold it, outermost first, joined by '/'
    double volume = 0.0;  ///< of its material
    double area = 0.0;    ///< of all its faces
    Vector centre;        ///< of mass
};

/// Where a file tells of a thread.
enum class ThreadSource {
    Property,    ///< a property of a feature, such as a user's attribute
    Dimension,   ///< the text of a dimension
    Annotation,  ///< the text of an annotation
    Aspect,      ///< the name of a feature or of a part of the shape
    Face         ///< the name of a face
};

/// A thread that the file tells of: the shape of a part seldom has it. Read from STEP files, where
/// a text with a designation leads to faces.
struct Thread {
    /// Without blanks and with the signs of ASCII: "M6", "M6x1-6H", "1/4-20 UNC-2B", "G1/2",
    /// "Tr40x7", "1/4 NPT". Metric threads (ISO 261, ISO 965-1), unified ones (ASME B1.1), pipe
    /// threads (ISO 228-1, ISO 7-1, ASME B1.20.1) and trapezoidal ones (ISO 2904) are known.
    std::string designation;
    double diameter = 0.0;                         ///< nominal
    double pitch = 0.0;                            ///< 0 where the designation leaves it open
    ThreadSource source = ThreadSource::Property;  ///< where the file tells of it
    std::string text;                              ///< what the file says there, at most 200 bytes
    std::vector<int> faces;                        ///< that it is on, in rising order
};

/// Something that keeps a shape from enclosing a volume, or that may not be in a file.
struct Damage {
    /// What is wrong.
    /// Size: below a millimetre or above a hundred metres, most likely in a wrong unit.
    /// Missing: the file has more of the shape, which cannot be read.
    enum class Kind { OpenEdge, InvalidFace, NotSolid, ManyFold, Size, Missing };
    Kind kind = Kind::OpenEdge;  ///< what is wrong
    std::string message;         ///< English
    std::vector<Vector> points;  ///< where: a polyline or one point
    std::vector<int> faces;      ///< which
};

/// All that a file tells of a part, but for its mesh.
struct Model {
    std::vector<Solid> solids;        ///< in the order of the file
    std::vector<Face> faces;          ///< by their numbers
    std::vector<Edge> edges;          ///< by their numbers
    std::vector<Rounding> roundings;  ///< freeform ones of an exact shape, by the numbers of faces
    bool isMesh =
        false;  ///< read from facets: faces are regions of facets, sizes have the facets' tolerance
    std::string units;  ///< of the file: "mm", "inch", ...; empty if it names none
    bool unitsAssumed =
        false;  ///< neither the file nor who opened it names a unit: millimetres are taken
    std::vector<Damage> damages;  ///< found while the file was read
    std::vector<Thread> threads;  ///< that the file tells of, in its order
    /// What is left out of the file, such as features of a kind that is not known, and that gaps
    /// between its faces are closed; English.
    std::vector<std::string> notes;

    /// The face of that number, which must be one of the part.
    [[nodiscard]] const Face& face(int number) const {
        return faces[static_cast<std::size_t>(number - 1)];
    }
    /// The edge of that number, which must be one of the part.
    [[nodiscard]] const Edge& edge(int number) const {
        return edges[static_cast<std::size_t>(number - 1)];
    }
};

/// The surface as triangles, counter-clockwise as seen from outside the material.
struct Mesh {
    std::vector<Vector> vertices;  ///< each shared by the triangles around it
    std::vector<std::array<std::uint32_t, 3>> triangles;  ///< three places in `vertices` each
    std::vector<int> faces;  ///< for each triangle the number of its face
};

}  // namespace corvane::part
