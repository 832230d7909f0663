#pragma once

/// Whether standard output or standard error goes to a terminal that understands colours.
bool outputIsTerminal();
bool errorIsTerminal();
