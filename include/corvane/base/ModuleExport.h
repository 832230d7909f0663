#pragma once

/// Stands before a function that a module offers by its plain name to whoever loads the module.
#ifdef _WIN32
#define CORVANE_MODULE_EXPORT extern "C" __declspec(dllexport)
#else
#define CORVANE_MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#endif
