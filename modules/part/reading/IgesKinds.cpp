#include "IgesKinds.h"

#include <IGESData_IGESEntity.hxx>
#include <IGESData_UndefinedEntity.hxx>
#include <IGESSolid_EdgeList.hxx>
#include <IGESSolid_Face.hxx>
#include <IGESSolid_Loop.hxx>
#include <IGESSolid_ManifoldSolid.hxx>
#include <IGESSolid_Shell.hxx>
#include <IGESSolid_VertexList.hxx>
#include <IGESToBRep.hxx>
#include <Interface_InterfaceModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <set>

#include "UnknownKinds.h"

namespace corvane::part::reading {
namespace {

/// The field of the directory that names a transformation (IGES 5.3, section 2.2.4.4).
constexpr int kTransformation = 7;

/// Solids, and surfaces with borders, by their type numbers (IGES 5.3, table 3).
bool isBody(int type) {
    static const std::set<int> kTypes{143, 144, 150, 152, 154, 156, 158, 160,
                                      162, 164, 168, 180, 184, 186, 510};
    return kTypes.contains(type);
}

/// Whether the entity is of a shape and a part of another one (IGES 5.3, section 2.2.4.4.9.2):
/// geometry and topology have type numbers of these hundreds.
bool isPartOfShape(const Handle(IGESData_IGESEntity) & entity) {
    const int hundreds = entity->TypeNumber() / 100, dependence = entity->SubordinateStatus();
    return (hundreds == 1 || hundreds == 5) && (dependence == 1 || dependence == 3);
}

bool lacks(const Handle(IGESSolid_ManifoldSolid) & solid) {
    bool any = solid->Shell().IsNull();
    for (int i = 1; i <= solid->NbVoidShells(); ++i)
        any = any || solid->VoidShell(i).IsNull();
    return any;
}

bool lacks(const Handle(IGESSolid_Shell) & shell) {
    bool any = false;
    for (int i = 1; i <= shell->NbFaces(); ++i)
        any = any || shell->Face(i).IsNull();
    return any;
}

bool lacks(const Handle(IGESSolid_Face) & face) {
    bool any = face->Surface().IsNull();
    for (int i = 1; i <= face->NbLoops(); ++i)
        any = any || face->Loop(i).IsNull();
    return any;
}

bool lacks(const Handle(IGESSolid_Loop) & loop) {
    bool any = false;
    for (int i = 1; i <= loop->NbEdges(); ++i)
        any = any || loop->Edge(i).IsNull();
    return any;
}

bool lacks(const Handle(IGESSolid_EdgeList) & edges) {
    bool any = false;
    for (int i = 1; i <= edges->NbEdges(); ++i)
        any = any || !IGESToBRep::IsTopoCurve(edges->Curve(i)) ||
              edges->StartVertexList(i).IsNull() || edges->EndVertexList(i).IsNull();
    return any;
}

template <typename... Kinds>
bool lacksAnyOf(const Handle(Standard_Transient) & entity) {
    return ((!Handle(Kinds)::DownCast(entity).IsNull() && lacks(Handle(Kinds)::DownCast(entity))) ||
            ...);
}

Handle(IGESData_IGESEntity) entityOf(const Handle(Interface_InterfaceModel) & model, int number) {
    return Handle(IGESData_IGESEntity)::DownCast(model->Value(number));
}

bool isUnknown(const Handle(IGESData_IGESEntity) & entity) {
    return !entity.IsNull() && entity->IsKind(STANDARD_TYPE(IGESData_UndefinedEntity));
}

}  // namespace

IgesKinds::IgesKinds(Handle(XSControl_WorkSession) session) : session_(std::move(session)) {
    const Handle(Interface_InterfaceModel) model = session_->Model();
    for (int number = 1; number <= model->NbEntities(); ++number)
        if (const auto entity = entityOf(model, number); isUnknown(entity))
            ++unknown_[std::to_string(entity->TypeNumber())];
}

std::string IgesKinds::fault() const {
    const Handle(Interface_InterfaceModel) model = session_->Model();
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const auto entity = entityOf(model, number);
        if (entity.IsNull()) continue;
        const bool isLost = isUnknown(entity->DirFieldEntity(kTransformation));
        if (!isLost && !lacksAnyOf<IGESSolid_ManifoldSolid, IGESSolid_Shell, IGESSolid_Face,
                                   IGESSolid_Loop, IGESSolid_EdgeList>(entity))
            continue;
        std::string what = "entity " + std::string(model->StringLabel(entity)->ToCString());
        if (unknown_.empty()) return what + " is damaged";
        return what + " has a part of an unknown kind; " + noteOfUnknown(unknown_);
    }
    return {};
}

void IgesKinds::tell(Bodies& bodies) const {
    if (!unknown_.empty()) bodies.notes.push_back(noteOfUnknown(unknown_));
    const Handle(Interface_InterfaceModel) model = session_->Model();
    const Handle(Transfer_TransientProcess) made = session_->TransferReader()->TransientProcess();
    std::map<int, std::size_t> unread;  // by type
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const auto entity = entityOf(model, number);
        if (entity.IsNull()) continue;
        if (isUnknown(entity)
                ? isPartOfShape(entity)
                : isBody(entity->TypeNumber()) && TransferBRep::ShapeResult(made, entity).IsNull())
            ++unread[entity->TypeNumber()];
    }
    for (const auto& [type, count] : unread)
        bodies.leftOut.push_back("the shape lacks what cannot be read: entities of the type " +
                                 std::to_string(type) + ", " + std::to_string(count) + " in all");
}

}  // namespace corvane::part::reading
