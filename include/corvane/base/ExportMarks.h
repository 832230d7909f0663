#pragma once

// How a platform marks what a library offers to what links it. Apart from Platform.h, so that who
// needs only the marks gets none of the system's own names.

#ifdef _WIN32
#define CORVANE_EXPORTED __declspec(dllexport)
#define CORVANE_IMPORTED __declspec(dllimport)
#else
/// What a library offers, where the library is built.
#define CORVANE_EXPORTED __attribute__((visibility("default")))
/// The same where the library is used.
#define CORVANE_IMPORTED __attribute__((visibility("default")))
#endif
