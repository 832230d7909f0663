#pragma once

/// Data that a host prepares before it runs a rule. The library passes it through as a pointer; a
/// host that has more to say derives from it.
class CQorData {
public:
    virtual ~CQorData() = default;
};
