#include "UnknownKinds.h"

#include <Interface_Check.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_HGraph.hxx>
#include <Interface_ReportEntity.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepBasic_ProductDefinitionRelationship.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepRepr_AssemblyComponentUsage.hxx>
#include <StepRepr_CharacterizedDefinition.hxx>
#include <StepRepr_DefinitionalRepresentation.hxx>
#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationRelationshipWithTransformation.hxx>
#include <StepRepr_RepresentedDefinition.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <TCollection_HAsciiString.hxx>
#include <set>

#include "Reading.h"
#include "StepText.h"

namespace corvane::part::reading {
namespace {

/// Names in one note.
constexpr std::size_t kMostNames = 20;

template <typename... Kinds>
bool isOneOf(const Handle(Standard_Transient) & entity) {
    return (entity->IsKind(STANDARD_TYPE(Kinds)) || ...);
}

/// Whether the entity is one that tells what is around a shape: without a part of it the shape is
/// still whole. What places a component of an assembly is none.
bool isAround(const Handle(Standard_Transient) & entity) {
    if (isOneOf<StepRepr_AssemblyComponentUsage, StepRepr_DefinitionalRepresentation,
                StepRepr_RepresentationRelationshipWithTransformation>(entity))
        return false;
    return isOneOf<StepBasic_ProductDefinition, StepBasic_ProductDefinitionFormation,
                   StepBasic_ProductDefinitionRelationship, StepRepr_ProductDefinitionShape,
                   StepRepr_Representation, StepRepr_RepresentationRelationship,
                   StepShape_ShapeDefinitionRepresentation>(entity);
}

std::uint64_t instanceOf(const Handle(StepData_StepModel) & model, int number) {
    return static_cast<std::uint64_t>(model->IdentLabel(model->Value(number)));
}

Handle(StepData_StepModel) modelOf(const Handle(XSControl_WorkSession) & session) {
    return Handle(StepData_StepModel)::DownCast(session->Model());
}

/// Whether it is the shape of a product, and not of something else.
bool isOfProduct(const Handle(StepShape_ShapeDefinitionRepresentation) & shape) {
    const auto whose =
        Handle(StepRepr_ProductDefinitionShape)::DownCast(shape->Definition().PropertyDefinition());
    return !whose.IsNull() && !whose->Definition().ProductDefinition().IsNull();
}

/// The kernel need not look at what it could not read.
void dropEmptyItems(const Handle(StepRepr_Representation) & representation) {
    std::vector<Handle(StepRepr_RepresentationItem)> items;
    for (int i = 1; i <= representation->NbItems(); ++i)
        if (const auto item = representation->ItemsValue(i); !item.IsNull()) items.push_back(item);
    if (items.empty()) return;
    const Handle(StepRepr_HArray1OfRepresentationItem) kept =
        new StepRepr_HArray1OfRepresentationItem(1, static_cast<int>(items.size()));
    for (std::size_t i = 0; i < items.size(); ++i)
        kept->SetValue(static_cast<int>(i) + 1, items[i]);
    representation->SetItems(kept);
}

}  // namespace

UnknownKinds::UnknownKinds(Handle(XSControl_WorkSession) session, std::filesystem::path file)
    : session_(std::move(session)), file_(std::move(file)) {
    const Handle(StepData_StepModel) model = modelOf(session_);
    for (int number = 1; number <= model->NbEntities(); ++number) {
        auto part = Handle(StepData_UndefinedEntity)::DownCast(model->Value(number));
        if (part.IsNull()) continue;
        std::string& name = kinds_[instanceOf(model, number)];
        for (; !part.IsNull(); part = part->Next())
            name += (name.empty() ? "" : "+") + std::string(part->StepType());
    }
}

std::string UnknownKinds::fault(const std::vector<int>& lacking) {
    if (lacking.empty()) return {};
    const Handle(StepData_StepModel) model = modelOf(session_);
    Instances references = referencesOf(lacking);
    const auto blame = [&](int number, const std::string& what) {
        return "entity #" + std::to_string(instanceOf(model, number)) + what;
    };
    const auto blameUnknown = [&](int number) {
        const std::uint64_t first = references[instanceOf(model, number)].front();
        return blame(number, " has a part of an unknown kind, " + nameOf(first));
    };
    for (const int number : lacking) {
        std::vector<std::uint64_t>& parts = references[instanceOf(model, number)];
        std::erase_if(parts, [&](std::uint64_t part) { return !kinds_.contains(part); });
        const int faults = model->ReportEntity(number)->Check()->NbFails();
        if (parts.size() < static_cast<std::size_t>(faults)) return blame(number, " is damaged");
        if (!isAround(model->Value(number))) return blameUnknown(number);
    }
    if (session_->HGraph().IsNull()) return "its schema is unknown";
    findShapes();
    for (const int number : lacking) {
        if (placesComponent(model->Value(number))) return blameUnknown(number);
        leaveOut(model->Value(number), references[instanceOf(model, number)]);
    }
    return {};
}

UnknownKinds::Instances UnknownKinds::referencesOf(const std::vector<int>& entities) const {
    Instances references;
    for (const int number : entities)
        references[instanceOf(modelOf(session_), number)];
    eachStepRecord(contentOf(file_), [&](const StepRecord& record) {
        const auto wanted = references.find(record.number);
        if (wanted != references.end()) wanted->second = record.references;
    });
    return references;
}

bool UnknownKinds::placesComponent(const Handle(Standard_Transient) & shape) const {
    Interface_EntityIterator users = session_->HGraph()->Graph().Sharings(shape);
    for (users.Start(); users.More(); users.Next())
        if (isOneOf<StepShape_ContextDependentShapeRepresentation>(users.Value())) return true;
    return false;
}

/// Finds the representations of products, and those that a relationship joins to one.
void UnknownKinds::findShapes() {
    const Handle(StepData_StepModel) model = modelOf(session_);
    std::set<const Standard_Transient*> joined;
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const auto shape =
            Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(model->Value(number));
        if (!shape.IsNull() && isOfProduct(shape))
            shapes_.insert(shape->UsedRepresentation().get());
    }
    shapes_.erase(nullptr);
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const auto link =
            Handle(StepRepr_RepresentationRelationship)::DownCast(model->Value(number));
        if (link.IsNull()) continue;
        if (shapes_.contains(link->Rep1().get())) joined.insert(link->Rep2().get());
        if (shapes_.contains(link->Rep2().get())) joined.insert(link->Rep1().get());
    }
    shapes_.merge(joined);
}

void UnknownKinds::leaveOut(const Handle(Standard_Transient) & entity,
                            const std::vector<std::uint64_t>& unknown) {
    const auto representation = Handle(StepRepr_Representation)::DownCast(entity);
    const auto shape = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(entity);
    if (!representation.IsNull()) dropEmptyItems(representation);
    if ((!representation.IsNull() && shapes_.contains(representation.get())) ||
        (!shape.IsNull() && isOfProduct(shape)))
        for (const std::uint64_t part : unknown)
            leftOut_.push_back("the shape lacks " + nameOf(part) + ", which is of an unknown kind");
}

std::string UnknownKinds::nameOf(std::uint64_t instance) const {
    return '#' + std::to_string(instance) + " (" + kinds_.at(instance) + ')';
}

std::vector<std::string> UnknownKinds::notes() const {
    std::map<std::string, std::size_t> counts;
    for (const auto& [instance, name] : kinds_)
        ++counts[name];
    if (counts.empty()) return {};
    return {noteOfUnknown(counts)};
}

std::string noteOfUnknown(const std::map<std::string, std::size_t>& kinds) {
    std::size_t all = 0, names = 0;
    for (const auto& [name, count] : kinds)
        all += count;
    std::string note = all == 1 ? "an entity of an unknown kind is left out:"
                                : std::to_string(all) + " entities of unknown kinds are left out:";
    for (const auto& [name, count] : kinds) {
        if (++names > kMostNames) return note + ", ...";
        note += (names > 1 ? ", " : " ") + name;
    }
    return note;
}

}  // namespace corvane::part::reading
