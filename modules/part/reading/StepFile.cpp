#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_Face.hxx>
#include <StepShape_OrientedClosedShell.hxx>
#include <StepShape_OrientedOpenShell.hxx>
#include <StepShape_SolidModel.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <unordered_map>

#include "Bodies.h"
#include "References.h"
#include "StepThreads.h"
#include "UnknownKinds.h"

namespace corvane::part::reading {
namespace {

constexpr int kDeepest = 64;
/// Assemblies within assemblies can be many without a single body.
constexpr std::size_t kMostVisits = 10 * kMostBodies;

std::string nameOf(const TDF_Label& label) {
    Handle(TDataStd_Name) name;
    if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
    const TCollection_ExtendedString& text = name->Get();
    std::string bytes(static_cast<std::size_t>(text.LengthOfCString()) + 1, '\0');
    Standard_PCharacter out = bytes.data();
    bytes.resize(static_cast<std::size_t>(text.ToUTF8CString(out)));
    return bytes;
}

/// Takes an assembly apart, depth first, in the order of the file.
class Walk {
public:
    explicit Walk(Bodies& bodies) : bodies_(bodies) {}

    void visit(const TDF_Label& label, const TopLoc_Location& location, const std::string& place,
               int depth) {
        if (depth > kDeepest || ++visits_ > kMostVisits || bodies_.bodies.size() > kMostBodies) {
            bodies_.error = "the assembly is too deep or too large";
            return;
        }
        TDF_Label target = label;
        TopLoc_Location here = location;
        if (XCAFDoc_ShapeTool::IsReference(label)) {
            XCAFDoc_ShapeTool::GetReferredShape(label, target);
            here = location * XCAFDoc_ShapeTool::GetLocation(label);
        }
        const std::string name = nameOf(target);
        if (!XCAFDoc_ShapeTool::IsAssembly(target)) {
            addBodies(XCAFDoc_ShapeTool::GetShape(target).Moved(here), name, place, bodies_);
            return;
        }
        std::string inside = place;
        if (!inside.empty()) inside += '/';
        inside += name;
        TDF_LabelSequence parts;
        XCAFDoc_ShapeTool::GetComponents(target, parts);
        for (const TDF_Label& part : parts) {
            if (!bodies_.error.empty()) return;
            visit(part, here, inside, depth + 1);
        }
    }

private:
    Bodies& bodies_;
    std::size_t visits_ = 0;
};

/// A document of the kernel's application, closed at the end so that the application keeps nothing
/// of it.
class Document {
public:
    Document() : application_(XCAFApp_Application::GetApplication()) {
        application_->NewDocument("BinXCAF", document_);
    }
    ~Document() { application_->Close(document_); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    Handle(TDocStd_Document) & get() { return document_; }

private:
    Handle(XCAFApp_Application) application_;
    Handle(TDocStd_Document) document_;
};

/// The threads with what the kernel made of their faces.
std::vector<BodyThread> threadsOf(const std::vector<StepThread>& told,
                                  const Handle(XSControl_WorkSession) & session) {
    std::vector<BodyThread> threads;
    std::unordered_multimap<std::uint64_t, std::size_t> wanted;  // by instance
    for (const StepThread& thread : told) {
        for (const std::uint64_t face : thread.faces)
            wanted.emplace(face, threads.size());
        threads.push_back({thread.thread, {}});
    }
    const auto model = Handle(StepData_StepModel)::DownCast(session->Model());
    if (wanted.empty() || model.IsNull()) return threads;
    const Handle(Transfer_TransientProcess) made = session->TransferReader()->TransientProcess();
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        const auto [first, end] =
            wanted.equal_range(static_cast<std::uint64_t>(model->IdentLabel(entity)));
        if (first == end) continue;
        const TopoDS_Shape shape = TransferBRep::ShapeResult(made, entity);
        if (shape.IsNull()) continue;
        for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
            for (auto it = first; it != end; ++it)
                threads[it->second].faces.push_back(face.Current());
    }
    return threads;
}

/// The kernel leaves out without a word what it cannot make. A shell of which it has made a part is
/// of the part's shape; a body or shell as a whole may be of something else.
void tellUnread(const Handle(XSControl_WorkSession) & session, Bodies& bodies) {
    const Handle(Interface_InterfaceModel) model = session->Model();
    const Handle(Transfer_TransientProcess) made = session->TransferReader()->TransientProcess();
    const auto isUnread = [&](const Handle(Standard_Transient) & entity) {
        return TransferBRep::ShapeResult(made, entity).IsNull();
    };
    std::size_t faces = 0, wholes = 0;
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        if (entity->IsKind(STANDARD_TYPE(StepShape_SolidModel)) && isUnread(entity)) ++wholes;
        const auto shell = Handle(StepShape_ConnectedFaceSet)::DownCast(entity);
        // Others have the faces of the shell that they turn.
        if (shell.IsNull() || shell->IsKind(STANDARD_TYPE(StepShape_OrientedClosedShell)) ||
            shell->IsKind(STANDARD_TYPE(StepShape_OrientedOpenShell)))
            continue;
        std::size_t unread = 0;
        const int count = shell->NbCfsFaces();
        for (int i = 1; i <= count; ++i)
            if (isUnread(shell->CfsFacesValue(i))) ++unread;
        const bool isWhole = unread == static_cast<std::size_t>(count);
        (isWhole ? wholes : faces) += isWhole ? 1 : unread;
    }
    if (faces > 0)
        bodies.leftOut.push_back("the shape lacks faces that cannot be read, " +
                                 std::to_string(faces) + " in all");
    if (wholes > 0)
        bodies.notes.push_back("bodies and shells are left out, " + std::to_string(wholes) +
                               " in all");
}

/// Reads the entities of the file. False, with the error of the bodies, when they make no shape.
bool readEntities(const std::filesystem::path& file, STEPCAFControl_Reader& reader,
                  Bodies& bodies) {
    reader.SetColorMode(false);
    reader.SetLayerMode(false);
    reader.SetPropsMode(false);
    reader.SetGDTMode(false);
    reader.SetMatMode(false);
    reader.SetViewMode(false);
    if (reader.ReadFile(file.string().c_str()) != IFSelect_RetDone) {
        bodies.error = "the file is no readable STEP file";
        return false;
    }
    UnknownKinds unknown(reader.Reader().WS(), file);
    if (const std::string fault = entityFault(reader.Reader().WS(), &unknown); !fault.empty()) {
        bodies.error = "the STEP file cannot be read: " + fault;
        return false;
    }
    bodies.notes = unknown.notes();
    bodies.leftOut = unknown.leftOut();
    TColStd_SequenceOfAsciiString lengths, angles, solidAngles;
    reader.ChangeReader().FileUnits(lengths, angles, solidAngles);
    if (!lengths.IsEmpty()) bodies.units = lengths.First().ToCString();
    return true;
}

}  // namespace

Bodies readStep(const std::filesystem::path& file) {
    Bodies bodies;
    std::vector<StepThread> threads;
    bool hasEnd = false;
    {
        const std::string text = contentOf(file);
        if (const std::string fault = stepFault(text); !fault.empty()) {
            bodies.error = "the STEP file cannot be read: " + fault;
            return bodies;
        }
        threads = stepThreads(text);
        hasEnd = text.find("END-ISO-10303-21") != text.npos;
    }
    Document document;
    STEPCAFControl_Reader reader;
    if (!readEntities(file, reader, bodies)) {
        if (!hasEnd) bodies.error = "the STEP file is cut short";
        return bodies;
    }
    if (!reader.Transfer(document.get())) {
        bodies.error = "the STEP file holds no shape that can be read";
        return bodies;
    }
    tellUnread(reader.Reader().WS(), bodies);
    bodies.threads = threadsOf(threads, reader.Reader().WS());
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(document.get()->Main())->GetFreeShapes(roots);
    Walk walk(bodies);
    for (const TDF_Label& root : roots)
        walk.visit(root, {}, {}, 0);
    return bodies;
}

}  // namespace corvane::part::reading
