#include "emulation/MessageBox.h"

#include <utility>

#include <corvane/platform/MessageBox.h>

#include "emulation/DefaultMessage.h"
#include "system/Lasting.h"

namespace corvane {
namespace {

system::Lasting<MessageSink> currentSink;

}  // namespace

MessageSink SetMessageSink(MessageSink sink) {
    return std::exchange(currentSink.get(), std::move(sink));
}

namespace emulation {

void messageBox(std::u16string_view text, std::u16string_view caption, unsigned style) {
    const Message message{text, caption, style};
    // A copy: the sink may replace itself while it runs.
    if (const MessageSink sink = currentSink.get())
        sink(message);
    else
        showDefaultMessage(message);
}

}  // namespace emulation
}  // namespace corvane

int AfxMessageBox(const char16_t* text, unsigned style, unsigned) {
    constexpr int kConfirmed = 1;
    corvane::emulation::messageBox(text ? text : u"", u"", style);
    return kConfirmed;
}
