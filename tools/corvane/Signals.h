#pragma once

#include <string>

// What signals do to the program.

/// Lets a signal that ends the process first remove what is Transient. A signal that the process
/// was started to ignore stays ignored.
void catchSignals();

/// From now on a person, or the system, ends the run in order: wasInterrupted becomes true instead
/// of the process ending. A second time it ends.
void catchInterruption();
bool wasInterrupted();

/// From now on a reader of the results that goes away no longer ends the process: what it writes
/// there gets lost, as on a full disk.
void outliveReader();

/// A file or an empty folder that must not outlive the process, even when a signal ends it.
class Transient {
public:
    explicit Transient(std::string path);
    Transient(const Transient&) = delete;
    Transient& operator=(const Transient&) = delete;
    /// What is there stays there; only signals no longer touch it.
    ~Transient();

private:
    std::string path_;
};
