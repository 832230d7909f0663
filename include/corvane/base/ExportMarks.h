#pragma once

// How a platform marks what a library offers to those that link it. Kept apart from Platform.h, so
// that a header that needs only the marks brings none of the system's own names.

#ifdef _WIN32
#define CORVANE_EXPORTED __declspec(dllexport)
#define CORVANE_IMPORTED __declspec(dllimport)
#else
/// What a library offers, where the library is built.
#define CORVANE_EXPORTED __attribute__((visibility("default")))
/// The same where the library is used.
#define CORVANE_IMPORTED __attribute__((visibility("default")))
#endif
