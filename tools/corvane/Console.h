#pragma once

#include <functional>
#include <iosfwd>
#include <string_view>

#include <corvane/platform/MessageBox.h>
#include <corvane/text/CStringW.h>

enum class Tone { Plain, Heading, Good, Bad, Doubtful };

/// Where results, messages and progress go. Results are standard output; the rest is standard
/// error, so that what is piped stays clean. Texts are made harmless here, once for all.
class Console {
public:
    /// `quiet` leaves out the progress line.
    explicit Console(bool quiet);
    /// Results go to a stream, plain; there is no progress.
    explicit Console(std::ostream& results);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() { clearProgress(); }

    /// Part of a line of results, and its end.
    void write(std::u16string_view text, Tone tone = Tone::Plain);
    void endLine();
    void writeLine(std::u16string_view text, Tone tone = Tone::Plain) {
        write(text, tone);
        endLine();
    }

    /// A line of a label and a text, the texts below one another. Nothing without a text.
    void writeField(std::u16string_view label, const CStringW& text, Tone tone = Tone::Plain);

    /// A line on standard error.
    void report(std::u16string_view message);

    /// Shows what goes on, over what it showed before; nothing unless a person is watching.
    void progress(std::u16string_view text);
    void clearProgress();

    /// Writes out what is buffered. False when results got lost, as on a full disk.
    bool finish();

private:
    std::ostream* out_;
    bool colour_ = false;
    bool watched_ = false;
    bool progressShown_ = false;
};

/// Hands on what would be a message box, for a block.
class MessageScope {
public:
    explicit MessageScope(std::function<void(const CStringW& text)> taker);
    /// Reports it with the place that it is about.
    MessageScope(Console& console, CStringW place);
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;
    ~MessageScope();

private:
    corvane::MessageSink former_;
};
