#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane::system {

/// The full path of an executable file: `name` itself when it is a full path, else the first of
/// that name in the folders of PATH, of which relative ones are passed over; without PATH in those
/// of the system. Nothing when there is none, or for a relative path.
std::optional<std::u16string> findProgram(std::u16string_view name);

/// Starts a program, given by its full path, with these arguments and without a shell. It gets
/// nothing to read, its output goes nowhere, no descriptor of this process reaches it, signals do
/// what they do by default, and it goes on when this process or its terminal ends. It leaves no
/// zombie, whatever this process does about ended children.
///
/// False when it cannot be started, or ends with a status other than 0 within `patience`. A program
/// that still runs then counts as started; so the call takes no longer than `patience`, and with 0
/// it only learns whether the program could be started.
bool startProgram(std::u16string_view program, std::span<const std::u16string> arguments,
                  std::chrono::milliseconds patience);

}  // namespace corvane::system
