#pragma once

#include <functional>
#include <string>
#include <vector>

#include "part/Shapes.h"

/// Parts that keep a rule and parts that break it, each by a few lines.
namespace figures {

using Make = std::function<TopoDS_Shape()>;

struct Case {
    const char* set;
    const char* rule;
    Make good;
    Make bad;
};

/// A box without its first face.
TopoDS_Shape openBox();

std::vector<Case> cases();  ///< all of them
std::vector<Case> holeCases();
std::vector<Case> machinedCases();
std::vector<Case> formedCases();

}  // namespace figures
