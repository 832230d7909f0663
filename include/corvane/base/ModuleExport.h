#pragma once

// CORVANE_MODULE_EXPORT.
#include <corvane/base/Platform.h>
