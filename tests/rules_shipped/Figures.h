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

std::vector<Case> cases();

}  // namespace figures
