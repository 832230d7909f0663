#pragma once

// CORVANE_SHARED_TYPE.
#include <corvane/base/Platform.h>
