#pragma once

#include <cstddef>

/// Whether standard output or standard error goes to a terminal that understands colours.
bool outputIsTerminal();
bool errorIsTerminal();

/// Columns of the terminal of standard error, or `otherwise` when it does not tell.
std::size_t errorColumns(std::size_t otherwise);
