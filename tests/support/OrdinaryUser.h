#pragma once

#include <unistd.h>

//// Makes the process an ordinary user for a block, because rights do not bind the administrator.
class OrdinaryUser {
public:
    OrdinaryUser() {
        constexpr uid_t kNobody = 65534;
        if (former_ == 0 && seteuid(kNobody) != 0) _exit(1);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (seteuid(former_) != 0) _exit(1);
    }

private:
    uid_t former_ = geteuid();
};
