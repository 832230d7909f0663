#include "Figures.h"

#include <BRepBuilderAPI_Sewing.hxx>
#include <TopExp_Explorer.hxx>

namespace figures {

using namespace shapes;

namespace {

Make block(double x, double y, double z) {
    return [=] { return box(x, y, z); };
}

/// An angle bracket with a sharp inner corner.
TopoDS_Shape angle() {
    return cut(box(40, 30, 20), box(40, 30, 20, {3, -1, 3}));
}

/// A block with a closed void.
TopoDS_Shape hollow() {
    return cut(box(30, 30, 30), box(10, 10, 10, {10, 10, 10}));
}

TopoDS_Shape roundedBlock() {
    return rounded(box(40, 30, 20), 2);
}

}  // namespace

TopoDS_Shape openBox() {
    BRepBuilderAPI_Sewing sewing;
    TopExp_Explorer face(box(20, 20, 20), TopAbs_FACE);
    for (face.Next(); face.More(); face.Next())
        sewing.Add(face.Current());
    sewing.Perform();
    return sewing.SewedShape();
}

std::vector<Case> cases() {
    std::vector<Case> all{
        {"milling", "Closed solid", block(20, 20, 20), openBox},
        {"milling", "Milling size", block(150, 400, 250), block(401, 20, 20)},
        {"fdm", "FDM build volume", block(200, 200, 200), block(201, 10, 10)},
        {"sla", "SLA build volume", block(145, 175, 145), block(150, 150, 150)},
        {"sls", "SLS build volume", block(300, 300, 300), block(10, 301, 10)},
        {"metal-powder-bed", "Metal build volume", block(150, 150, 250), block(10, 160, 160)},
        {"injection-moulding", "Moulded inner corners", roundedBlock, angle},
        {"die-casting", "Cast inner corners", roundedBlock, angle},
        {"milling", "Thin machined wall", block(0.9, 30, 30), block(0.7, 30, 30)},
        {"injection-moulding", "Thin moulded wall", block(1.2, 30, 30), block(1.1, 30, 30)},
        {"injection-moulding", "Thick moulded wall", block(3.8, 30, 30), block(5, 30, 30)},
        {"die-casting", "Thin cast wall", block(0.9, 30, 30), block(0.8, 30, 30)},
        {"fdm", "FDM wall", block(0.9, 30, 30), block(0.7, 30, 30)},
        {"sla", "SLA wall", block(0.6, 30, 30), block(0.4, 30, 30)},
        {"sls", "SLS wall", block(0.8, 30, 30), block(0.6, 30, 30)},
        {"metal-powder-bed", "Metal wall", block(0.5, 30, 30), block(0.3, 30, 30)},
        {"sls", "Closed void", block(20, 20, 20), hollow},
    };
    for (const auto more : {holeCases, machinedCases, formedCases}) {
        const std::vector<Case> some = more();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

}  // namespace figures
