#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <mutex>

#include "Bodies.h"

namespace corvane::part::reading {
namespace {

/// The kernel's readers share settings of the process, so one file is read at a time.
std::mutex& readerMutex() {
    static std::mutex mutex;
    return mutex;
}

/// Whether there are more faces than the memory holds, as where a small file places one part often.
bool haveTooManyFaces(const Bodies& bodies) {
    std::size_t count = 0;
    for (const Body& body : bodies.bodies)
        for (TopExp_Explorer it(body.shape, TopAbs_FACE); it.More(); it.Next())
            if (++count > kMostFaces) return true;
    return false;
}

/// What there is in the place of a body, if the file has something that is not read.
std::string noBody(const Bodies& bodies) {
    std::string error = "the file holds no body";
    for (const auto& missing : {bodies.leftOut, bodies.notes})
        if (!missing.empty()) return error + "; " + missing.front();
    return error;
}

Bodies load(const std::filesystem::path& file, const std::string& kind) {
    if (kind == "step") return readStep(file);
    if (kind == "iges") return readIges(file);
    return readBrep(file);
}

}  // namespace

Result readExact(const std::filesystem::path& file, const std::string& kind, double factor) {
    const std::lock_guard lock(readerMutex());
    Result result;
    // The kernel tells its progress on standard output, where the results go.
    Message::DefaultMessenger()->ChangePrinters().Clear();
    try {
        Bodies bodies = load(file, kind);
        if (bodies.error.empty() && bodies.bodies.empty()) bodies.error = noBody(bodies);
        if (bodies.error.empty() && haveTooManyFaces(bodies))
            bodies.error = "the part has more than 250,000 faces";
        result.error = bodies.error;
        if (!result.error.empty()) return result;
        if (bodies.units.empty()) scale(bodies, factor);
        result.model = snapshot(bodies);
        findDamages(result.model);
        result.shape = keep(std::move(bodies));
    } catch (const Standard_Failure& failure) {
        result.error = std::string("the shape cannot be read: ") + failure.GetMessageString();
    } catch (const std::exception& failure) {
        result.error = std::string("the shape cannot be read: ") + failure.what();
    }
    return result;
}

}  // namespace corvane::part::reading
