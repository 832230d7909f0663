#pragma once

#include <string>

namespace CLI {
class App;
}

/// The command or option that the user probably meant, as a sentence; empty when all words are
/// known or no known one is near.
std::string suggestionFor(const CLI::App& program, int argc, const char* const* argv);
