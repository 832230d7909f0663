#pragma once

#include <string>

// The time as UTC.

/// "2026-03-31T08:30:00Z"
std::string timeNow();
/// "2026-03-31"
std::string dateToday();
