#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

/// Lets the rights of files bind the administrator for a block. The process stays the user that it
/// is, so that it still reaches a build folder that others may not enter: give a file the rights
/// that its owner is to have.
class OrdinaryUser {
public:
    OrdinaryUser() {
        if (syscall(SYS_capget, &header_, former_) != 0) _exit(1);
        constexpr unsigned kBypasses = 1U << CAP_DAC_OVERRIDE | 1U << CAP_FOWNER;
        __user_cap_data_struct bound[] = {former_[0], former_[1]};
        bound[0].effective &= ~kBypasses;
        set(bound);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { set(former_); }

private:
    void set(__user_cap_data_struct* data) {
        if (syscall(SYS_capset, &header_, data) != 0) _exit(1);
    }

    __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct former_[_LINUX_CAPABILITY_U32S_3] = {};
};
