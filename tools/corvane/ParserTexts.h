#pragma once

namespace CLI {
class App;
}  // namespace CLI

/// Lets the parser of the command line speak the user's language, in its help and in what it says
/// of bad usage. Has to come before the first command is added, which takes over what is set here.
void speakUsersLanguage(CLI::App& program);
