#pragma once

#include <XSControl_WorkSession.hxx>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace corvane::part::reading {

/// Tells that so many entities of each kind are left out.
std::string noteOfUnknown(const std::map<std::string, std::size_t>& kinds);

/// Entities of a STEP file whose kinds the kernel does not know, such as features of a schema, and
/// what the kernel could not fill in because of them. A file that is sound but for these is read.
class UnknownKinds {
public:
    UnknownKinds(Handle(XSControl_WorkSession) session, std::filesystem::path file);

    /// Why the shape cannot be read, of entities that lack parts; empty if it does without these.
    std::string fault(const std::vector<int>& lacking);

    /// What the file has and the part has not.
    [[nodiscard]] std::vector<std::string> notes() const;
    /// Parts of the shape itself among that. After fault().
    [[nodiscard]] const std::vector<std::string>& leftOut() const { return leftOut_; }

private:
    /// For instances those that they refer to.
    using Instances = std::map<std::uint64_t, std::vector<std::uint64_t>>;
    [[nodiscard]] Instances referencesOf(const std::vector<int>& entities) const;
    [[nodiscard]] bool placesComponent(const Handle(Standard_Transient) & shape) const;
    void findShapes();
    void leaveOut(const Handle(Standard_Transient) & entity,
                  const std::vector<std::uint64_t>& unknown);
    [[nodiscard]] std::string nameOf(std::uint64_t instance) const;

    Handle(XSControl_WorkSession) session_;
    std::filesystem::path file_;
    std::map<std::uint64_t, std::string> kinds_;  // of the unknown ones, by instance
    std::set<const Standard_Transient*> shapes_;  // representations of products
    std::vector<std::string> leftOut_;
};

}  // namespace corvane::part::reading
