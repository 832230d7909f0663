#pragma once

/// Stands before a class that is defined in a header alone and still is the same type in every
/// module: what the library exports may have it as a template argument.
#ifdef _WIN32
#define CORVANE_SHARED_TYPE
#else
#define CORVANE_SHARED_TYPE __attribute__((visibility("default")))
#endif
