#pragma once

#include <functional>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// One message to the user.
struct Message {
    std::u16string_view text;     ///< May have several lines, separated by U+000A.
    std::u16string_view caption;  ///< Empty when the caller gives none.
    unsigned style;               ///< Style word of the platform's message box, such as 8208.
};

/// Shows a message, or keeps it.
using MessageSink = std::function<void(const Message&)>;

/// Replaces what shows messages, and gives the former sink. An empty sink means the
/// default, which writes to standard error and never waits. The sink runs on the thread of the
/// message. Set it before threads start.
CORVANE_EXPORT MessageSink SetMessageSink(MessageSink sink);

}  // namespace corvane

/// Shows a text without caption through the sink.
CORVANE_EXPORT int AfxMessageBox(const char16_t* text, unsigned style = 0, unsigned helpId = 0);
