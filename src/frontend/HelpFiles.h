#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <corvane/text/CStringW.h>

namespace corvane::app {

/// The two text files, below the install folder, that lead from a topic to a page of the site:
/// lines
/// "#define <help name> <topic>", and lines "<help name> = <page>".
inline constexpr std::u16string_view kTopicFile = u"include\\common\\Help\\QORHelpIDs.h";
inline constexpr std::u16string_view kPageFile = u"include\\common\\Help\\corvane.ali";

/// What such a file may hold at most, in bytes; a larger one counts as unreadable.
inline constexpr std::size_t kLargestHelpFile = std::size_t{1} << 24;

/// The text of a help file, in the process's code page, without a byte-order mark; nothing when it
/// cannot be read.
std::optional<std::u16string> readHelpFile(std::u16string_view path);

/// The first line of `text` that has `sought`, in any place and as part of any word, without
/// every `sought`, then without every `mark`, and trimmed. Nothing when no line has it. An empty
/// `sought` stands in every line. LF ends a line, with or without CR before it.
std::optional<CStringW> restOfLine(std::u16string_view text, std::u16string_view sought,
                                   std::u16string_view mark);

}  // namespace corvane::app
