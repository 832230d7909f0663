#pragma once

#include <memory>

#include "emulation/RegistryTree.h"

namespace corvane::emulation {

/// The registry as its files have it: one tree for each root.
struct RegistryTrees {
    RegistryNode machine;
    RegistryNode user;
    RegistryNode classes;
};

/// The registry now. The files are read only when they, or the places where they lie, have changed
/// since the last call. Safe on any thread.
std::shared_ptr<const RegistryTrees> registryTrees();

}  // namespace corvane::emulation
