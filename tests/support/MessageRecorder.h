#pragma once

#include <string>
#include <utility>
#include <vector>

#include <corvane/platform/MessageBox.h>

/// Collects the messages of a block instead of showing them.
class MessageRecorder {
public:
    struct Shown {
        std::u16string text;
        std::u16string caption;
        unsigned style;
    };

    MessageRecorder()
        : former_(corvane::SetMessageSink([this](const corvane::Message& message) {
              shown.push_back(
                  {std::u16string(message.text), std::u16string(message.caption), message.style});
          })) {}
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    ~MessageRecorder() { corvane::SetMessageSink(std::move(former_)); }

    std::vector<Shown> shown;

private:
    corvane::MessageSink former_;
};
