#include "emulation/DefaultMessage.h"

#include <string>

#include "system/Diagnostics.h"

namespace corvane::emulation {

using namespace system;

void showDefaultMessage(const Message& message) {
    std::u16string line;
    if (!message.caption.empty()) line.append(message.caption).append(u": ");
    writeStandardError(line.append(message.text));
}

}  // namespace corvane::emulation
