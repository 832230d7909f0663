#pragma once

#include <optional>
#include <stdlib.h>
#include <string>

/// Sets an environment variable for a block, or takes it away when `value` is null.
class EnvironmentScope {
public:
    EnvironmentScope(const char* name, const char* value) : name_(name) {
        if (const char* former = getenv(name)) former_ = former;
        set(value);
    }
    EnvironmentScope(const char* name, const std::string& value)
        : EnvironmentScope(name, value.c_str()) {}
    EnvironmentScope(const EnvironmentScope&) = delete;
    EnvironmentScope& operator=(const EnvironmentScope&) = delete;
    ~EnvironmentScope() { set(former_ ? former_->c_str() : nullptr); }

    void set(const char* value) const {
        value ? setenv(name_.c_str(), value, 1) : unsetenv(name_.c_str());
    }

private:
    std::string name_;
    std::optional<std::string> former_;
};
