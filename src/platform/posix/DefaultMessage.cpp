#include "platform/DefaultMessage.h"

#include <string>

#include "platform/posix/StandardError.h"

namespace corvane::platform {

void showDefaultMessage(const Message& message) {
    std::u16string line;
    if (!message.caption.empty()) line.append(message.caption).append(u": ");
    writeStandardError(line.append(message.text));
}

}  // namespace corvane::platform
