#include <IGESData_IGESEntity.hxx>
#include <Interface_Check.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_HGraph.hxx>
#include <Interface_InterfaceModel.hxx>
#include <Interface_ReportEntity.hxx>
#include <StepBasic_NamedUnit.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepBasic_ProductDefinitionRelationship.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Circle.hxx>
#include <StepGeom_ConicalSurface.hxx>
#include <StepGeom_Curve.hxx>
#include <StepGeom_CylindricalSurface.hxx>
#include <StepGeom_GeometricRepresentationItem.hxx>
#include <StepGeom_Pcurve.hxx>
#include <StepGeom_SphericalSurface.hxx>
#include <StepGeom_ToroidalSurface.hxx>
#include <StepRepr_AssemblyComponentUsage.hxx>
#include <StepRepr_DefinitionalRepresentation.hxx>
#include <StepRepr_ItemDefinedTransformation.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepRepr_RepresentationRelationship.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_EdgeLoop.hxx>
#include <StepShape_Face.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <StepShape_TopologicalRepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <string_view>

#include "Bodies.h"
#include "References.h"
#include "UnknownKinds.h"

namespace corvane::part::reading {
namespace {

/// The kernel goes over what is placed as often as it is placed.
constexpr double kMostPlaced = 1e6;

/// An entity on whose parts the translator relies. What only tells of names, colours, dimensions or
/// properties may be wrong; so may annotations, of which the kernel knows some kinds only.
bool isOfShape(const Handle(Standard_Transient) & entity) {
    if (std::string_view(entity->DynamicType()->Name()).starts_with("StepVisual_")) return false;
    static const Handle(Standard_Type)
        kKinds[] = {STANDARD_TYPE(IGESData_IGESEntity),
                    STANDARD_TYPE(StepBasic_NamedUnit),
                    STANDARD_TYPE(StepBasic_ProductDefinition),
                    STANDARD_TYPE(StepBasic_ProductDefinitionFormation),
                    STANDARD_TYPE(StepBasic_ProductDefinitionRelationship),
                    STANDARD_TYPE(StepGeom_GeometricRepresentationItem),
                    STANDARD_TYPE(StepRepr_ItemDefinedTransformation),
                    STANDARD_TYPE(StepRepr_MappedItem),
                    STANDARD_TYPE(StepRepr_ProductDefinitionShape),
                    STANDARD_TYPE(StepRepr_Representation),
                    STANDARD_TYPE(StepRepr_RepresentationContext),
                    STANDARD_TYPE(StepRepr_RepresentationMap),
                    STANDARD_TYPE(StepRepr_RepresentationRelationship),
                    STANDARD_TYPE(StepShape_ContextDependentShapeRepresentation),
                    STANDARD_TYPE(StepShape_ShapeDefinitionRepresentation),
                    STANDARD_TYPE(StepShape_TopologicalRepresentationItem)};
    return std::any_of(std::begin(kKinds), std::end(kKinds),
                       [&](const Handle(Standard_Type) & kind) { return entity->IsKind(kind); });
}

bool lacksParts(const Interface_InterfaceModel& model, int number) {
    return model.IsReportEntity(number) && model.ReportEntity(number)->Check()->HasFailed() &&
           isOfShape(model.Value(number));
}

/// The largest radius of a curve or surface, as the file has it; 0 of another entity.
double radiusOf(const Handle(Standard_Transient) & entity) {
    if (const auto circle = Handle(StepGeom_Circle)::DownCast(entity); !circle.IsNull())
        return circle->Radius();
    if (const auto ball = Handle(StepGeom_SphericalSurface)::DownCast(entity); !ball.IsNull())
        return ball->Radius();
    if (const auto pin = Handle(StepGeom_CylindricalSurface)::DownCast(entity); !pin.IsNull())
        return pin->Radius();
    if (const auto cone = Handle(StepGeom_ConicalSurface)::DownCast(entity); !cone.IsNull())
        return cone->Radius();
    if (const auto ring = Handle(StepGeom_ToroidalSurface)::DownCast(entity); !ring.IsNull())
        return std::max(ring->MajorRadius(), ring->MinorRadius());
    return 0.0;
}

/// Whether a point is ten thousand kilometres away, where the kernel's searches find no end. A
/// circle around a thousand kilometres has more points than its mesher can bear.
bool isTooFar(const Handle(Standard_Transient) & entity) {
    if (!(radiusOf(entity) <= 1e9)) return true;
    const Handle(StepGeom_CartesianPoint) point = Handle(StepGeom_CartesianPoint)::DownCast(entity);
    if (point.IsNull()) return false;
    for (int i = 1; i <= point->NbCoordinates(); ++i)
        if (!(std::abs(point->CoordinatesValue(i)) <= 1e10)) return true;
    return false;
}

/// Whether a curve on a surface has nothing that draws it: the kernel takes its first item for a
/// curve.
bool drawsNothing(const Handle(Standard_Transient) & entity) {
    const auto drawn = Handle(StepGeom_Pcurve)::DownCast(entity);
    if (drawn.IsNull()) return false;
    const Handle(StepRepr_Representation) drawing = drawn->ReferenceToCurve();
    return drawing.IsNull() || drawing->NbItems() < 1 ||
           Handle(StepGeom_Curve)::DownCast(drawing->ItemsValue(1)).IsNull();
}

/// Adds up what the kernel will take for its repairs of borders: it compares each edge of a border
/// with each other three deep, and each border of a face with each other.
class BorderWork {
public:
    /// What there is too much of, with this entity; empty if it is still enough.
    std::string add(const Handle(Standard_Transient) & entity) {
        const auto loop = Handle(StepShape_EdgeLoop)::DownCast(entity);
        if (!loop.IsNull()) edges_ += std::pow(loop->NbEdgeList(), 3);
        const auto face = Handle(StepShape_Face)::DownCast(entity);
        if (!face.IsNull()) borders_ += std::pow(face->NbBounds(), 2);
        if (edges_ > kMostEdges) return "edges";
        return borders_ > kMostBorders ? "borders" : "";
    }

private:
    /// Each is two to three minutes of work.
    static constexpr double kMostEdges = 1e11, kMostBorders = 5e7;
    double edges_ = 0.0, borders_ = 0.0;
};

References referencesOf(const Interface_Graph& graph) {
    References references(static_cast<std::size_t>(graph.Size()));
    for (int number = 1; number <= graph.Size(); ++number) {
        Interface_EntityIterator parts = graph.Shareds(graph.Entity(number));
        for (parts.Start(); parts.More(); parts.Next())
            if (const int part = graph.EntityNumber(parts.Value()))
                references[static_cast<std::size_t>(number - 1)].push_back(
                    static_cast<std::uint32_t>(part - 1));
    }
    return references;
}

Handle(StepBasic_ProductDefinition)
    productOf(const StepShape_ShapeDefinitionRepresentation& shape) {
    const auto whose =
        Handle(StepRepr_ProductDefinitionShape)::DownCast(shape.Definition().PropertyDefinition());
    if (whose.IsNull()) return {};
    return whose->Definition().ProductDefinition();
}

/// For each product of an assembly its components and shapes, and for each shape those that it has
/// in other places.
References placedOf(const Handle(Interface_InterfaceModel) & model) {
    using Entity = Handle(Standard_Transient);
    References placed(static_cast<std::size_t>(model->NbEntities()));
    const auto add = [&](const Entity& whole, const Entity& part) {
        if (whole.IsNull() || part.IsNull() || !model->Contains(whole) || !model->Contains(part))
            return;
        placed[static_cast<std::size_t>(model->Number(whole) - 1)].push_back(
            static_cast<std::uint32_t>(model->Number(part) - 1));
    };
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Entity entity = model->Value(number);
        const auto use = Handle(StepRepr_AssemblyComponentUsage)::DownCast(entity);
        if (!use.IsNull()) add(use->RelatingProductDefinition(), use->RelatedProductDefinition());
        const auto shape = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(entity);
        if (!shape.IsNull()) add(productOf(*shape), shape->UsedRepresentation());
        const auto all = Handle(StepRepr_Representation)::DownCast(entity);
        for (int i = 1; !all.IsNull() && i <= all->NbItems(); ++i) {
            const auto item = Handle(StepRepr_MappedItem)::DownCast(all->ItemsValue(i));
            if (!item.IsNull() && !item->MappingSource().IsNull())
                add(all, item->MappingSource()->MappedRepresentation());
        }
    }
    return placed;
}

}  // namespace

std::string entityFault(const Handle(XSControl_WorkSession) & session, UnknownKinds* unknown) {
    const Handle(Interface_InterfaceModel) model = session->Model();
    const auto label = [&](int number) {
        return std::string(model->StringLabel(model->Value(number))->ToCString());
    };
    BorderWork work;
    std::vector<int> lacking;
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        const std::string tooMany = work.add(entity);
        if (!tooMany.empty()) return "entity " + label(number) + " has too many " + tooMany;
        if (lacksParts(*model, number)) {
            if (!unknown) return "entity " + label(number) + " is damaged";
            lacking.push_back(number);
            continue;  // The kernel may have left its fields unset.
        }
        if (isTooFar(entity)) return "entity " + label(number) + " is too far away";
    }
    if (unknown)
        if (std::string fault = unknown->fault(lacking); !fault.empty()) return fault;
    for (int number = 1; number <= model->NbEntities(); ++number)
        if (drawsNothing(model->Value(number)))
            return "entity " + label(number) + ", a curve on a surface, has no curve";
    const Handle(Interface_HGraph) graph = session->HGraph();
    if (graph.IsNull()) return "its schema is unknown";
    ReferenceFault fault = checkReferences(referencesOf(graph->Graph()));
    if (fault.kind == ReferenceFault::Kind::None)
        fault = checkReferences(placedOf(model), kMostPlaced);
    if (fault.kind == ReferenceFault::Kind::None) return {};
    return "entity " + label(static_cast<int>(fault.thing) + 1) +
           (fault.kind == ReferenceFault::Kind::TooMany ? " places too many others"
                                                        : " is a part of itself");
}

}  // namespace corvane::part::reading
