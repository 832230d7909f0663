#pragma once

// Guid.
#include <corvane/base/Platform.h>
