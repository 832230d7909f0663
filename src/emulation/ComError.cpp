#include <corvane/platform/ComError.h>

// Defined here so that its type is one and the same in every module that throws or catches it.
_com_error::~_com_error() = default;
