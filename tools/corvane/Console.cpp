#include "Console.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include <corvane/platform/Environment.h>

#include "Terminal.h"
#include "Text.h"

namespace {

constexpr std::size_t kProgressColumns = 76;
constexpr std::size_t kUsualColumns = 80;
constexpr int kLabelColumns = 14;

const char* escapeOf(Tone tone) {
    switch (tone) {
        case Tone::Heading:
            return "\x1b[1m";
        case Tone::Good:
            return "\x1b[32m";
        case Tone::Bad:
            return "\x1b[31m";
        case Tone::Doubtful:
            return "\x1b[33m";
        case Tone::Plain:
            break;
    }
    return "";
}

}  // namespace

Console::Console(bool quiet)
    : out_(&std::cout),
      colour_(corvane::GetEnvironmentText(u"NO_COLOR").empty() && outputIsTerminal()),
      watched_(!quiet && errorIsTerminal()) {}

Console::Console(std::ostream& results) : out_(&results) {}

void Console::write(std::u16string_view text, Tone tone) {
    clearProgress();
    const bool coloured = colour_ && tone != Tone::Plain;
    if (coloured) *out_ << escapeOf(tone);
    *out_ << harmless(text).ToUtf8();
    if (coloured) *out_ << "\x1b[0m";
}

void Console::endLine() {
    *out_ << '\n';
}

void Console::writeField(std::u16string_view label, const CStringW& text, Tone tone) {
    if (text.IsEmpty()) return;
    write(u"  ");
    write(label);
    write(CStringW(u' ', kLabelColumns - static_cast<int>(displayWidth(label))));
    writeLine(text, tone);
}

void Console::report(std::u16string_view message) {
    clearProgress();
    out_->flush();  // on a terminal the two streams keep their order
    std::cerr << harmless(message).ToUtf8() << '\n';
}

void Console::progress(std::u16string_view text) {
    if (!watched_) return;
    // A line that wraps could not be cleared.
    const std::size_t columns = std::min(kProgressColumns, errorColumns(kUsualColumns) - 1);
    std::cerr << "\r\x1b[K" << fitted(harmless(text), columns).ToUtf8() << std::flush;
    progressShown_ = true;
}

void Console::clearProgress() {
    if (!progressShown_) return;
    std::cerr << "\r\x1b[K" << std::flush;
    progressShown_ = false;
}

bool Console::finish() {
    clearProgress();
    return static_cast<bool>(out_->flush());
}

MessageScope::MessageScope(std::function<void(const CStringW& text)> taker)
    : former_(corvane::SetMessageSink([taker = std::move(taker)](const corvane::Message& message) {
          taker(CStringW(message.text));
      })) {}

MessageScope::MessageScope(Console& console, CStringW place)
    : MessageScope([&console, place = std::move(place)](const CStringW& text) {
          console.report(place + u": " + text);
      }) {}

MessageScope::~MessageScope() {
    corvane::SetMessageSink(std::move(former_));
}
